#include "numbers/ExactArithmetic.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

using Double = ExactArithmetic<dbl_t>;
using Exact = ExactArithmetic<QQ>;

TEST(ExactArithmetic, MultipliesDecimalsAsTheyAreWritten) {
  EXPECT_EQ(Double::product(0.07L, 100.0L), 7.0L);
  EXPECT_EQ(Double::product(1.1L, 1.1L), 1.21L);
  EXPECT_EQ(Exact::product(QQ(1, 3), QQ(3)), QQ(1));
}

TEST(ExactArithmetic, MultipliesIntegersBelowTheLimit) {
  EXPECT_EQ(Double::product(999999999.0L, -999999999.0L), -999999998000000001.0L);
}

TEST(ExactArithmetic, RefusesAProductOfMoreThanEighteenDigits) {
  EXPECT_THROW(Double::product(1e9L, 1e10L), PreCommaPrecisionException);
  EXPECT_THROW(Double::product(1.000000001L, 1.0000000001L), PostCommaPrecisionException);
}

TEST(ExactArithmetic, DividesOnlyWhereTheResultIsADecimal) {
  EXPECT_EQ(Double::quotient(1.0L, 8.0L), 0.125L);
  EXPECT_EQ(Double::quotient(21.0L, 7.0L), 3.0L);
  EXPECT_THROW(Double::quotient(1.0L, 3.0L), PostCommaPrecisionException);
  EXPECT_EQ(Exact::quotient(QQ(1), QQ(3)), QQ(1, 3));
}

TEST(ExactArithmetic, SubtractsProductsWithoutRounding) {
  dbl_t sum = 1;
  Double::subtractProduct(sum, 3, 0.1L);
  EXPECT_EQ(sum, 0.7L);
  Double::subtractProduct(sum, 7, 0.1L);
  EXPECT_EQ(sum, 0.0L);
  QQ exact(1);
  Exact::subtractProduct(exact, QQ(1, 3), QQ(3));
  EXPECT_TRUE(exact.isZero());
}

TEST(ExactArithmetic, AddsProductsWithoutRounding) {
  dbl_t sum = 0.7L;
  Double::addProduct(sum, 3, 0.1L);
  EXPECT_EQ(sum, 1.0L);
  QQ exact(1);
  Exact::addProduct(exact, QQ(1, 3), QQ(3));
  EXPECT_EQ(exact, QQ(2));
}

TEST(ExactArithmetic, LeavesAnInfiniteSum) {
  dbl_t sum = -HUGE_VALL;
  Double::subtractProduct(sum, 3, 0.1L);
  EXPECT_EQ(sum, -HUGE_VALL);
}

TEST(ExactArithmetic, RefusesASumThatWouldRound) {
  dbl_t sum = 1e17L;
  EXPECT_THROW(Double::subtractProduct(sum, 1, 0.01L), PrecisionException);
  EXPECT_EQ(sum, 1e17L);
  sum = 4e18L;
  EXPECT_THROW(Double::subtractProduct(sum, -1, 4e18L), PrecisionException);
}

TEST(ExactArithmetic, RoundsToNeighbours) {
  EXPECT_EQ(Double::roundedUp(-1.5L), -1.0L);
  EXPECT_EQ(Double::roundedDown(-1.5L), -2.0L);
  EXPECT_FALSE(std::signbit(Double::roundedUp(-0.5L)));
  EXPECT_EQ(Exact::roundedUp(QQ(7, 3)), QQ(3));
  EXPECT_EQ(Exact::roundedDown(QQ(7, 3)), QQ(2));
}

TEST(ExactArithmetic, RoundsHalvesAwayFromZero) {
  EXPECT_EQ(Double::rounded(1.5L), 2.0L);
  EXPECT_EQ(Double::rounded(-1.5L), -2.0L);
  EXPECT_EQ(Double::rounded(1.4L), 1.0L);
  EXPECT_FALSE(std::signbit(Double::rounded(-0.25L)));
  EXPECT_EQ(Exact::rounded(QQ(3, 2)), QQ(2));
  EXPECT_EQ(Exact::rounded(QQ(-3, 2)), QQ(-2));
  EXPECT_EQ(Exact::rounded(QQ(4, 3)), QQ(1));
  EXPECT_EQ(Exact::rounded(QQ(-4, 3)), QQ(-1));
  EXPECT_EQ(Exact::rounded(QQ(-7)), QQ(-7));
}

TEST(ExactArithmetic, KnowsDenominators) {
  EXPECT_EQ(Double::denominator(0.125L), 8.0L);
  EXPECT_EQ(Double::denominator(-0.3L), 10.0L);
  EXPECT_EQ(Double::denominator(5.0L), 1.0L);
  EXPECT_EQ(Double::denominator(1e-30L), 1e30L);
  EXPECT_EQ(Exact::denominator(QQ(-5, 3)), QQ(3));
  EXPECT_EQ(Exact::denominator(QQ(4)), QQ(1));
}

TEST(ExactArithmetic, KnowsPowersOfTen) {
  EXPECT_EQ(Double::powerOfTen(0), 1.0L);
  EXPECT_EQ(Double::powerOfTen(17), 1e17L);
  EXPECT_THROW(Double::powerOfTen(18), PreCommaPrecisionException);
  EXPECT_EQ(Exact::powerOfTen(QQ(2)), QQ(100));
}

TEST(ExactArithmetic, RefusesPowersOfTenThatNobodyCanHold) {
  EXPECT_EQ(digits(Exact::powerOfTen(QQ(100000)).ganze()), 100001U);
  EXPECT_FAILS_WITH(Exact::powerOfTen(QQ(100001)), "QQ: exponent out of range");
  EXPECT_FAILS_WITH(Double::powerOfTen(1e18L), "QQ: exponent out of range");
}

TEST(ExactArithmetic, TellsNonNegativeIntegers) {
  EXPECT_TRUE(isNonNegativeInteger(0.0L));
  EXPECT_TRUE(isNonNegativeInteger(QQ(7)));
  EXPECT_FALSE(isNonNegativeInteger(-1.0L));
  EXPECT_FALSE(isNonNegativeInteger(0.5L));
  EXPECT_FALSE(isNonNegativeInteger(QQ(1, 2)));
  EXPECT_FALSE(isNonNegativeInteger(QQ::infinity()));
}

TEST(CheckedRange, ThrowsItsTextAboveTheSafeBound) {
  EXPECT_EQ(checkedRange(1e9L, "x overflow"), 1e9L);
  EXPECT_EQ(checkedRange(-HUGE_VALL, "x overflow"), -HUGE_VALL);
  try {
    checkedRange(-1000000001.0L, "x overflow");
    FAIL() << "nothing thrown";
  } catch (const PrecisionException& exception) {
    EXPECT_EQ(exception.message(), "x overflow");
  }
  EXPECT_THROW(checkedRange(2e18L, "x overflow"), FatalPrecisionException);
}

TEST(CheckedRange, TakesEveryRational) {
  EXPECT_EQ(checkedRange(QQ::parse("1e30"), "x overflow"), QQ::parse("1e30"));
}

}  // namespace
}  // namespace starsift
