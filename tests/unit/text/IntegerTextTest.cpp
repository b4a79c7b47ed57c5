#include "text/IntegerText.h"

#include <gtest/gtest.h>

#include <limits>

namespace starsift {
namespace {

std::string text(std::int64_t value) {
  std::string out = "x";
  appendInteger(out, value);
  return out;
}

TEST(IntegerText, ShortIntegersHaveTheirDigits) {
  for (std::int64_t value = -1100; value <= 1100; ++value)
    ASSERT_EQ(text(value), "x" + std::to_string(value));
}

TEST(IntegerText, LimitsAreWrittenInFull) {
  EXPECT_EQ(text(std::numeric_limits<std::int64_t>::max()), "x9223372036854775807");
  EXPECT_EQ(text(std::numeric_limits<std::int64_t>::min()), "x-9223372036854775808");
}

TEST(IntegerText, PositionIsBehindTheDigits) {
  std::array<char, integerTextSize> room{};
  EXPECT_EQ(writeInteger(room.data(), -7) - room.data(), 2);
  EXPECT_EQ(writeInteger(room.data(), 42) - room.data(), 2);
  EXPECT_EQ(writeInteger(room.data(), 1000) - room.data(), 4);
}

TEST(IntegerText, WholeTextIsParsed) {
  EXPECT_EQ(parseInteger<int>("-12"), -12);
  EXPECT_EQ(parseInteger<std::uint64_t>("18446744073709551615"),
            std::numeric_limits<std::uint64_t>::max());
  for (const char* const text : {"", " 1", "1 ", "+1", "1.0", "0x1", "1-", "--1"})
    EXPECT_EQ(parseInteger<int>(text), std::nullopt) << text;
}

TEST(IntegerText, ParsedNumbersAreWithinTheLimits) {
  EXPECT_EQ(parseInteger<int>("3", 3, 5), 3);
  EXPECT_EQ(parseInteger<int>("5", 3, 5), 5);
  EXPECT_EQ(parseInteger<int>("2", 3, 5), std::nullopt);
  EXPECT_EQ(parseInteger<int>("6", 3, 5), std::nullopt);
  EXPECT_EQ(parseInteger<std::int16_t>("32768"), std::nullopt);
  EXPECT_EQ(parseInteger<unsigned>("-1"), std::nullopt);
}

}  // namespace
}  // namespace starsift
