// What holds for matrices over every number type; small integers only.
#pragma once

#include <gtest/gtest.h>

#include <utility>

#include "core/Matrix.h"
#include "support/ExpectFails.h"
#include "support/TextOf.h"

namespace starsift::test {

template <class T>
class MatrixOver : public ::testing::Test {
 protected:
  static Vector<T> vectorOf(std::initializer_list<int> values) {
    Vector<T> vector(static_cast<Index>(values.size()));
    std::copy(values.begin(), values.end(), vector.begin());
    return vector;
  }
  static Matrix<T> of(std::initializer_list<std::initializer_list<int>> rows) {
    const Index columns = rows.size() == 0 ? 0 : static_cast<Index>(rows.begin()->size());
    Matrix<T> matrix(static_cast<Index>(rows.size()), columns);
    Index i = 0;
    for (const auto& row : rows) matrix[++i] = vectorOf(row);
    return matrix;
  }
  /// All rows in one line.
  static std::string rowsOf(const Matrix<T>& matrix) {
    std::string text;
    for (const Vector<T>& row : matrix) text += textOf(row);
    return text;
  }
};
TYPED_TEST_SUITE_P(MatrixOver);

TYPED_TEST_P(MatrixOver, StartsWithoutRowsAndColumns) {
  const Matrix<TypeParam> matrix;
  EXPECT_EQ(matrix.rowCount(), 0);
  EXPECT_EQ(matrix.columnCount(), 0);
  EXPECT_FALSE(matrix.isSet());
  EXPECT_EQ(matrix.separators(), ", ");
  EXPECT_FALSE(matrix.mergeSeparators());
  EXPECT_FALSE(matrix.secondFlag());
}

TYPED_TEST_P(MatrixOver, IsSetOnlyWithRowsAndColumns) {
  EXPECT_TRUE(Matrix<TypeParam>(1, 1).isSet());
  EXPECT_FALSE(Matrix<TypeParam>(1, 0).isSet());
  EXPECT_FALSE(Matrix<TypeParam>(0, 1).isSet());
}

TYPED_TEST_P(MatrixOver, StartsWithZeros) {
  EXPECT_EQ(this->rowsOf(Matrix<TypeParam>(2, 2)), "[ 0 0 ][ 0 0 ]");
}

TYPED_TEST_P(MatrixOver, ResizesSlotZeroToo) {
  Matrix<TypeParam> matrix(2, 3);
  EXPECT_EQ(matrix.element(0).dimension(), 3);
  matrix.resize(1, 5, false);
  EXPECT_EQ(matrix.element(0).dimension(), 5);
}

TYPED_TEST_P(MatrixOver, KeepsTheColumnsWhenRowsAreAdded) {
  auto matrix = this->of({{1, 2}});
  matrix.resize(2, false);
  EXPECT_EQ(this->rowsOf(matrix), "[ 1 2 ][ 0 0 ]");
  EXPECT_EQ(matrix.columnCount(), 2);
}

TYPED_TEST_P(MatrixOver, ShowsTheRowsBehindItsEndAgain) {
  auto matrix = this->of({{1, 2}, {3, 4}});
  matrix.resize(1, 2, false);
  matrix.resize(2, 2, false);
  EXPECT_EQ(this->rowsOf(matrix), "[ 1 2 ][ 3 4 ]");
}

TYPED_TEST_P(MatrixOver, HasZeroColumnsWhereOthersWere) {
  auto matrix = this->of({{1, 2}, {3, 4}});
  matrix.resize(2, 1, false);
  matrix.resize(2, 2, false);
  EXPECT_EQ(this->rowsOf(matrix), "[ 1 0 ][ 3 0 ]");
}

TYPED_TEST_P(MatrixOver, CutsRowsAndColumns) {
  auto matrix = this->of({{1, 2}, {3, 4}});
  matrix.resize(1, 1, true);
  EXPECT_EQ(this->rowsOf(matrix), "[ 1 ]");
  EXPECT_EQ(matrix.columnCount(), 1);
}

TYPED_TEST_P(MatrixOver, HasColumnsWithoutRows) {
  Matrix<TypeParam> matrix;
  matrix.resize(0, 3, false);
  EXPECT_EQ(matrix.columnCount(), 3);
  matrix.resize(1, false);
  EXPECT_EQ(this->rowsOf(matrix), "[ 0 0 0 ]");
}

TYPED_TEST_P(MatrixOver, ReservesRowsByTheMargin) {
  Matrix<TypeParam> matrix;
  matrix.resize(5, 1, true);
  EXPECT_EQ(matrix.capacity(), 105);
}

TYPED_TEST_P(MatrixOver, RefusesNegativeCounts) {
  Matrix<TypeParam> matrix;
  EXPECT_FAILS_WITH(matrix.resize(-1, 1, false), "Matrix: invalid size");
  EXPECT_FAILS_WITH(matrix.resize(1, -1, false), "Matrix: invalid size");
  EXPECT_FAILS_WITH(matrix.resize(-1, true), "Matrix: invalid size");
}

TYPED_TEST_P(MatrixOver, KeepsTheColumnsWhenItIsCleared) {
  auto matrix = this->of({{1, 2}});
  matrix.clear();
  EXPECT_EQ(matrix.rowCount(), 0);
  EXPECT_EQ(matrix.columnCount(), 2);
}

TYPED_TEST_P(MatrixOver, ForgetsTheColumnsWhenItIsDestroyed) {
  auto matrix = this->of({{1, 2}});
  matrix.destroy();
  EXPECT_EQ(matrix.rowCount(), 0);
  EXPECT_EQ(matrix.columnCount(), 0);
  EXPECT_EQ(matrix.data(), nullptr);
}

TYPED_TEST_P(MatrixOver, CopiesDeeply) {
  const auto source = this->of({{1, 2}});
  auto copy = source;
  copy[1][1] = TypeParam(9);
  Matrix<TypeParam> assigned(5, 7);
  assigned = source;
  EXPECT_EQ(this->rowsOf(source), "[ 1 2 ]");
  EXPECT_EQ(this->rowsOf(assigned), "[ 1 2 ]");
  EXPECT_EQ(assigned.columnCount(), 2);
}

TYPED_TEST_P(MatrixOver, MovesShapeAndRows) {
  auto source = this->of({{1, 2}});
  Matrix<TypeParam> target(std::move(source));
  EXPECT_EQ(this->rowsOf(target), "[ 1 2 ]");
  EXPECT_EQ(source.columnCount(), 0);
  source = std::move(target);
  EXPECT_EQ(this->rowsOf(source), "[ 1 2 ]");
  EXPECT_EQ(source.columnCount(), 2);
  EXPECT_EQ(target.columnCount(), 0);
}

TYPED_TEST_P(MatrixOver, HasOnesInTheDiagonalOfTheIdentity) {
  EXPECT_EQ(this->rowsOf(Matrix<TypeParam>::identity(3)), "[ 1 0 0 ][ 0 1 0 ][ 0 0 1 ]");
  EXPECT_FALSE(Matrix<TypeParam>::identity(0).isSet());
}

TYPED_TEST_P(MatrixOver, SwapsRowsWithoutTouchingTheirEntries) {
  auto matrix = this->of({{1, 2}, {3, 4}});
  const TypeParam* const storage = matrix[1].data();
  matrix.swapRows(1, 2);
  EXPECT_EQ(this->rowsOf(matrix), "[ 3 4 ][ 1 2 ]");
  EXPECT_EQ(matrix[2].data(), storage);
  matrix.swapRows(2, 2);
  EXPECT_EQ(this->rowsOf(matrix), "[ 3 4 ][ 1 2 ]");
}

TYPED_TEST_P(MatrixOver, SwapsWithSlotZero) {
  auto matrix = this->of({{1, 2}});
  matrix.swapRows(0, 1);
  EXPECT_EQ(this->rowsOf(matrix), "[ 0 0 ]");
  EXPECT_EQ(textOf(matrix[0]), "[ 1 2 ]");
}

TYPED_TEST_P(MatrixOver, RefusesToSwapRowsOutOfRange) {
  Matrix<TypeParam> matrix(2, 2);
  EXPECT_FAILS_WITH(matrix.swapRows(1, 3), "Matrix: row swap index out of range");
  EXPECT_FAILS_WITH(matrix.swapRows(3, 1), "Matrix: row swap index out of range");
  EXPECT_FAILS_WITH(matrix.swapRows(-1, 1), "Matrix: row swap index out of range");
  EXPECT_FAILS_WITH(matrix.swapRows(1, -1), "Matrix: row swap index out of range");
  EXPECT_FAILS_WITH(matrix.swapRows(3, 3), "Matrix: row swap index out of range");
}

TYPED_TEST_P(MatrixOver, RemovesARowAndKeepsTheOrderOfTheOthers) {
  auto matrix = this->of({{1, 2}, {3, 4}, {5, 6}});
  const TypeParam* const storage = matrix[3].data();
  matrix.removeRow(1);
  EXPECT_EQ(this->rowsOf(matrix), "[ 3 4 ][ 5 6 ]");
  EXPECT_EQ(matrix[2].data(), storage);
}

TYPED_TEST_P(MatrixOver, RemovesTheLastRowForAnIndexBeyondIt) {
  auto matrix = this->of({{1, 2}, {3, 4}, {5, 6}});
  matrix.removeRow(6);
  EXPECT_EQ(this->rowsOf(matrix), "[ 1 2 ][ 3 4 ]");
  matrix.removeRow(2);
  EXPECT_EQ(this->rowsOf(matrix), "[ 1 2 ]");
}

TYPED_TEST_P(MatrixOver, RemovesSlotZero) {
  auto matrix = this->of({{1, 2}, {3, 4}});
  matrix.removeRow(0);
  EXPECT_EQ(this->rowsOf(matrix), "[ 3 4 ]");
  EXPECT_EQ(textOf(matrix[0]), "[ 1 2 ]");
}

TYPED_TEST_P(MatrixOver, RefusesToRemoveANegativeRow) {
  Matrix<TypeParam> matrix(2, 2);
  EXPECT_FAILS_WITH(matrix.removeRow(-1), "Invalid row index!");
}

TYPED_TEST_P(MatrixOver, HasNoRowToRemoveWhileItIsEmpty) {
  Matrix<TypeParam> matrix;
  EXPECT_FAILS_WITH(matrix.removeRow(1), "Matrix: invalid size");
}

TYPED_TEST_P(MatrixOver, MultipliesAVectorFromTheRight) {
  const auto matrix = this->of({{1, 2, 3}, {4, 5, 6}});
  EXPECT_EQ(textOf(matrix * this->vectorOf({1, -1, 2})), "[ 5 11 ]");
}

TYPED_TEST_P(MatrixOver, MultipliesAVectorFromTheLeft) {
  const auto matrix = this->of({{1, 2, 3}, {4, 5, 6}});
  EXPECT_EQ(textOf(this->vectorOf({1, -1}) * matrix), "[ -3 -3 -3 ]");
}

TYPED_TEST_P(MatrixOver, HasEmptyProductsWithoutRowsOrColumns) {
  EXPECT_EQ(textOf(Matrix<TypeParam>(0, 2) * this->vectorOf({1, 2})), "[ ]");
  EXPECT_EQ(textOf(this->vectorOf({1, 2}) * Matrix<TypeParam>(2, 0)), "[ ]");
  EXPECT_EQ(textOf(Matrix<TypeParam>(2, 0) * this->vectorOf({})), "[ 0 0 ]");
}

TYPED_TEST_P(MatrixOver, MultipliesMatrices) {
  const auto a = this->of({{1, 2}, {3, 4}});
  const auto b = this->of({{0, 1, 5}, {1, 0, 6}});
  EXPECT_EQ(this->rowsOf(a * b), "[ 2 1 17 ][ 4 3 39 ]");
  EXPECT_EQ((a * b).columnCount(), 3);
}

TYPED_TEST_P(MatrixOver, MultipliesInPlaceAndByItself) {
  auto a = this->of({{1, 1}, {0, 1}});
  auto& result = a *= this->of({{0, 1, 5}, {1, 0, 6}});
  EXPECT_EQ(this->rowsOf(a), "[ 1 1 11 ][ 1 0 6 ]");
  EXPECT_EQ(&result, &a);
  auto b = this->of({{1, 1}, {0, 1}});
  b *= b;
  EXPECT_EQ(this->rowsOf(b), "[ 1 2 ][ 0 1 ]");
}

TYPED_TEST_P(MatrixOver, NamesTheProductThatSawAMismatch) {
  Matrix<TypeParam> a(2, 3);
  const Matrix<TypeParam> b(2, 3);
  const auto vector = this->vectorOf({1});
  EXPECT_FAILS_WITH(a * vector, "Matrix: mat-vec multiplication dimension mismatch");
  EXPECT_FAILS_WITH(vector * a, "vector-matrix dimension mismatch");
  EXPECT_FAILS_WITH(a * b, "Matrix: dimension mismatch6");
  EXPECT_FAILS_WITH(a *= b, "Matrix: dimension mismatch3");
}

TYPED_TEST_P(MatrixOver, ChecksTheVectorOfAMatrixWithoutColumnsToo) {
  EXPECT_FAILS_WITH(this->vectorOf({1}) * Matrix<TypeParam>(2, 0),
                    "vector-matrix dimension mismatch");
}

REGISTER_TYPED_TEST_SUITE_P(
    MatrixOver, StartsWithoutRowsAndColumns, IsSetOnlyWithRowsAndColumns, StartsWithZeros,
    ResizesSlotZeroToo, KeepsTheColumnsWhenRowsAreAdded, ShowsTheRowsBehindItsEndAgain,
    HasZeroColumnsWhereOthersWere, CutsRowsAndColumns, HasColumnsWithoutRows,
    ReservesRowsByTheMargin, RefusesNegativeCounts, KeepsTheColumnsWhenItIsCleared,
    ForgetsTheColumnsWhenItIsDestroyed, CopiesDeeply, MovesShapeAndRows,
    HasOnesInTheDiagonalOfTheIdentity, SwapsRowsWithoutTouchingTheirEntries, SwapsWithSlotZero,
    RefusesToSwapRowsOutOfRange, RemovesARowAndKeepsTheOrderOfTheOthers,
    RemovesTheLastRowForAnIndexBeyondIt, RemovesSlotZero, RefusesToRemoveANegativeRow,
    HasNoRowToRemoveWhileItIsEmpty, MultipliesAVectorFromTheRight, MultipliesAVectorFromTheLeft,
    HasEmptyProductsWithoutRowsOrColumns, MultipliesMatrices, MultipliesInPlaceAndByItself,
    NamesTheProductThatSawAMismatch, ChecksTheVectorOfAMatrixWithoutColumnsToo);

}  // namespace starsift::test
