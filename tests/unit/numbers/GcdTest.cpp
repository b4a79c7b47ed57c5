#include "numbers/Gcd.h"

#include <gtest/gtest.h>

#include <cmath>

#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

TEST(GcdQQ, Integers) {
  EXPECT_EQ(gcdQQ(QQ(12), QQ(18)), QQ(6));
  EXPECT_EQ(gcdQQ(QQ(-12), QQ(18)), QQ(6));
  EXPECT_EQ(gcdQQ(QQ(0), QQ(-5)), QQ(5));
  EXPECT_EQ(gcdQQ(QQ(0), QQ(0)), QQ(0));
}

TEST(GcdQQ, Fractions) {
  EXPECT_EQ(gcdQQ(QQ(1, 2), QQ(1, 3)), QQ(1, 6));
  EXPECT_EQ(gcdQQ(QQ(3, 4), QQ(9, 10)), QQ(3, 20));
  EXPECT_EQ(gcdQQ(QQ(3, 4), QQ(0)), QQ(3, 4));
}

TEST(GcdQQ, InfinityFails) {
  EXPECT_FAILS_WITH(gcdQQ(QQ::infinity(), QQ(1)), "INF - INF is not defined");
  EXPECT_FAILS_WITH(gcdQQ(QQ(1), -QQ::infinity()), "INF - INF is not defined");
}

TEST(LcmQQ, IsProductOverGcd) {
  EXPECT_EQ(lcmQQ(QQ(4), QQ(6)), QQ(12));
  EXPECT_EQ(lcmQQ(QQ(1), QQ(7)), QQ(7));
  EXPECT_EQ(lcmQQ(QQ(1, 2), QQ(1, 3)), QQ(1));
  EXPECT_EQ(lcmQQ(QQ(0), QQ(3)), QQ(0));
}

TEST(LcmQQ, OfZerosFails) {
  EXPECT_FAILS_WITH(lcmQQ(QQ(0), QQ(0)), "0 / 0 is not defined");
}

TEST(GcdLongDouble, AgreesWithTheExactOne) {
  EXPECT_EQ(gcdQQ(12.0L, 18.0L), 6.0L);
  EXPECT_EQ(gcdQQ(-0.75L, 0.5L), 0.25L);
  EXPECT_EQ(gcdQQ(0.0L, 5.0L), 5.0L);
  EXPECT_EQ(lcmQQ(4.0L, 6.0L), 12.0L);
}

TEST(GcdLongDouble, IsExactAtTheEndOfAMachineWord) {
  EXPECT_EQ(gcdQQ(0x1p64L - 1, 255.0L), 255.0L);
  EXPECT_EQ(gcdQQ(-(0x1p64L - 2), 0x1p63L - 1), 0x1p63L - 1);
  EXPECT_EQ(gcdQQ(0x1p64L, 12.0L), 4.0L);
  EXPECT_EQ(gcdQQ(3 * 0x1p70L, 9.0L), 3.0L);
  EXPECT_EQ(gcdQQ(0x1p64L - 1, 0.5L), 0.5L);
}

TEST(GcdLongDouble, HasNoValueForInfinities) {
  EXPECT_TRUE(std::isnan(gcdQQ(HUGE_VALL, 2.0L)));
  EXPECT_TRUE(std::isnan(lcmQQ(0.0L, 0.0L)));
}

}  // namespace
}  // namespace starsift
