#include "numbers/Transcendental.h"

#include <gtest/gtest.h>

#include "numbers/QQFunctions.h"

namespace starsift {
namespace {

QQ twoTo(long exponent) {
  return pow(QQ(2), QQ(exponent));
}

TEST(RoundToFloat, KeepsMantissasOf192Bits) {
  const QQ longest = twoTo(192) - QQ(1);
  EXPECT_EQ(roundToFloat(longest), longest);
  EXPECT_EQ(roundToFloat(-longest * twoTo(-1000)), -longest * twoTo(-1000));
  EXPECT_EQ(roundToFloat(QQ()), QQ());
}

TEST(RoundToFloat, SendsTiesToTheEvenMantissa) {
  const QQ even = twoTo(191);
  const QQ half(1, 2);
  EXPECT_EQ(roundToFloat(even + half), even);
  EXPECT_EQ(roundToFloat(even + QQ(1) + half), even + QQ(2));
  EXPECT_EQ(roundToFloat(-even - half), -even);
  EXPECT_EQ(roundToFloat(-even - QQ(1) - half), -even - QQ(2));
}

TEST(RoundToFloat, RoundsAwayFromATieToTheNearerSide) {
  const QQ even = twoTo(191);
  const QQ half(1, 2);
  const QQ little = QQ(1, 3) * twoTo(-900);
  EXPECT_EQ(roundToFloat(even + half + little), even + QQ(1));
  EXPECT_EQ(roundToFloat(even + half - little), even);
  EXPECT_EQ(roundToFloat(-even - half - little), -even - QQ(1));
}

TEST(RoundedLog, IsZeroForOneOnly) {
  EXPECT_EQ(roundedLog(QQ(1)), QQ());
  EXPECT_EQ(roundedLog(QQ(1) + twoTo(-300)), twoTo(-300));
  EXPECT_EQ(roundedLog(QQ(1) - twoTo(-300)), -twoTo(-300));
}

// log(1 - x) = -x - x^2 / 2 - x^3 / 3 - ...: at x = 2^-191 the first two terms are a tie.
TEST(RoundedLog, ComputesAsManyBitsAsATieNeeds) {
  const QQ x = twoTo(-191);
  EXPECT_EQ(roundedLog(QQ(1) - x), -x - x * x);
}

TEST(RoundedLog2, OfPowersOfTwoIsExact) {
  EXPECT_EQ(roundedLog2(twoTo(1000)), QQ(1000));
  EXPECT_EQ(roundedLog2(twoTo(-1)), QQ(-1));
}

// e^x = 1 + x + x^2 / 2 + ...: at x = 2^-192 the first two terms are a tie.
TEST(RoundedExp, ComputesAsManyBitsAsATieNeeds) {
  EXPECT_EQ(roundedExp(twoTo(-192)), QQ(1) + twoTo(-191));
  EXPECT_EQ(roundedExp(-twoTo(-193)), QQ(1));
  EXPECT_EQ(roundedExp(QQ()), QQ(1));
}

}  // namespace
}  // namespace starsift
