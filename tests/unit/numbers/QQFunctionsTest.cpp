#include "numbers/QQFunctions.h"

#include <gtest/gtest.h>

#include "numbers/QQText.h"
#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

const QQ inf = QQ::infinity();
constexpr const char* complexRoot = "QQ: complex roots are not implemented";

QQ tenTo(long exponent) {
  return pow(QQ::ten(), QQ(exponent));
}

/// |value - expected| <= 10^-30 |expected|.
testing::AssertionResult isNear(const QQ& value, const QQ& expected) {
  if (abs(value - expected) <= tenTo(-30) * abs(expected)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << value << " instead of " << expected;
}

testing::AssertionResult isWithin(const QQ& value, const QQ& expected) {
  if (abs(value - expected) <= tenTo(-30)) return testing::AssertionSuccess();
  return testing::AssertionFailure() << value << " instead of " << expected;
}

TEST(QQPow, IntegerExponents) {
  EXPECT_EQ(pow(QQ(2, 3), QQ(3)), QQ(8, 27));
  EXPECT_EQ(pow(QQ(-2, 3), QQ(3)), QQ(-8, 27));
  EXPECT_EQ(pow(QQ(-2), QQ(4)), QQ(16));
  EXPECT_EQ(pow(QQ(7, 5), QQ(1)), QQ(7, 5));
  EXPECT_EQ(pow(QQ::ten(), QQ(18)), QQ(1'000'000'000'000'000'000));
  EXPECT_EQ(pow(QQ::ten(), QQ(19)), QQ(1'000'000'000'000'000'000) * QQ::ten());
}

TEST(QQPow, ExponentZeroGivesOne) {
  EXPECT_EQ(pow(QQ(0), QQ(0)), QQ(1));
  EXPECT_EQ(pow(inf, QQ(0)), QQ(1));
  EXPECT_EQ(pow(QQ(-5, 3), QQ(0)), QQ(1));
}

TEST(QQPow, NegativeExponentGivesTheReciprocal) {
  EXPECT_EQ(pow(QQ(2, 3), QQ(-2)), QQ(9, 4));
  EXPECT_EQ(pow(QQ::ten(), QQ(-3)), QQ(1, 1000));
  EXPECT_EQ(pow(QQ(0), QQ(-1)), inf);
  EXPECT_EQ(pow(QQ(4), QQ(-1, 2)), QQ(1, 2));
}

TEST(QQPow, FractionalExponentIsExactWhereThePowerIsRational) {
  EXPECT_EQ(pow(QQ(4, 9), QQ(3, 2)), QQ(8, 27));
  EXPECT_EQ(pow(QQ(-8), QQ(2, 3)), QQ(4));
  EXPECT_EQ(pow(QQ(-8, 27), QQ(5, 3)), QQ(-32, 243));
  EXPECT_EQ(pow(QQ(0), QQ(1, 2)), QQ(0));
  EXPECT_EQ(
      pow(QQ(1), QQ(ZZ("12345678901234567890123", 10), ZZ("987654321987654321987654322", 10))),
      QQ(1));
}

TEST(QQPow, FractionalExponentElseIsNear) {
  EXPECT_TRUE(isNear(pow(QQ(2), QQ(5, 2)),
                     QQ::parse("5.6568542494923801952067548968387923142786875015077920")));
  EXPECT_TRUE(isNear(pow(QQ(-2), QQ(5, 3)),
                     QQ::parse("-3.17480210393639894950341127854461652078298665579970")));
}

TEST(QQPow, BaseNearOneKeepsItsLogarithm) {
  // (1 + d)^(1 / 2d) is the root of e up to a relative d / 4.
  const QQ d = tenTo(-60);
  EXPECT_TRUE(isNear(pow(QQ(1) + d, QQ(1, 2) / d + QQ(1, 3)),
                     QQ::parse("1.6487212707001281468486507878141635716537761007101480")));
}

TEST(QQPow, HugeNumeratorsAndDenominatorsOfTheExponentAreQuick) {
  const QQ tenthPowers = pow(QQ::ten(), QQ(99999) + QQ(1, 99991)) / tenTo(99999);
  EXPECT_TRUE(isNear(tenthPowers, pow(QQ::ten(), QQ(1, 99991))));
  const QQ tiny(ZZ(1), ZZ("1000000000000000000000000000000000000000007", 10));
  EXPECT_TRUE(isNear(pow(QQ(7), tiny), QQ(1)));
}

TEST(QQPow, OfInfinities) {
  EXPECT_EQ(pow(inf, QQ(2)), inf);
  EXPECT_EQ(pow(-inf, QQ(2)), inf);
  EXPECT_EQ(pow(-inf, QQ(3)), -inf);
  EXPECT_EQ(pow(inf, QQ(-1)), QQ(0));
  EXPECT_EQ(pow(-inf, QQ(1, 3)), -inf);
  EXPECT_FAILS_WITH(pow(-inf, QQ(1, 2)), complexRoot);
}

TEST(QQPow, InfiniteExponentGivesTheLimit) {
  EXPECT_EQ(pow(QQ(2), inf), inf);
  EXPECT_EQ(pow(QQ(1, 2), inf), QQ(0));
  EXPECT_EQ(pow(QQ(1), inf), QQ(1));
  EXPECT_EQ(pow(QQ(2), -inf), QQ(0));
  EXPECT_FAILS_WITH(pow(QQ(-2), inf), complexRoot);
}

TEST(QQPow, ExponentBeyondMemory) {
  const QQ exponent = tenTo(30);
  EXPECT_EQ(pow(QQ(-1), exponent), QQ(1));
  EXPECT_EQ(pow(QQ(-1), exponent + QQ(1)), QQ(-1));
  EXPECT_EQ(pow(QQ(0), exponent), QQ(0));
  EXPECT_FAILS_WITH(pow(QQ(2), exponent), "QQ: exponent out of range");
  EXPECT_FAILS_WITH(pow(QQ(1, 3), exponent), "QQ: exponent out of range");
  EXPECT_FAILS_WITH(pow(QQ::ten(), exponent + QQ(1, 2)), "QQ: exponent out of range");
}

TEST(QQRoot, IsExactWhereRational) {
  EXPECT_EQ(root(QQ(8), ZZ(3)), QQ(2));
  EXPECT_EQ(root(QQ(-8), ZZ(3)), QQ(-2));
  EXPECT_EQ(root(QQ(4, 9), ZZ(2)), QQ(2, 3));
  EXPECT_EQ(root(QQ(5, 7), ZZ(1)), QQ(5, 7));
  EXPECT_EQ(root(QQ(0), ZZ(2)), QQ(0));
  EXPECT_EQ(root(QQ(8), ZZ(-3)), QQ(1, 2));
  EXPECT_EQ(root(pow(QQ(7, 3), QQ(91)), ZZ(91)), QQ(7, 3));
}

TEST(QQRoot, IsNearElse) {
  EXPECT_TRUE(isNear(root(QQ(2), ZZ(2)),
                     QQ::parse("1.41421356237309504880168872420969807856967187537694")));
  EXPECT_TRUE(isNear(root(QQ(-2), ZZ(3)),
                     QQ::parse("-1.25992104989487316476721060727822835057025146470151")));
}

TEST(QQRoot, OfInfinities) {
  EXPECT_EQ(root(inf, ZZ(2)), inf);
  EXPECT_EQ(root(-inf, ZZ(3)), -inf);
  EXPECT_EQ(root(inf, ZZ(-2)), QQ(0));
}

TEST(QQRoot, Reports) {
  EXPECT_FAILS_WITH(root(QQ(5), ZZ(0)), "QQ: zero-th roots are not defined");
  EXPECT_FAILS_WITH(root(QQ(0), ZZ(0)), "QQ: zero-th roots are not defined");
  EXPECT_FAILS_WITH(root(QQ(0), ZZ(-2)), "QQ: division by zero");
  EXPECT_FAILS_WITH(root(QQ(-4), ZZ(2)), complexRoot);
  EXPECT_FAILS_WITH(root(QQ(-4), ZZ(-2)), complexRoot);
  EXPECT_FAILS_WITH(root(-inf, ZZ(2)), complexRoot);
}

TEST(QQLogarithm, OfPowersOfTwoIsExact) {
  EXPECT_EQ(log2(QQ(8)), QQ(3));
  EXPECT_EQ(log2(QQ(1, 16)), QQ(-4));
  EXPECT_EQ(log2(QQ(1)), QQ(0));
  EXPECT_EQ(log(QQ(1)), QQ(0));
}

TEST(QQLogarithm, IsWithinItsTolerance) {
  EXPECT_TRUE(
      isWithin(log2(QQ(10)), QQ::parse("3.32192809488736234787031942948939017586483139302")));
  EXPECT_TRUE(isWithin(log(QQ(2)), QQ::parse("0.69314718055994530941723212145817656807550013436")));
  EXPECT_TRUE(
      isWithin(log2(QQ(3, 2)), QQ::parse("0.58496250072115618145373894394781650875981440769")));
  EXPECT_TRUE(
      isWithin(log(QQ(1, 3)), QQ::parse("-1.09861228866810969139524523692252570464749055782")));
  EXPECT_TRUE(isWithin(log(tenTo(100000)), QQ(100000) * log(QQ::ten())));
}

TEST(QQLogarithm, OfInfinityIsInfinite) {
  EXPECT_EQ(log2(inf), inf);
  EXPECT_EQ(log(inf), inf);
}

TEST(QQLogarithm, Reports) {
  EXPECT_FAILS_WITH(log2(QQ(0)), "log2(x), x <= 0 is not implemented / defined");
  EXPECT_FAILS_WITH(log2(QQ(-1, 2)), "log2(x), x <= 0 is not implemented / defined");
  EXPECT_FAILS_WITH(log(QQ(0)), "log2(x), x <= 0 is not implemented / defined");
  EXPECT_FAILS_WITH(log2(-inf), "log2(-inf) is not implemented / defined");
  EXPECT_FAILS_WITH(log(-inf), "log(-inf) is not implemented / defined");
}

}  // namespace
}  // namespace starsift
