// Elimination, echelon form and determinant against fraction-free elimination over integers,
// which shares nothing with them: no division that rounds, no pivot search, no
// transformation.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

#include "algorithms/exact/Echelon.h"
#include "numbers/VectorQQ.h"
#include "support/generators/ContainerGenerators.h"
#include "support/oracles/EchelonCertificate.h"

namespace starsift {
namespace {

using test::arbitraryDependentRows;
using test::arbitraryRows;
using test::matrixFrom;
using test::Rows;

// With these sizes every non-zero pivot is a quotient of minors below 10^8 and so
// stays clear of the tolerance.
constexpr Index mostRows = 6;
constexpr std::int64_t largestEntry = 9;

struct Exact {
  Index rank = 0;
  std::int64_t determinant = 0;  // of a square matrix
};

/// E. H. Bareiss, Math. Comp. 22 (1968).
Exact bareiss(Rows a, std::size_t columns) {
  Exact result;
  std::int64_t previous = 1;
  std::int64_t sign = 1;
  std::size_t k = 0;
  for (std::size_t column = 0; column < columns && k < a.size(); ++column) {
    const auto pivot = std::find_if(a.begin() + static_cast<std::ptrdiff_t>(k), a.end(),
                                    [column](const auto& row) { return row[column] != 0; });
    if (pivot == a.end()) continue;
    if (*pivot != a[k]) sign = -sign;
    std::iter_swap(pivot, a.begin() + static_cast<std::ptrdiff_t>(k));
    for (std::size_t i = k + 1; i < a.size(); ++i) {
      for (std::size_t j = column + 1; j < columns; ++j)
        a[i][j] = (a[i][j] * a[k][column] - a[i][column] * a[k][j]) / previous;
      a[i][column] = 0;
    }
    previous = a[k][column];
    ++k;
  }
  result.rank = static_cast<Index>(k);
  if (a.size() == columns && k == columns) result.determinant = sign * previous;
  return result;
}

/// Laplace expansion along the first row.
QQ expansion(const Matrix<QQ>& a) {
  if (a.rowCount() == 0) return QQ(1);
  QQ sum;
  for (Index j = 1; j <= a.columnCount(); ++j) {
    if (a[1][j].isZero()) continue;
    Matrix<QQ> minor = a;
    minor.removeRow(1);
    for (Index i = 1; i <= minor.rowCount(); ++i) minor[i].removeComponent(j);
    minor.resize(minor.rowCount(), a.columnCount() - 1, false);
    const QQ term = a[1][j] * expansion(minor);
    sum += j % 2 == 1 ? term : -term;
  }
  return sum;
}

struct Input {
  Rows rows;
  Index columns = 0;
};

/// Of any shape and, every other time, of low rank.
Input arbitraryInput() {
  const auto rows = *rc::gen::inRange<Index>(1, mostRows + 1);
  const auto columns = *rc::gen::inRange<Index>(1, mostRows + 1);
  if (*rc::gen::arbitrary<bool>()) return {*arbitraryRows(rows, columns, largestEntry), columns};
  const auto rank = *rc::gen::inRange<Index>(0, std::min(rows, columns) + 1);
  return {*arbitraryDependentRows(rows, columns, rank), columns};
}

Rows arbitrarySquare() {
  const auto order = *rc::gen::inRange<Index>(1, mostRows + 1);
  return *arbitraryRows(order, order, largestEntry);
}

TEST(Bareiss, KnowsDeterminantsOfSmallMatrices) {
  EXPECT_EQ(bareiss({{1, 3}, {2, 1}}, 2).determinant, -5);
  EXPECT_EQ(bareiss({{0, 1}, {1, 0}}, 2).determinant, -1);
  EXPECT_EQ(bareiss({{2, 0, 1}, {1, 3, 2}, {1, 1, 4}}, 3).determinant, 18);
  EXPECT_EQ(bareiss({{1, 2}, {2, 4}}, 2).determinant, 0);
  EXPECT_EQ(bareiss({{1, 2}, {2, 4}}, 2).rank, 1);
  EXPECT_EQ(bareiss({{0, 0, 3}, {0, 0, 1}}, 3).rank, 1);
}

RC_GTEST_PROP(EliminationOverQQ, FindsTheRank, ()) {
  const Input input = arbitraryInput();
  auto after = matrixFrom<QQ>(input.rows, input.columns);
  Matrix<QQ> transform;
  const Index rank = eliminate(after, transform, *rc::gen::arbitrary<bool>());
  RC_ASSERT(std::abs(rank) == bareiss(input.rows, static_cast<std::size_t>(input.columns)).rank);
  RC_ASSERT(test::nonZeroRows(after) == std::abs(rank));
}

RC_GTEST_PROP(EliminationOverQQ, CollectsItsRowOperationsExactly, ()) {
  const Input input = arbitraryInput();
  const auto before = matrixFrom<QQ>(input.rows, input.columns);
  auto after = before;
  Matrix<QQ> transform;
  eliminate(after, transform, *rc::gen::arbitrary<bool>());
  const Matrix<QQ> product = transform * before;
  for (Index i = 1; i <= after.rowCount(); ++i) RC_ASSERT(identical(product[i], after[i]));
}

RC_GTEST_PROP(EliminationOverQQ, HasTheSignOfItsTransformation, ()) {
  const Input input = arbitraryInput();
  auto after = matrixFrom<QQ>(input.rows, input.columns);
  Matrix<QQ> transform;
  const Index rank = eliminate(after, transform, false);
  RC_PRE(rank != 0);
  RC_ASSERT(expansion(transform) == QQ(rank < 0 ? -1 : 1));
}

RC_GTEST_PROP(EliminationOverQQ, IsInReducedForm, ()) {
  const Input input = arbitraryInput();
  auto after = matrixFrom<QQ>(input.rows, input.columns);
  Matrix<QQ> transform;
  eliminate(after, transform, true);
  RC_ASSERT(test::isReducedEchelon(after));
}

RC_GTEST_PROP(EliminationOverQQ, HasOneReducedFormForAllOrdersOfTheRows, ()) {
  const Input input = arbitraryInput();
  auto a = matrixFrom<QQ>(input.rows, input.columns);
  auto b = a;
  for (Index i = 1; i <= b.rowCount(); ++i)
    b.swapRows(i, *rc::gen::inRange<Index>(1, b.rowCount() + 1));
  Matrix<QQ> transform;
  eliminate(a, transform, true);
  eliminate(b, transform, true);
  for (Index i = 1; i <= a.rowCount(); ++i) RC_ASSERT(identical(a[i], b[i]));
}

RC_GTEST_PROP(EchelonOverQQ, HasTheReducedFormOfTheElimination, ()) {
  const Input input = arbitraryInput();
  auto a = matrixFrom<QQ>(input.rows, input.columns);
  auto b = a;
  Matrix<QQ> transform;
  const Index rank = eliminate(a, transform, true);
  RC_ASSERT(std::abs(echelonForm(b, transform, true)) == std::abs(rank));
  for (Index i = 1; i <= a.rowCount(); ++i) RC_ASSERT(identical(a[i], b[i]));
}

RC_GTEST_PROP(EchelonOverQQ, HasTheSignOfItsTransformation, ()) {
  const Input input = arbitraryInput();
  auto after = matrixFrom<QQ>(input.rows, input.columns);
  Matrix<QQ> transform;
  const Index rank = echelonForm(after, transform, false);
  RC_PRE(rank != 0);
  RC_ASSERT(expansion(transform) == QQ(rank < 0 ? -1 : 1));
}

RC_GTEST_PROP(DeterminantOverQQ, IsTheFractionFreeOne, ()) {
  const Rows rows = arbitrarySquare();
  const auto order = static_cast<Index>(rows.size());
  RC_ASSERT(matrixFrom<QQ>(rows, order).determinant() ==
            QQ(static_cast<long>(bareiss(rows, rows.size()).determinant)));
}

RC_GTEST_PROP(DeterminantOverQQ, IsTheProductForAProduct, ()) {
  const auto order = *rc::gen::inRange<Index>(1, 5);
  const auto a = matrixFrom<QQ>(*arbitraryRows(order, order, 4), order);
  const auto b = matrixFrom<QQ>(*arbitraryRows(order, order, 4), order);
  RC_ASSERT((a * b).determinant() == a.determinant() * b.determinant());
}

RC_GTEST_PROP(EliminationOverLongDouble, FindsTheRank, ()) {
  const Input input = arbitraryInput();
  auto after = matrixFrom<long double>(input.rows, input.columns);
  Matrix<long double> transform;
  const Index rank = eliminate(after, transform, *rc::gen::arbitrary<bool>());
  RC_ASSERT(std::abs(rank) == bareiss(input.rows, static_cast<std::size_t>(input.columns)).rank);
}

RC_GTEST_PROP(EliminationOverLongDouble, CollectsItsRowOperations, ()) {
  const Input input = arbitraryInput();
  const auto before = matrixFrom<long double>(input.rows, input.columns);
  auto after = before;
  Matrix<long double> transform;
  eliminate(after, transform, *rc::gen::arbitrary<bool>());
  RC_ASSERT(test::transforms(transform, before, after));
}

RC_GTEST_PROP(EliminationOverLongDouble, IsInReducedForm, ()) {
  const Input input = arbitraryInput();
  auto after = matrixFrom<long double>(input.rows, input.columns);
  Matrix<long double> transform;
  eliminate(after, transform, true);
  RC_ASSERT(test::isReducedEchelon(after));
}

RC_GTEST_PROP(DeterminantOverLongDouble, IsTheFractionFreeOne, ()) {
  const Rows rows = arbitrarySquare();
  const auto order = static_cast<Index>(rows.size());
  const long double determinant = matrixFrom<long double>(rows, order).determinant();
  RC_ASSERT(std::llround(determinant) == bareiss(rows, rows.size()).determinant);
}

}  // namespace
}  // namespace starsift
