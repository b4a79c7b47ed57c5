#include "core/Matrix.h"

#include <gtest/gtest.h>

#include <limits>
#include <type_traits>

#include "support/fixtures/MatrixSuite.h"
#include "system/Exceptions.h"

namespace starsift {

namespace test {
INSTANTIATE_TYPED_TEST_SUITE_P(LongDouble, MatrixOver, long double);
}  // namespace test

namespace {

using M = Matrix<long double>;

TEST(Matrix, TakesItsRowsFromAListAndPadsTheShortOnes) {
  const M matrix{{1, 2, 3}, {4}};
  EXPECT_EQ(matrix.columnCount(), 3);
  EXPECT_EQ(test::textOf(matrix), "[\n[ 1 2 3 ]\n[ 4 0 0 ]\n]");
}

TEST(Matrix, ConvertsShapeAndEntries) {
  const M source{{1, 2}, {3, 0.1L}};
  M target(5, 5);
  target.convertFrom(source, true);
  EXPECT_EQ(target.rowCount(), 2);
  EXPECT_EQ(target.columnCount(), 2);
  EXPECT_EQ(target[2][2], 0.1L);
}

TEST(Matrix, ConvertsColumnsWithoutRows) {
  M target;
  target.convertFrom(M(0, 4), true);
  EXPECT_EQ(target.columnCount(), 4);
}

TEST(Matrix, IsUnchangedAfterAConversionThatLoses) {
  const M source{{1, std::numeric_limits<long double>::quiet_NaN()}};
  M target{{7}};
  EXPECT_THROW(target.convertFrom(source, true), PrecisionException);
  EXPECT_EQ(test::textOf(target), "[\n[ 7 ]\n]");
}

TEST(Matrix, SumsProductsInRowOrder) {
  // 1 is lost beside 2^64, so the order decides what is left.
  constexpr long double large = 0x1p64L;
  const Vector<long double> ones{1, 1, 1};
  EXPECT_EQ((ones * M{{large}, {-large}, {1}})[1], 1);
  EXPECT_EQ((ones * M{{1}, {large}, {-large}})[1], 0);
  EXPECT_EQ((M{{1, 1, 1}} * M{{large}, {-large}, {1}})[1][1], 1);
  EXPECT_EQ((M{{1, 1, 1}} * M{{1}, {large}, {-large}})[1][1], 0);
}

TEST(Matrix, MovesWithoutThrowing) {
  EXPECT_TRUE(std::is_nothrow_move_constructible_v<M>);
  EXPECT_TRUE(std::is_nothrow_move_assignable_v<M>);
}

TEST(Matrix, RemovesRowsOfALargeMatrixWithoutCopyingThem) {
  M matrix(20'000, 1);
  for (Index i = 1; i <= matrix.rowCount(); ++i) matrix[i][1] = static_cast<long double>(i);
  for (Index i = 0; i < 100; ++i) matrix.removeRow(1);
  EXPECT_EQ(matrix.rowCount(), 19'900);
  EXPECT_EQ(matrix[1][1], 101);
}

}  // namespace
}  // namespace starsift
