#include "algorithms/exact/LastCoordinate.h"

#include <gtest/gtest.h>

#include "numbers/VectorQQ.h"
#include "support/fixtures/RowsText.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::rowsText;

template <class T>
class LastCoordinateOver : public testing::Test {
 protected:
  /// The rows less multiples of row `pick`; "unchanged" where there are none.
  static std::string reduced(Matrix<T> rows, Index pick) {
    const std::string before = rowsText(rows);
    if (reduceLast(rows, pick)) return rowsText(rows);
    EXPECT_EQ(rowsText(rows), before);
    return "unchanged";
  }
};
using LastNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(LastCoordinateOver, LastNumbers);

TYPED_TEST(LastCoordinateOver, AnyButZeroIsLessThanThatOfNoRow) {
  const Matrix<TypeParam> rows{{1, 0}, {1, -9}, {1, 4}};
  EXPECT_FALSE(lastIsLess(rows, 1, 0));
  EXPECT_TRUE(lastIsLess(rows, 2, 0));
  EXPECT_TRUE(lastIsLess(rows, 3, 0));
}

TYPED_TEST(LastCoordinateOver, MagnitudesAreCompared) {
  const Matrix<TypeParam> rows{{9, 0}, {1, -3}, {0, 4}, {0, -4}};
  EXPECT_TRUE(lastIsLess(rows, 2, 3));
  EXPECT_TRUE(lastIsLess(rows, 2, 4));
  EXPECT_FALSE(lastIsLess(rows, 3, 2));
  // Equal ones are not less, and zero is none of them.
  EXPECT_FALSE(lastIsLess(rows, 3, 4));
  EXPECT_FALSE(lastIsLess(rows, 4, 3));
  EXPECT_FALSE(lastIsLess(rows, 1, 2));
}

TYPED_TEST(LastCoordinateOver, RestsAreFromZeroToThePickedOne) {
  EXPECT_EQ(this->reduced({{1, 5}, {2, 12}, {3, -12}, {4, 0}, {6, 3}}, 1),
            "[ 1 5 ] [ 0 2 ] [ 6 3 ] [ 4 0 ] [ 6 3 ]");
  EXPECT_EQ(this->reduced({{2, 12}, {1, -5}, {3, -12}}, 2), "[ 5 -3 ] [ 1 -5 ] [ 1 -2 ]");
}

TYPED_TEST(LastCoordinateOver, MultiplesLeaveZero) {
  EXPECT_EQ(this->reduced({{1, 2, 3}, {5, 5, -6}, {0, 1, 9}}, 1),
            "[ 1 2 3 ] [ 7 9 0 ] [ -3 -5 0 ]");
}

TYPED_TEST(LastCoordinateOver, NothingIsTakenOffRowsWithZeros) {
  EXPECT_EQ(this->reduced({{5, 0}, {1, 3}, {7, 0}}, 2), "unchanged");
  EXPECT_EQ(this->reduced({{1, 3}}, 1), "unchanged");
}

TEST(LastCoordinate, ThrowsWhereLongDoubleCannotHoldTheRow) {
  Matrix<long double> rows{{1e10L, 1}, {0, 1e10L}};
  EXPECT_THROW(reduceLast(rows, 1), PrecisionException);
}

TEST(LastCoordinate, QuotientOfManyDigitsIsExactOverRationals) {
  Matrix<QQ> rows{{QQ(1), QQ(3)}, {QQ(0), QQ::parse("100000000000000000000000000000001")}};
  EXPECT_TRUE(reduceLast(rows, 1));
  EXPECT_EQ(rows[2][2], QQ(2));
}

}  // namespace
}  // namespace starsift
