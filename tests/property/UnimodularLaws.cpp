// Determinants by primes against fraction-free elimination, and unimodular matrices
// against what they are made from.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "algorithms/Determinant.h"
#include "algorithms/Unimodular.h"
#include "numbers/VectorQQ.h"
#include "support/ContainerGenerators.h"
#include "support/NumberGenerators.h"
#include "support/SlowDeterminant.h"

namespace starsift {
namespace {

test::IntegerRows gmpRows(const Matrix<QQ>& matrix) {
  test::IntegerRows rows;
  for (const Vector<QQ>& row : matrix) {
    auto& copy = rows.emplace_back();
    for (const QQ& entry : row) copy.push_back(test::gmpRational(entry).get_num());
  }
  return rows;
}

Matrix<QQ> arbitrarySquare() {
  const auto order = *rc::gen::inRange<Index>(0, 6);
  Matrix<QQ> matrix = test::matrixFrom<QQ>(*test::arbitraryRows(order, order, 3), order);
  if (order > 0 && *rc::gen::arbitrary<bool>())
    for (QQ& entry : matrix[*rc::gen::inRange<Index>(1, order + 1)])
      entry = test::toQQ(*test::longInteger(40) + "/1");
  return matrix;
}

/// Adds multiples of rows to other rows and exchanges rows.
Matrix<QQ> arbitraryUnimodular(Index order) {
  Matrix<QQ> matrix = Matrix<QQ>::identity(order);
  for (int step = 0; step < 10 && order > 1; ++step) {
    const auto i = *rc::gen::inRange<Index>(1, order + 1);
    const auto j = *rc::gen::inRange<Index>(1, order + 1);
    if (i == j) continue;
    const QQ factor = test::toQQ(*test::longInteger(12) + "/1");
    for (Index c = 1; c <= order; ++c) matrix[i][c] += factor * matrix[j][c];
    matrix.swapRows(1, i);
  }
  return matrix;
}

RC_GTEST_PROP(Determinant, IsThatOfFractionFreeElimination, ()) {
  const Matrix<QQ> matrix = arbitrarySquare();
  const mpz_class expected = test::determinantByBareiss(gmpRows(matrix));
  RC_ASSERT(mpz_cmp(determinant(scaledIntegers(matrix).rows).get(), expected.get_mpz_t()) == 0);
}

RC_GTEST_PROP(Unimodular, MeansADeterminantOfMagnitudeOne, ()) {
  const Matrix<QQ> matrix = arbitrarySquare();
  const bool expected = abs(test::determinantByBareiss(gmpRows(matrix))) == 1;
  RC_TAG(expected);
  RC_ASSERT(isUnimodular(matrix) == expected);
}

RC_GTEST_PROP(Unimodular, AreProductsOfElementarySteps, ()) {
  const auto order = *rc::gen::inRange<Index>(1, 7);
  Matrix<QQ> matrix = arbitraryUnimodular(order);
  RC_ASSERT(isUnimodular(matrix));
  const auto k = *rc::gen::inRange<Index>(1, order + 1);
  for (QQ& entry : matrix[k]) entry *= QQ(*rc::gen::element(0, 2, 3, -5, 1'000'000'007));
  RC_ASSERT(!isUnimodular(matrix));
}

}  // namespace
}  // namespace starsift
