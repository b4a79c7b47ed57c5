#include "stars/CommonScale.h"

#include <gtest/gtest.h>

#include <vector>

namespace starsift {
namespace {

/// 10^-places and ones.
std::vector<QQ> oneOfManyPlaces(long places, std::size_t count) {
  std::vector<QQ> numbers(count, QQ(1));
  numbers[0] = QQ::parse("1e-" + std::to_string(places));
  return numbers;
}

TEST(CommonScale, IsTheCommonMultipleOfTheDenominatorsAndTheGivenNumber) {
  EXPECT_EQ(commonScale(std::vector<QQ>{QQ(1, 2), QQ(0), QQ(-1, 3)}, ZZ(4)), ZZ(12));
  EXPECT_EQ(commonScale(std::vector<QQ>{QQ(5), QQ(-7)}, ZZ(4)), ZZ(4));
  EXPECT_EQ(commonScale({}, ZZ(4)), ZZ(4));
}

TEST(CommonScale, MayTakeAMegabit) {
  // 10^4000 has 13288 bits.
  EXPECT_TRUE(commonScale(oneOfManyPlaces(4000, 78), ZZ::one()).has_value());
  EXPECT_FALSE(commonScale(oneOfManyPlaces(4000, 79), ZZ::one()).has_value());
}

TEST(CommonScale, MayTakeSixtyFourTimesTheBitsOfTheNumbers) {
  EXPECT_TRUE(commonScale(oneOfManyPlaces(9000, 64), ZZ::one()).has_value());
  EXPECT_FALSE(commonScale(oneOfManyPlaces(9000, 65), ZZ::one()).has_value());
}

TEST(CommonScale, DoesNotCountZeros) {
  std::vector<QQ> numbers(1000);
  numbers[7] = QQ::parse("1e-9000");
  EXPECT_EQ(commonScale(numbers, ZZ::one()), pow(ZZ(10), ZZ(9000)));
}

}  // namespace
}  // namespace starsift
