#include "numbers/QQDecimal.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

constexpr std::int64_t end = 1'000'000'000'000'000'000;

TEST(ShortDecimal, HasNoPlaceTooMany) {
  const std::optional<ShortDecimal> number = shortDecimal(QQ(-5, 8));
  ASSERT_TRUE(number);
  EXPECT_EQ(number->digits, -625);
  EXPECT_EQ(number->places, 3);
  EXPECT_EQ(shortDecimal(QQ(1200))->places, 0);
}

TEST(ShortDecimal, IsTheNumberOfItsDigits) {
  for (const std::int64_t digits : {1L, -7L, 123456789L, end - 1, 1 - end}) {
    for (int places = 0; places <= 18; ++places) {
      const QQ value = decimal(digits, places);
      const std::optional<ShortDecimal> number = shortDecimal(value);
      ASSERT_TRUE(number);
      EXPECT_LE(number->places, places);
      EXPECT_EQ(decimal(number->digits, number->places), value);
    }
  }
}

TEST(ShortDecimal, RefusesWhatHasMoreDigitsOrNoEnd) {
  EXPECT_FALSE(shortDecimal(QQ(1, 3)));
  EXPECT_FALSE(shortDecimal(QQ(1, 30)));
  EXPECT_FALSE(shortDecimal(QQ(end)));
  EXPECT_FALSE(shortDecimal(-QQ(end)));
  EXPECT_FALSE(shortDecimal(QQ(end) + QQ(1, 2)));
  EXPECT_FALSE(shortDecimal(decimal(1, 18) / QQ(2)));
  EXPECT_FALSE(shortDecimal(QQ::infinity()));
}

}  // namespace
}  // namespace starsift
