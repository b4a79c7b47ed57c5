#include "stars/RowTests.h"

#include <gtest/gtest.h>

#include <string_view>

namespace starsift {
namespace {

QQ q(std::string_view text) {
  return QQ::parse(text);
}

const QQ tolerance(1, 1'000'000'000);
const QQ inf = QQ::infinity();
const QQ twoTo62 = QQ(1L << 61) + QQ(1L << 61);

ExactPoint point(const Vector<QQ>& x) {
  ExactPoint result;
  result.assign(x);
  return result;
}

/// lower <= x <= upper.
bool between(const QQ& lower, const QQ& x, const QQ& upper) {
  return IntervalTest(Vector<QQ>{QQ(1)}, lower, upper).admits(point({x}));
}

/// x = value modulo modulus, within the tolerance of the system.
bool congruent(const QQ& x, const QQ& value, const QQ& modulus) {
  return CongruenceTest(Vector<QQ>{QQ(1)}, value, modulus, tolerance).admits(point({x}));
}

TEST(IntervalTest, BoundsBelong) {
  EXPECT_TRUE(between(2, 2, 5));
  EXPECT_TRUE(between(2, 5, 5));
  EXPECT_TRUE(between(2, 2, 2));
}

TEST(IntervalTest, NeighboursOfTheBoundsDoNot) {
  EXPECT_FALSE(between(2, 1, 5));
  EXPECT_FALSE(between(2, 6, 5));
}

TEST(IntervalTest, FractionalBoundsAreExactForIntegers) {
  EXPECT_FALSE(between(q("1/2"), 0, q("3/2")));
  EXPECT_TRUE(between(q("1/2"), 1, q("3/2")));
  EXPECT_FALSE(between(q("1/2"), 2, q("3/2")));
}

TEST(IntervalTest, NegativeFractionalBoundsAreExactForIntegers) {
  EXPECT_FALSE(between(q("-3/2"), -2, q("-1/2")));
  EXPECT_TRUE(between(q("-3/2"), -1, q("-1/2")));
  EXPECT_FALSE(between(q("-3/2"), 0, q("-1/2")));
}

TEST(IntervalTest, FractionsAreComparedWithoutTolerance) {
  EXPECT_TRUE(between(q("1/3"), q("1/3"), q("2/3")));
  EXPECT_TRUE(between(q("1/3"), q("2/3"), q("2/3")));
  EXPECT_FALSE(between(q("1/3"), q("1/3") - q("1e-30"), q("2/3")));
  EXPECT_FALSE(between(q("1/3"), q("2/3") + q("1e-30"), q("2/3")));
}

TEST(IntervalTest, OpenSidesAdmitEverything) {
  EXPECT_TRUE(between(-inf, q("-1e30"), 0));
  EXPECT_TRUE(between(0, q("1e30"), inf));
  EXPECT_TRUE(between(-inf, -twoTo62 + QQ(1), inf));
  EXPECT_TRUE(between(-inf, twoTo62 - QQ(1), inf));
}

TEST(IntervalTest, InfinityOnTheWrongSideAdmitsNothing) {
  EXPECT_FALSE(between(inf, twoTo62 - QQ(1), inf));
  EXPECT_FALSE(between(inf, q("1e30"), inf));
  EXPECT_FALSE(between(-inf, QQ(1) - twoTo62, -inf));
  EXPECT_FALSE(between(-inf, q("-1e30"), -inf));
}

TEST(IntervalTest, UpperBoundsFromTwoTo62OnAdmitAllSmallProducts) {
  EXPECT_TRUE(between(0, twoTo62 - QQ(1), twoTo62));
  EXPECT_TRUE(between(0, twoTo62 - QQ(1), q("1e40")));
}

TEST(IntervalTest, LowerBoundsFromTwoTo62OnAdmitNoSmallProduct) {
  EXPECT_FALSE(between(twoTo62, twoTo62 - QQ(1), inf));
  EXPECT_FALSE(between(q("1e40"), twoTo62 - QQ(1), inf));
}

TEST(IntervalTest, BoundsBelowMinusTwoTo62AreTheMirrorImage) {
  EXPECT_TRUE(between(-twoTo62, QQ(1) - twoTo62, 0));
  EXPECT_FALSE(between(-inf, QQ(1) - twoTo62, -twoTo62));
  EXPECT_FALSE(between(-inf, QQ(1) - twoTo62, q("-1e40")));
}

TEST(IntervalTest, ProductsFromTwoTo62OnAreStillExact) {
  EXPECT_TRUE(between(twoTo62, twoTo62, twoTo62));
  EXPECT_FALSE(between(twoTo62 + QQ(1), twoTo62, inf));
  EXPECT_FALSE(between(-inf, twoTo62, twoTo62 - QQ(1)));
}

TEST(IntervalTest, RowOfFractionsIsExact) {
  const IntervalTest test(Vector<QQ>{q("1/3"), q("-1/7")}, q("4/21"), q("4/21"));
  EXPECT_TRUE(test.admits(point({1, 1})));
  EXPECT_FALSE(test.admits(point({1, 2})));
  EXPECT_TRUE(test.admits(point({q("4/7"), 0})));
}

TEST(IntervalTest, CancellationOfHugeProductsIsExact) {
  const IntervalTest test(Vector<QQ>{q("1e18"), q("-1e18"), 1}, 1, 1);
  EXPECT_TRUE(test.admits(point({q("1e18"), q("1e18"), 1})));
  EXPECT_FALSE(test.admits(point({q("1e18"), q("1e18"), 2})));
}

TEST(CongruenceTest, MultiplesOfTheModulusAreAdmitted) {
  EXPECT_TRUE(congruent(17, 2, 5));
  EXPECT_TRUE(congruent(2, 2, 5));
  EXPECT_TRUE(congruent(-3, 2, 5));
  EXPECT_TRUE(congruent(-13, 2, 5));
}

TEST(CongruenceTest, OtherResiduesAreNot) {
  EXPECT_FALSE(congruent(16, 2, 5));
  EXPECT_FALSE(congruent(18, 2, 5));
  EXPECT_FALSE(congruent(-12, 2, 5));
}

TEST(CongruenceTest, SignOfTheModulusDoesNotMatter) {
  EXPECT_TRUE(congruent(17, 2, -5));
  EXPECT_TRUE(congruent(-13, 2, -5));
  EXPECT_FALSE(congruent(16, 2, -5));
}

TEST(CongruenceTest, ToleranceItselfBelongs) {
  EXPECT_TRUE(congruent(QQ(5) + tolerance, 0, 5));
  EXPECT_TRUE(congruent(QQ(-5) - tolerance, 0, 5));
  EXPECT_TRUE(congruent(tolerance, 0, 5));
  EXPECT_TRUE(congruent(-tolerance, 0, 5));
}

TEST(CongruenceTest, AnythingBeyondTheToleranceDoesNot) {
  EXPECT_FALSE(congruent(QQ(5) + tolerance + q("1e-40"), 0, 5));
  EXPECT_FALSE(congruent(QQ(-5) - tolerance - q("1e-40"), 0, 5));
}

TEST(CongruenceTest, ToleranceHoldsForIntegersBesideAFractionalValue) {
  EXPECT_TRUE(congruent(7, QQ(2) - tolerance, 5));
  EXPECT_FALSE(congruent(7, QQ(2) - tolerance * QQ(2), 5));
  EXPECT_TRUE(congruent(-3, QQ(2) + tolerance, 5));
  EXPECT_FALSE(congruent(-3, QQ(2) + tolerance * QQ(2), 5));
}

TEST(CongruenceTest, RemainderIsTruncatedSoThatLittleLessThanAMultipleIsFar) {
  EXPECT_FALSE(congruent(QQ(5) - tolerance, 0, 5));
  EXPECT_FALSE(congruent(QQ(-5) + tolerance, 0, 5));
}

TEST(CongruenceTest, ModulusMayBeAFraction) {
  EXPECT_TRUE(congruent(3, 0, q("3/2")));
  EXPECT_TRUE(congruent(q("9/2"), 0, q("3/2")));
  EXPECT_FALSE(congruent(2, 0, q("3/2")));
  EXPECT_TRUE(congruent(2, q("1/2"), q("3/2")));
  EXPECT_TRUE(congruent(-1, q("1/2"), q("3/2")));
}

TEST(CongruenceTest, ModulusMayBeSmallerThanTwiceTheTolerance) {
  const QQ modulus = tolerance * q("3/2");
  EXPECT_TRUE(congruent(modulus * QQ(1000) + tolerance, 0, modulus));
  EXPECT_FALSE(congruent(modulus * QQ(1000) + tolerance + q("1e-40"), 0, modulus));
}

TEST(CongruenceTest, ModulusFromTwoTo62OnIsExact) {
  EXPECT_TRUE(congruent(0, 0, twoTo62));
  EXPECT_TRUE(congruent(twoTo62, 0, twoTo62));
  EXPECT_FALSE(congruent(twoTo62 - QQ(1), 0, twoTo62));
  EXPECT_TRUE(congruent(twoTo62 - QQ(1), -1, twoTo62));
}

TEST(CongruenceTest, ValueFromTwoTo62OnIsExact) {
  EXPECT_TRUE(congruent(2, twoTo62 * QQ(5) + QQ(2), 5));
  EXPECT_FALSE(congruent(3, twoTo62 * QQ(5) + QQ(2), 5));
}

TEST(CongruenceTest, DifferenceOfLargestSmallNumbersDoesNotOverflow) {
  const QQ largest = twoTo62 - QQ(1);
  EXPECT_TRUE(congruent(largest, -largest, 2));
  EXPECT_TRUE(congruent(-largest, largest, 2));
  EXPECT_FALSE(congruent(-largest, largest - QQ(1), 2));
}

TEST(CongruenceTest, RowOfFractionsIsExact) {
  const CongruenceTest test(Vector<QQ>{q("1/3"), q("1/2")}, q("1/6"), q("1/4"), tolerance);
  EXPECT_TRUE(test.admits(point({2, -1})));
  EXPECT_TRUE(test.admits(point({2, 0})));
  EXPECT_FALSE(test.admits(point({1, 0})));
}

}  // namespace
}  // namespace starsift
