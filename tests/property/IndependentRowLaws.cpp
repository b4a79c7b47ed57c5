// The exact choice of independent rows against fraction-free elimination, which
// shares nothing with it: no prime, no lifting, no machine words.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

#include "algorithms/exact/IndependentRows.h"
#include "algorithms/exact/IndependentRowsDetail.h"
#include "algorithms/exact/ModularElimination.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "support/generators/ContainerGenerators.h"
#include "support/generators/NumberGenerators.h"
#include "support/oracles/BareissRows.h"

namespace starsift {
namespace {

using Indices = std::vector<std::size_t>;

constexpr Index mostRows = 8;
constexpr Index mostColumns = 7;

Indices byBareiss(const Matrix<QQ>& matrix) {
  std::vector<std::vector<mpq_class>> rows;
  for (const Vector<QQ>& row : matrix) {
    auto& copy = rows.emplace_back();
    for (const QQ& entry : row) copy.push_back(test::gmpRational(entry));
  }
  return test::independentRowsByBareiss(test::scaledRows(rows));
}

template <class T>
Indices byLibrary(const Matrix<T>& matrix) {
  Indices result;
  for (const Index i : independentRows(matrix)) result.push_back(static_cast<std::size_t>(i - 1));
  return result;
}

/// Evenly, also in the first cases of a run, where RapidCheck would stay near `low`.
Index inRange(Index low, Index high) {
  return *rc::gen::resize(rc::kNominalSize, rc::gen::inRange(low, high));
}

QQ shortRational() {
  return {inRange(-9, 10), inRange(1, 8)};
}

/// Small integers, fractions, integers about the limits of machine words and of up
/// to 40 digits; one kind for a whole row.
Vector<QQ> arbitraryRow(Index columns) {
  Vector<QQ> row(columns);
  const Index kind = inRange(0, 5);
  for (QQ& entry : row) {
    if (kind == 0) entry = shortRational();
    if (kind == 1) entry = test::toQQ(*test::boundaryInteger() + "/1");
    if (kind == 2) entry = test::toQQ(*test::longInteger(40) + "/1");
    if (kind > 2) entry = QQ(inRange(-2, 3));
  }
  return row;
}

/// The matrix with a row of zeros, a multiple, a sum or a combination of its rows
/// put in its last place.
void makeLastDependent(Matrix<QQ>& matrix) {
  Vector<QQ>& last = matrix[matrix.rowCount()];
  last = Vector<QQ>(matrix.columnCount());
  const bool isSum = *rc::gen::arbitrary<bool>();
  const Index terms = inRange(0, matrix.rowCount());
  for (Index k = 1; k <= terms; ++k) {
    const QQ factor = isSum ? QQ(1) : shortRational();
    const Vector<QQ>& term = matrix[inRange(1, matrix.rowCount())];
    for (Index j = 1; j <= last.dimension(); ++j) last[j] += factor * term[j];
  }
}

/// Of every shape and rank, dependent rows above and below those that they depend on.
Matrix<QQ> arbitraryMatrix() {
  const auto rows = inRange(0, mostRows + 1);
  const auto columns = inRange(1, mostColumns + 1);
  Matrix<QQ> matrix(0, columns);
  while (matrix.rowCount() < rows) {
    matrix.resize(matrix.rowCount() + 1, columns, false);
    if (*rc::gen::arbitrary<bool>())
      matrix[matrix.rowCount()] = arbitraryRow(columns);
    else
      makeLastDependent(matrix);
  }
  for (Index i = 2; i <= rows; ++i) matrix.swapRows(i, inRange(1, i + 1));
  return matrix;
}

/// Products of thin and flat matrices: long coefficients, minors with small factors.
Matrix<QQ> arbitraryProduct() {
  const auto rows = inRange(1, mostRows + 1);
  const auto columns = inRange(1, mostColumns + 1);
  const auto rank = inRange(0, std::min(rows, columns) + 1);
  const auto product = test::arbitraryDependentRows(rows, columns, rank);
  return test::matrixFrom<QQ>(*rc::gen::resize(rc::kNominalSize, product), columns);
}

std::vector<IntegerRow> integerRows(const Matrix<QQ>& matrix) {
  std::vector<IntegerRow> rows;
  for (const Vector<QQ>& row : matrix) rows.emplace_back(row);
  return rows;
}

/// The matrix without its rows of zeros.
Matrix<QQ> withoutZeros(Matrix<QQ> matrix) {
  for (Index i = matrix.rowCount(); i > 0; --i)
    if (IntegerRow(matrix[i]).isZero()) matrix.removeRow(i);
  return matrix;
}

std::uint32_t smallPrime() {
  return *rc::gen::element(2U, 3U, 5U, 7U, 11U, 13U);
}

TEST(BareissRows, AreThoseOfSmallMatrices) {
  EXPECT_EQ(test::independentRowsByBareiss({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}, {0, 0, 1}}),
            (Indices{0, 1, 3}));
  EXPECT_EQ(test::independentRowsByBareiss({{0, 0}, {0, 3}, {0, 1}, {2, 5}}), (Indices{1, 3}));
  EXPECT_EQ(
      test::independentRowsByBareiss({{5, 7, 9, 0}, {1, 2, 3, 0}, {4, 5, 6, 0}, {4, 5, 6, 7}}),
      (Indices{0, 1, 3}));
  EXPECT_EQ(test::independentRowsByBareiss({{0, 2, 1}, {3, 1, 0}, {1, 1, 1}}), (Indices{0, 1, 2}));
}

RC_GTEST_PROP(IndependentRowsOverQQ, AreThoseOfFractionFreeElimination, ()) {
  const Matrix<QQ> matrix = *rc::gen::arbitrary<bool>() ? arbitraryMatrix() : arbitraryProduct();
  RC_ASSERT(byLibrary(matrix) == byBareiss(matrix));
}

RC_GTEST_PROP(IndependentRowsOverLongDouble, AreThoseOfTheRationalsThatEntriesStandFor, ()) {
  const Matrix<QQ> exact = arbitraryProduct();
  Matrix<long double> matrix(exact.rowCount(), exact.columnCount());
  for (Index i = 1; i <= exact.rowCount(); ++i) {
    // Hundredths are rounded, but stand for the exact ones; a third of them doesn't.
    const long double divisor = *rc::gen::element(1.0L, 100.0L, 1e18L, 3.0L);
    for (Index j = 1; j <= exact.columnCount(); ++j)
      matrix[i][j] = toDbl(exact[i][j], true) / divisor;
  }
  Matrix<QQ> rationals;
  rationals.convertFrom(matrix, false);
  RC_ASSERT(byLibrary(matrix) == byBareiss(rationals));
}

RC_GTEST_PROP(IndependentRowsByAPrime, AreTheSameForEveryFirstPrime, ()) {
  const Matrix<QQ> matrix =
      withoutZeros(*rc::gen::arbitrary<bool>() ? arbitraryMatrix() : arbitraryProduct());
  const auto columns = static_cast<std::size_t>(matrix.columnCount());
  RC_ASSERT(detail::independentIntegerRows(integerRows(matrix), columns, smallPrime()) ==
            byBareiss(matrix));
}

RC_GTEST_PROP(IndependentRowsByAPrime, AreRightOrNotFound, ()) {
  const Matrix<QQ> matrix = withoutZeros(arbitraryProduct());
  const std::vector<IntegerRow> rows = integerRows(matrix);
  const PrimeField field(smallPrime());
  const auto columns = static_cast<std::size_t>(matrix.columnCount());
  const std::optional<Indices> found = detail::provenSplit(rows, columns, field);
  const Indices expected = byBareiss(matrix);
  RC_TAG(found.has_value());
  RC_ASSERT(found.value_or(expected) == expected);
  // Where the prime finds the same, it also proves it.
  RC_ASSERT(found.has_value() == (splitRows(rows, columns, field).kept == expected));
}

}  // namespace
}  // namespace starsift
