// Shapes, parts, canonical form, order and rounding of QQ.
#include "numbers/QQ.h"

#include <gtest/gtest.h>

#include <climits>

#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

constexpr long smallBound = 1L << 62;
const QQ huge(ZZ("123456789012345678901234567890", 10));
const QQ inf = QQ::infinity();

bool isSmall(const QQ& value) {
  std::int64_t numerator = 0;
  std::uint32_t denominator = 0;
  return value.toSmall(numerator, denominator);
}

TEST(QQ, IsZeroByDefault) {
  EXPECT_TRUE(QQ().isZero());
  EXPECT_TRUE(QQ().sign());
  EXPECT_EQ(QQ().nenner(), ZZ(1));
}

TEST(QQ, HasTheSizeOfTwoWords) {
  EXPECT_EQ(sizeof(QQ), 16U);
}

TEST(QQ, NamedValues) {
  EXPECT_EQ(QQ::zero(), QQ(0));
  EXPECT_EQ(QQ::one(), QQ(1));
  EXPECT_EQ(QQ::minusOne(), QQ(-1));
  EXPECT_EQ(QQ::ten(), QQ(10));
  EXPECT_TRUE(QQ::infinity().isInf() && QQ::infinity().sign());
  EXPECT_EQ(&QQ::ten(), &QQ::ten());
}

TEST(QQ, HoldsTheWholeRangeOfLong) {
  EXPECT_EQ(QQ(LONG_MIN).numerator(), ZZ(LONG_MIN));
  EXPECT_EQ(QQ(LONG_MAX).numerator(), ZZ(LONG_MAX));
}

TEST(QQ, IsSmallExactlyBelowTwoToTheSixtyTwo) {
  EXPECT_TRUE(isSmall(QQ(smallBound - 1)));
  EXPECT_TRUE(isSmall(QQ(-smallBound + 1)));
  EXPECT_FALSE(isSmall(QQ(smallBound)));
  EXPECT_FALSE(isSmall(QQ(-smallBound)));
}

TEST(QQ, IsSmallExactlyBelowTwoToTheThirtyTwoInTheDenominator) {
  EXPECT_TRUE(isSmall(QQ(1, 0xFFFFFFFFL)));
  EXPECT_FALSE(isSmall(QQ(1, 0x100000000L)));
}

TEST(QQ, ReturnsToTheSmallShapeWhenItFits) {
  QQ value(smallBound);
  value -= QQ(1);
  EXPECT_TRUE(isSmall(value));
  EXPECT_EQ(value, QQ(smallBound - 1));
}

TEST(QQ, ConstructorReducesAndMovesTheSignUp) {
  EXPECT_EQ(QQ(6, 4), QQ(3, 2));
  EXPECT_EQ(QQ(1, -2), QQ(-1, 2));
  EXPECT_EQ(QQ(0, -7), QQ(0));
  EXPECT_EQ(QQ(ZZ(-10), ZZ(-4)), QQ(5, 2));
}

TEST(QQ, ZeroDenominatorFails) {
  EXPECT_FAILS_WITH(QQ(1, 0), "QQ: division by zero");
}

TEST(QQ, PartsAreThoseOfTheMagnitude) {
  const QQ value(-13, 4);
  EXPECT_FALSE(value.sign());
  EXPECT_EQ(value.ganze(), ZZ(3));
  EXPECT_EQ(value.zaehler(), ZZ(1));
  EXPECT_EQ(value.nenner(), ZZ(4));
  EXPECT_EQ(value.numerator(), ZZ(-13));
  EXPECT_EQ(value.denominator(), QQ(4));
}

TEST(QQ, PartsOfABigNumber) {
  const QQ value = -huge / QQ(11);
  EXPECT_EQ(value.ganze() * ZZ(11) + value.zaehler(), huge.numerator());
  EXPECT_EQ(value.nenner(), ZZ(11));
  EXPECT_EQ(value.denominator(), QQ(11));
}

TEST(QQ, PartsOfAnInfinity) {
  EXPECT_EQ((-inf).ganze(), ZZ(1));
  EXPECT_EQ((-inf).zaehler(), ZZ(0));
  EXPECT_EQ((-inf).nenner(), ZZ(1));
  EXPECT_EQ(inf.denominator(), QQ(1));
  EXPECT_FALSE((-inf).sign());
}

TEST(QQ, CanonicaliseReducesAndCarries) {
  EXPECT_EQ(QQ::canonicalise(true, ZZ(1), ZZ(6), ZZ(4)), QQ(5, 2));
  EXPECT_EQ(QQ::canonicalise(false, ZZ(2), ZZ(0), ZZ(9)), QQ(-2));
}

TEST(QQ, CanonicaliseDropsTheSignOfZero) {
  const QQ value = QQ::canonicalise(false, ZZ(0), ZZ(0), ZZ(5));
  EXPECT_TRUE(value.sign());
  EXPECT_EQ(value, QQ(0));
  EXPECT_EQ(value.nenner(), ZZ(1));
}

