// The Hermite form by a modulus against Euclid's scheme, and the equality of lattices
// against the equality of those forms.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "certificates/HermiteForm.h"
#include "certificates/LatticeEquality.h"
#include "support/generators/LatticeGenerators.h"
#include "support/oracles/SlowHermite.h"

namespace starsift {
namespace {

using test::arbitraryIndex;

test::IntegerRows byEuclid(const Matrix<QQ>& rows) {
  return test::hermiteByEuclid(test::gmpRows(rows), static_cast<std::size_t>(rows.columnCount()));
}

bool isThatOfEuclid(const Matrix<QQ>& form, const Matrix<QQ>& rows) {
  return form.columnCount() == rows.columnCount() && test::gmpRows(form) == byEuclid(rows);
}

Matrix<QQ> scaled(Matrix<QQ> rows, const QQ& factor) {
  for (Vector<QQ>& row : rows)
    for (QQ& entry : row) entry *= factor;
  return rows;
}

Matrix<QQ> arbitraryMatrix() {
  return test::arbitraryGenerators(*rc::gen::inRange<Index>(0, 7), arbitraryIndex(5));
}

/// Other generators of the lattice: a unimodular combination, and sometimes rows of zeros
/// or further combinations.
Matrix<QQ> otherGenerators(const Matrix<QQ>& rows) {
  const Index count = rows.rowCount();
  if (count == 0) return rows;
  Matrix<QQ> result = test::arbitraryUnimodular(count, test::arbitraryInteger(2)).matrix * rows;
  const auto further = *rc::gen::inRange<Index>(0, 3);
  result.resize(count + further, rows.columnCount(), false);
  for (Index i = count + 1; i <= count + further; ++i)
    test::addMultiple(result, i, QQ(*rc::gen::inRange(-3, 4)), arbitraryIndex(count));
  result.swapRows(arbitraryIndex(result.rowCount()), arbitraryIndex(result.rowCount()));
  return result;
}

/// The same lattice, one with a row changed or scaled, or any other.
Matrix<QQ> otherMatrix(const Matrix<QQ>& rows) {
  const auto kind = *rc::gen::inRange(0, 6);
  if (kind == 0) return test::arbitraryGenerators(rows.rowCount(), rows.columnCount());
  Matrix<QQ> result = otherGenerators(rows);
  if (result.rowCount() == 0 || kind > 2) return result;
  Vector<QQ>& row = result[arbitraryIndex(result.rowCount())];
  if (kind == 1)
    for (QQ& entry : row) entry *= QQ(2);
  else
    row[arbitraryIndex(row.dimension())] += QQ(1);
  return result;
}

TEST(HermiteByEuclid, IsThatOfSmallMatrices) {
  EXPECT_TRUE((test::hermiteByEuclid({{2, 1}, {1, 2}}, 2) == test::IntegerRows{{1, 2}, {0, 3}}));
  EXPECT_TRUE((test::hermiteByEuclid({{0, -4}, {0, 6}}, 2) == test::IntegerRows{{0, 2}}));
  EXPECT_TRUE(test::hermiteByEuclid({{0, 0}}, 2).empty());
}

RC_GTEST_PROP(HermiteForm, IsThatOfEuclidsScheme, ()) {
  const Matrix<QQ> rows = arbitraryMatrix();
  RC_ASSERT(isThatOfEuclid(hermiteForm(rows), rows));
}

RC_GTEST_PROP(HermiteForm, HasTheScaleOfItsRows, ()) {
  const Matrix<QQ> rows = arbitraryMatrix();
  const QQ scale(*rc::gen::element(1L, -2L, 7L), *rc::gen::element(1L, 6L, 1'000'000'007L));
  const Matrix<QQ> form = scaled(hermiteForm(scaled(rows, scale)), QQ(1) / abs(scale));
  RC_ASSERT(isThatOfEuclid(form, rows));
}

RC_GTEST_PROP(SameLattice, HasOneHermiteForm, ()) {
  const Matrix<QQ> a = arbitraryMatrix();
  const Matrix<QQ> b = otherMatrix(a);
  const bool expected = byEuclid(a) == byEuclid(b);
  RC_TAG(expected ? "same" : "different");
  RC_ASSERT(sameLattice(a, b) == expected);
  RC_ASSERT(sameLattice(b, a) == expected);
  const QQ scale(1, 6);
  RC_ASSERT(sameLattice(scaled(a, scale), scaled(b, scale)) == expected);
}

/// `rest` is a combination of the rows from `from` on, with coefficients up to 18.
bool reaches(const Matrix<QQ>& rows, Index from, const Vector<QQ>& rest) {
  if (from > rows.rowCount()) return identical(rest, Vector<QQ>(rest.dimension()));
  for (int factor = -18; factor <= 18; ++factor) {
    Vector<QQ> next = rest;
    for (Index j = 1; j <= next.dimension(); ++j)
      subtractProduct(next[j], QQ(factor), rows[from][j]);
    if (reaches(rows, from + 1, next)) return true;
  }
  return false;
}

RC_GTEST_PROP(SameLattice, TakesInCombinationsAndNothingElse, ()) {
  const auto columns = arbitraryIndex(3);
  const Matrix<QQ> rows = test::matrixFrom<QQ>(*test::arbitraryRows(2, columns, 3), columns);
  Matrix<QQ> more = rows;
  more.resize(3, columns, false);
  more[3] = test::vectorFrom<QQ>((*test::arbitraryRows(1, columns, 3)).front());
  // Coefficients are quotients of minors, which are up to 18.
  const bool expected = reaches(rows, 1, more[3]);
  RC_TAG(expected);
  RC_ASSERT(sameLattice(rows, more) == expected);
}

}  // namespace
}  // namespace starsift
