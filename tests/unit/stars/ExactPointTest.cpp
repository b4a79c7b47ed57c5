#include "stars/ExactPoint.h"

#include <gtest/gtest.h>

#include <limits>

#include "numbers/Conversion.h"

namespace starsift {
namespace {

using Components = std::vector<std::int64_t>;
using Numerators = std::vector<ZZ>;

constexpr long twoTo62 = 1L << 62;

template <class T>
class ExactPointOver : public testing::Test {};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(ExactPointOver, LatticeNumbers);

TYPED_TEST(ExactPointOver, IntegersAreSmall) {
  ExactPoint point;
  ASSERT_TRUE(point.assign(Vector<TypeParam>{TypeParam(3), TypeParam(-7), TypeParam(0)}));
  ASSERT_TRUE(point.isSmall());
  EXPECT_EQ(point.small().components, (Components{3, -7, 0}));
  EXPECT_EQ(point.small().magnitude, 7);
}

TYPED_TEST(ExactPointOver, MagnitudeIsThatOfTheHighestPositiveComponentToo) {
  ExactPoint point;
  ASSERT_TRUE(point.assign(Vector<TypeParam>{TypeParam(-3), TypeParam(8)}));
  EXPECT_EQ(point.small().magnitude, 8);
}

TYPED_TEST(ExactPointOver, IntegersUpToTheLastBelowTwoTo62AreSmall) {
  ExactPoint point;
  ASSERT_TRUE(point.assign(Vector<TypeParam>{TypeParam(twoTo62 - 1), TypeParam(1 - twoTo62)}));
  ASSERT_TRUE(point.isSmall());
  EXPECT_EQ(point.small().magnitude, twoTo62 - 1);
}

TYPED_TEST(ExactPointOver, TwoTo62IsNotSmall) {
  ExactPoint point;
  ASSERT_TRUE(point.assign(Vector<TypeParam>{TypeParam(twoTo62)}));
  EXPECT_FALSE(point.isSmall());
}

TYPED_TEST(ExactPointOver, MinusTwoTo62IsNotSmall) {
  ExactPoint point;
  ASSERT_TRUE(point.assign(Vector<TypeParam>{TypeParam(-twoTo62)}));
  EXPECT_FALSE(point.isSmall());
}

TYPED_TEST(ExactPointOver, FractionsGetOneDenominator) {
  ExactPoint point;
  ASSERT_TRUE(point.assign(
      Vector<TypeParam>{TypeParam(1) / TypeParam(2), TypeParam(-3) / TypeParam(5), TypeParam(4)}));
  EXPECT_FALSE(point.isSmall());
  EXPECT_EQ(point.scaled().denominator, ZZ(10));
  EXPECT_EQ(point.scaled().numerators, (Numerators{ZZ(5), ZZ(-6), ZZ(40)}));
}

TYPED_TEST(ExactPointOver, SmallPointHasAScaledFormToo) {
  ExactPoint point;
  ASSERT_TRUE(point.assign(Vector<TypeParam>{TypeParam(3), TypeParam(-7)}));
  EXPECT_EQ(point.scaled().denominator, ZZ(1));
  EXPECT_EQ(point.scaled().numerators, (Numerators{ZZ(3), ZZ(-7)}));
}

TYPED_TEST(ExactPointOver, NewPointReplacesTheScaledFormOfTheFormerOne) {
  ExactPoint point;
  ASSERT_TRUE(point.assign(Vector<TypeParam>{TypeParam(1) / TypeParam(2)}));
  ASSERT_EQ(point.scaled().denominator, ZZ(2));
  ASSERT_TRUE(point.assign(Vector<TypeParam>{TypeParam(3), TypeParam(4)}));
  EXPECT_TRUE(point.isSmall());
  EXPECT_EQ(point.scaled().denominator, ZZ(1));
  EXPECT_EQ(point.scaled().numerators, (Numerators{ZZ(3), ZZ(4)}));
}

TYPED_TEST(ExactPointOver, PointWithoutACommonScaleKeepsItsComponents) {
  Vector<TypeParam> x(200);
  for (TypeParam& component : x) component = TypeParam(1);
  x[2] = NumberConversion<TypeParam, QQ>::convert(QQ::parse("1e-4000"));
  ExactPoint point;
  ASSERT_TRUE(point.assign(x));
  EXPECT_FALSE(point.isSmall());
  EXPECT_FALSE(point.isScalable());
  EXPECT_EQ(point.component(0), QQ(1));
  EXPECT_EQ(point.component(1), QQ::parse("1e-4000"));
  ASSERT_TRUE(point.assign(Vector<TypeParam>{TypeParam(1) / TypeParam(2)}));
  EXPECT_TRUE(point.isScalable());
}

TYPED_TEST(ExactPointOver, EveryPointHasComponents) {
  ExactPoint point;
  ASSERT_TRUE(point.assign(Vector<TypeParam>{TypeParam(3), TypeParam(-7)}));
  EXPECT_EQ(point.component(1), QQ(-7));
  ASSERT_TRUE(point.assign(Vector<TypeParam>{TypeParam(1) / TypeParam(2), TypeParam(-7)}));
  EXPECT_EQ(point.component(0), QQ(1, 2));
  EXPECT_EQ(point.component(1), QQ(-7));
}

TYPED_TEST(ExactPointOver, InfiniteComponentIsRefused) {
  ExactPoint point;
  EXPECT_FALSE(point.assign(Vector<TypeParam>{TypeParam(1), NumberTraits<TypeParam>::infinity()}));
}

TYPED_TEST(ExactPointOver, NegativeInfiniteComponentIsRefused) {
  ExactPoint point;
  EXPECT_FALSE(point.assign(Vector<TypeParam>{-NumberTraits<TypeParam>::infinity(), TypeParam(1)}));
}

TYPED_TEST(ExactPointOver, PointWithoutComponentsIsSmall) {
  ExactPoint point;
  ASSERT_TRUE(point.assign(Vector<TypeParam>{TypeParam(9)}));
  ASSERT_TRUE(point.assign(Vector<TypeParam>()));
  EXPECT_TRUE(point.isSmall());
  EXPECT_EQ(point.small().magnitude, 0);
  EXPECT_TRUE(point.small().components.empty());
}

TEST(ExactPoint, NanIsRefused) {
  ExactPoint point;
  EXPECT_FALSE(point.assign(Vector<long double>{std::numeric_limits<long double>::quiet_NaN()}));
}

TEST(ExactPoint, LongDoubleStandsForTheDecimalThatItCarries) {
  ExactPoint point;
  ASSERT_TRUE(point.assign(Vector<long double>{0.1L, 123456789.123456789L}));
  EXPECT_EQ(point.scaled().denominator, ZZ(1'000'000'000L));
  EXPECT_EQ(point.scaled().numerators, (Numerators{ZZ(100'000'000L), ZZ(123456789123456789L)}));
}

TEST(ExactPoint, RationalsNeedNoDecimals) {
  ExactPoint point;
  ASSERT_TRUE(point.assign(Vector<QQ>{QQ(1, 3), QQ(-1, 4)}));
  EXPECT_EQ(point.scaled().denominator, ZZ(12));
  EXPECT_EQ(point.scaled().numerators, (Numerators{ZZ(4), ZZ(-3)}));
}

}  // namespace
}  // namespace starsift