constexpr const char* signText =
    "A ganze / zaehler / nenner sign has been set, though it should not be used";

TEST(QQ, CanonicaliseRefusesNegativeParts) {
  EXPECT_FAILS_WITH(QQ::canonicalise(true, ZZ(-1), ZZ(0), ZZ(1)), signText);
  EXPECT_FAILS_WITH(QQ::canonicalise(true, ZZ(0), ZZ(-1), ZZ(1)), signText);
  EXPECT_FAILS_WITH(QQ::canonicalise(true, ZZ(0), ZZ(1), ZZ(-1)), signText);
}

TEST(QQ, CanonicaliseRefusesAZeroDenominator) {
  EXPECT_FAILS_WITH(QQ::canonicalise(true, ZZ(0), ZZ(1), ZZ(0)), "QQ: division by zero");
}

TEST(QQ, IntegersAreSeen) {
  EXPECT_TRUE(QQ(3).isInteger());
  EXPECT_TRUE(huge.isInteger());
  EXPECT_FALSE(QQ(1, 2).isInteger());
  EXPECT_FALSE((huge / QQ(11)).isInteger());
  EXPECT_FALSE(inf.isInteger());
}

TEST(QQ, ToInt64TakesSmallIntegersOnly) {
  std::int64_t value = 0;
  EXPECT_TRUE(QQ(-5).toInt64(value));
  EXPECT_EQ(value, -5);
  EXPECT_FALSE(QQ(1, 2).toInt64(value));
  EXPECT_FALSE(huge.toInt64(value));
  EXPECT_FALSE(inf.toInt64(value));
  EXPECT_EQ(value, -5);
}

TEST(QQ, SetInfReplacesAnyShape) {
  QQ value = huge;
  value.setInf(false);
  EXPECT_EQ(value, -inf);
  value = QQ(3);
  value.setInf(true);
  EXPECT_EQ(value, inf);
}

TEST(QQ, CopiesAreIndependent) {
  QQ copy = huge;
  copy += QQ(1);
  EXPECT_NE(copy, huge);
  QQ other;
  other = copy;
  EXPECT_EQ(other, copy);
  other = QQ(1);
  EXPECT_EQ(copy, huge + QQ(1));
  copy = QQ(2, 3);
  EXPECT_EQ(copy, QQ(2, 3));
}

TEST(QQ, AssignmentToItselfKeepsTheValue) {
  QQ value = huge;
  const QQ& same = value;
  value = same;
  EXPECT_EQ(value, huge);
}

TEST(QQ, MovedFromNumberIsZero) {
  QQ source = huge;
  const QQ target = std::move(source);
  EXPECT_EQ(target, huge);
  EXPECT_TRUE(source.isZero());  // NOLINT(bugprone-use-after-move)
}

TEST(QQ, SwapExchangesShapes) {
  QQ a = huge;
  QQ b(1, 3);
  swap(a, b);
  EXPECT_EQ(a, QQ(1, 3));
  EXPECT_EQ(b, huge);
}

TEST(QQOrder, HalfIsAboveAThird) {
  EXPECT_GT(compare(QQ(1, 2), QQ(1, 3)), 0);
}

TEST(QQOrder, MinusHalfIsBelowMinusAThird) {
  EXPECT_LT(compare(QQ(-1, 2), QQ(-1, 3)), 0);
}

TEST(QQOrder, ZeroIsAboveEveryNegative) {
  EXPECT_LT(compare(huge + QQ(1, 3), huge + QQ(1, 2)), 0);
  EXPECT_GT(compare(-huge - QQ(1, 3), -huge - QQ(1, 2)), 0);
  EXPECT_LT(compare(QQ(1, 3), huge + QQ(1, 2)), 0);
  EXPECT_GT(compare(QQ(0), -huge), 0);
  EXPECT_GT(compare(QQ(0), -inf), 0);
  EXPECT_LT(compare(QQ(-1, 1000), QQ(0)), 0);
}

TEST(QQOrder, InfinitiesAreTheEnds) {
  EXPECT_EQ(compare(inf, QQ::infinity()), 0);
  EXPECT_EQ(compare(-inf, -QQ::infinity()), 0);
  EXPECT_GT(compare(inf, -inf), 0);
  EXPECT_LT(compare(-inf, inf), 0);
  EXPECT_GT(compare(inf, huge), 0);
  EXPECT_LT(compare(huge, inf), 0);
  EXPECT_LT(compare(-inf, -huge), 0);
  EXPECT_GT(compare(QQ(-5, 3), -inf), 0);
}

