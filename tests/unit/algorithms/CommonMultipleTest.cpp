#include "algorithms/exact/CommonMultiple.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

template <class T>
class CommonMultipleOver : public testing::Test {};
using NumberTypes = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(CommonMultipleOver, NumberTypes);

TYPED_TEST(CommonMultipleOver, RangeIsWidenedToTheSmallestCommonMultiple) {
  // Of 6 and 7, 8, ... the multiples are 42, 24, 18, 30, 66, 12; 12 is one of 6.
  EXPECT_EQ(lcmAdjust<TypeParam>(6, 7, 0), TypeParam(-5));
}

TYPED_TEST(CommonMultipleOver, BestRangeOnTheWayIsTaken) {
  // Of 10 and 4 the multiple is 20, and 5 divides 10.
  EXPECT_EQ(lcmAdjust<TypeParam>(10, 4, 0), TypeParam(-1));
  // Of 9 and 8, 9: the first 9 wins, whatever comes behind it.
  EXPECT_EQ(lcmAdjust<TypeParam>(9, 8, 0), TypeParam(-1));
  // Of 4 and 9, 10, 11, 12 the multiples are 36, 20, 44, 12.
  EXPECT_EQ(lcmAdjust<TypeParam>(4, 9, 0), TypeParam(-3));
}

TYPED_TEST(CommonMultipleOver, DivisorsAndMultiplesStay) {
  EXPECT_EQ(lcmAdjust<TypeParam>(6, 3, 0), TypeParam(0));
  EXPECT_EQ(lcmAdjust<TypeParam>(6, 12, 0), TypeParam(0));
  EXPECT_EQ(lcmAdjust<TypeParam>(1, 7, 0), TypeParam(0));
}

TYPED_TEST(CommonMultipleOver, LowerEndNeedNotBeZero) {
  EXPECT_EQ(lcmAdjust<TypeParam>(6, 10, 3), TypeParam(-2));
  EXPECT_EQ(lcmAdjust<TypeParam>(6, -3, -10), TypeParam(-15));
}

TYPED_TEST(CommonMultipleOver, EmptyRangeStays) {
  EXPECT_EQ(lcmAdjust<TypeParam>(6, 5, 5), TypeParam(5));
}

TYPED_TEST(CommonMultipleOver, SearchEndsWithTheBestSoFar) {
  // The first common divisor of the prime would come after a million steps.
  EXPECT_EQ(lcmAdjust<TypeParam>(1000003, 2, 0), TypeParam(0));
  // After 99999 steps it is found.
  EXPECT_EQ(lcmAdjust<TypeParam>(100003, 4, 0), TypeParam(-99999));
}

}  // namespace
}  // namespace starsift
