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

}  // namespace
}  // namespace starsift