TEST(QQOrder, BigFractionsDecideByTheScaledNumerators) {
  const QQ third = huge + QQ(1, 3);
  const QQ half = huge + QQ(1, 2);
  EXPECT_LT(compare(third, half), 0);
  EXPECT_GT(compare(-third, -half), 0);
  EXPECT_EQ(compare(third, huge + QQ(2, 6)), 0);
}

TEST(QQOrder, BigFractionsDecideByTheIntegerParts) {
  const QQ tiny = QQ(1) / huge;
  EXPECT_LT(compare(QQ(1) + tiny, QQ(2) + tiny), 0);
  EXPECT_LT(compare(tiny, QQ(1)), 0);
  EXPECT_GT(compare(-tiny, QQ(-1)), 0);
}

TEST(QQOrder, RelationsFollowCompare) {
  const QQ a(1, 3);
  const QQ b(1, 2);
  EXPECT_TRUE(a < b && a <= b && b > a && b >= a && a != b && !(a == b));
  EXPECT_TRUE(a <= a && a >= a && a == a);
}

TEST(QQOrder, CrossProductsBeyondAWordDecide) {
  EXPECT_LT(compare(QQ(smallBound - 1, 0xFFFFFFFEL), QQ(smallBound - 1, 0xFFFFFFFDL)), 0);
}

TEST(QQCommonDenominator, ScalesTheFractionalParts) {
  ZZ a;
  ZZ b;
  ZZ common;
  commonDenominator(QQ(1, 2), QQ(-7, 3), a, b, common);
  EXPECT_EQ(common, ZZ(6));
  EXPECT_EQ(a, ZZ(3));
  EXPECT_EQ(b, ZZ(2));
}

TEST(QQCommonDenominator, WantsDistinctResults) {
  ZZ a;
  ZZ b;
  constexpr const char* text = "QQ: The ZZs have the same address";
  EXPECT_FAILS_WITH(commonDenominator(QQ(1), QQ(2), a, a, b), text);
  EXPECT_FAILS_WITH(commonDenominator(QQ(1), QQ(2), a, b, a), text);
  EXPECT_FAILS_WITH(commonDenominator(inf, QQ(2), a, b, b), text);
}

TEST(QQCommonDenominator, WantsFiniteOperands) {
  ZZ a;
  ZZ b;
  ZZ common;
  constexpr const char* text =
      "a_z, b_z can not be set to ZZ::INF -- isInf is logic only available in QQ class";
  EXPECT_FAILS_WITH(commonDenominator(inf, QQ(2), a, b, common), text);
  EXPECT_FAILS_WITH(commonDenominator(QQ(2), -inf, a, b, common), text);
}

TEST(QQRounding, FloorAndCeilOfFractions) {
  EXPECT_EQ(floor(QQ(7, 2)), QQ(3));
  EXPECT_EQ(ceil(QQ(7, 2)), QQ(4));
  EXPECT_EQ(floor(QQ(-7, 2)), QQ(-4));
  EXPECT_EQ(ceil(QQ(-7, 2)), QQ(-3));
  EXPECT_EQ(trunc(QQ(7, 2)), QQ(3));
  EXPECT_EQ(trunc(QQ(-7, 2)), QQ(-3));
}

TEST(QQRounding, ZeroResultIsPositive) {
  EXPECT_TRUE(ceil(QQ(-1, 2)).sign());
  EXPECT_TRUE(ceil(QQ(-1, 2)).isZero());
  EXPECT_TRUE(trunc(QQ(-1, 2)).isZero());
  EXPECT_TRUE(floor(QQ(1, 2)).isZero());
}

TEST(QQRounding, IntegersAndInfinitiesStay) {
  EXPECT_EQ(floor(QQ(-3)), QQ(-3));
  EXPECT_EQ(ceil(huge), huge);
  EXPECT_EQ(floor(inf), inf);
  EXPECT_EQ(ceil(-inf), -inf);
  EXPECT_EQ(trunc(-inf), -inf);
}

TEST(QQRounding, BigFractions) {
  const QQ value = huge + QQ(1, 3);
  EXPECT_EQ(floor(value), huge);
  EXPECT_EQ(ceil(value), huge + QQ(1));
  EXPECT_EQ(floor(-value), -huge - QQ(1));
  EXPECT_EQ(ceil(-value), -huge);
}

TEST(QQ, AbsDropsTheSign) {
  EXPECT_EQ(abs(QQ(-1, 2)), QQ(1, 2));
  EXPECT_EQ(abs(-huge), huge);
  EXPECT_EQ(abs(-inf), inf);
  EXPECT_EQ(abs(QQ(4)), QQ(4));
}

TEST(QQ, MaxTakesTheGreater) {
  EXPECT_EQ(max(QQ(1, 3), QQ(1, 2)), QQ(1, 2));
  EXPECT_EQ(max(QQ(2), QQ(-2)), QQ(2));
  EXPECT_EQ(max(-inf, -huge), -huge);
}

}  // namespace
}  // namespace starsift
