#include "certificates/Interval.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

constexpr long shortest = 4;

Interval around(const QQ& value, long precision = shortest) {
  return {value, precision};
}

/// The interval holds the value, and neither the value below nor the one above.
void expectBetween(const Interval& interval, const QQ& below, const QQ& value, const QQ& above) {
  EXPECT_NE(atMost(interval, around(value, 200)), false);
  EXPECT_NE(atMost(around(value, 200), interval), false);
  EXPECT_EQ(atMost(interval, around(below, 200)), false);
  EXPECT_EQ(atMost(interval, around(above, 200)), true);
}

TEST(Interval, LeavesOpenOnlyWhatRoundingHides) {
  EXPECT_EQ(atMost(around(QQ(1, 3)), around(QQ(1, 3))), std::nullopt);
  EXPECT_EQ(atMost(around(QQ(1, 3)), around(QQ(1, 2))), true);
  EXPECT_EQ(atMost(around(QQ(1, 2)), around(QQ(1, 3))), false);
  EXPECT_EQ(atMost(around(QQ(1, 3)), around(QQ(34, 100))), std::nullopt);
  EXPECT_EQ(atMost(around(QQ(1, 3), 20), around(QQ(34, 100), 20)), true);
}

TEST(Interval, IsExactWhereTheBoundsHoldTheNumber) {
  EXPECT_EQ(atMost(around(QQ(-3)), around(QQ(-3))), true);
  EXPECT_EQ(atMost(Interval(ZZ(8), shortest), Interval(ZZ(8), shortest)), true);
  EXPECT_EQ(atMost(Interval(ZZ(17), shortest), Interval(ZZ(17), shortest)), std::nullopt);
}

TEST(Interval, SubtractsProductsOfEitherSign) {
  for (const int a : {-17, -5, 0, 5, 17})
    for (const int b : {-19, -3, 3, 19}) {
      Interval sum = around(QQ(100));
      sum.subtractProduct(around(QQ(a)), around(QQ(b)));
      expectBetween(sum, QQ(100 - a * b - 150), QQ(100 - a * b), QQ(100 - a * b + 150));
    }
}

TEST(Interval, SubtractsProductsOfIntervalsAroundZero) {
  // 1/3 less 1/3, known to lie beside 0 only.
  Interval zero = around(QQ(1, 3));
  zero.subtractProduct(around(QQ(1)), around(QQ(1, 3)));
  EXPECT_EQ(atMost(zero, around(QQ())), std::nullopt);
  Interval sum = around(QQ(1));
  sum.subtractProduct(zero, zero);
  expectBetween(sum, QQ(9, 10), QQ(1), QQ(5, 4));
  Interval other = around(QQ(1));
  other.subtractProduct(zero, around(QQ(-3)));
  expectBetween(other, QQ(7, 10), QQ(1), QQ(13, 10));
}

TEST(Interval, DividesNumbersOfEitherSign) {
  for (const int a : {-17, -1, 0, 1, 17}) {
    Interval quotient = around(QQ(a));
    quotient /= around(QQ(1, 3));
    expectBetween(quotient, QQ(3 * a - 15), QQ(3 * a), QQ(3 * a + 15));
  }
}

TEST(Interval, IsPositiveWhereAllOfItIs) {
  EXPECT_TRUE(around(QQ(1, 3)).isPositive());
  EXPECT_FALSE(around(QQ()).isPositive());
  EXPECT_FALSE(around(QQ(-1, 3)).isPositive());
  Interval difference = around(QQ(1, 3));
  difference.subtractProduct(around(QQ(1)), around(QQ(1, 3)));
  EXPECT_FALSE(difference.isPositive());
}

TEST(Interval, HasAMagnitude) {
  expectBetween(abs(around(QQ(-1, 3))), QQ(1, 4), QQ(1, 3), QQ(1, 2));
  expectBetween(abs(around(QQ(1, 3))), QQ(1, 4), QQ(1, 3), QQ(1, 2));
  Interval zero = around(QQ(1, 3));
  zero.subtractProduct(around(QQ(1)), around(QQ(1, 3)));
  EXPECT_EQ(atMost(around(QQ()), abs(zero)), true);
  EXPECT_EQ(atMost(abs(zero), around(QQ())), std::nullopt);
  EXPECT_EQ(atMost(abs(zero), around(QQ(1, 10))), true);
}

}  // namespace
}  // namespace starsift
