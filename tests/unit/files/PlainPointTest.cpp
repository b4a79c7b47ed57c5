#include "files/PlainPoint.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace starsift {
namespace {

/// The components of a plain point of integers; nothing if the text isn't one up to its end.
std::optional<std::vector<std::int64_t>> integers(const std::string& text, std::size_t count) {
  SmallPoint point;
  point.components.resize(count);
  const char* const behind = scanPlainPoint(text.c_str(), point);
  if (behind == nullptr || *behind != '\0') return std::nullopt;
  return point.components;
}

/// The components of a plain point of mixed numbers over their common denominator; empty as above.
std::vector<ZZ> mixed(const std::string& text, std::size_t count, const ZZ& denominator) {
  std::vector<MixedNumber> numbers(count);
  const char* const behind = scanPlainPoint(text.c_str(), numbers);
  ExactPoint point;
  if (behind == nullptr || *behind != '\0' || !point.assign(numbers)) return {};
  EXPECT_EQ(point.scaled().denominator, denominator);
  return point.scaled().numerators;
}

TEST(PlainPoint, IntegersInCanonicalFormAreRead) {
  EXPECT_EQ(integers("[ 0 -1 23 -456 9999999999999999 ]", 5),
            (std::vector<std::int64_t>{0, -1, 23, -456, 9'999'999'999'999'999}));
}

TEST(PlainPoint, MagnitudeIsThatOfTheLargestComponent) {
  SmallPoint point;
  point.components.resize(3);
  ASSERT_NE(scanPlainPoint("[ 5 -70 9 ]", point), nullptr);
  EXPECT_EQ(point.magnitude, 70);
}

TEST(PlainPoint, OtherFormsAreRefused) {
  for (const char* text : {"",
                           "[",
                           "[ ",
                           "[ ]",
                           "[1 2 ]",
                           "[ 1 2]",
                           "[ 1  2 ]",
                           "[ 1 2  ]",
                           "[ 1 ]",
                           "[ 1 2 3 ]",
                           "[ 01 2 ]",
                           "[ -0 2 ]",
                           "[ +1 2 ]",
                           "[ 1 - ]",
                           "[ 1 2.0 ]",
                           "[ 1 2/3 ]",
                           "[ 1 2e0 ]",
                           "[ 1\t2 ]",
                           "[ 1 10000000000000000 ]",
                           "( 1 2 )"})
    EXPECT_EQ(integers(text, 2), std::nullopt) << text;
}

TEST(PlainPoint, FractionsAndLongIntegersAreReadOverOneDenominator) {
  EXPECT_EQ(mixed("[ 1/3 -2:1/2 4 0 ]", 4, ZZ(6)),
            (std::vector<ZZ>{ZZ(2), ZZ(-15), ZZ(24), ZZ(0)}));
  EXPECT_EQ(mixed("[ -12345678901234567890123456789012345678:1/2 ]", 1, ZZ(2)),
            (std::vector<ZZ>{ZZ("-24691357802469135780246913578024691357", 10)}));
  EXPECT_EQ(mixed("[ 99999999999999999999999999999999999999 ]", 1, ZZ(1)),
            (std::vector<ZZ>{ZZ("99999999999999999999999999999999999999", 10)}));
}

TEST(PlainPoint, OtherFormsOfFractionsAreRefused) {
  for (const char* text : {"[ 2/4 ]",
                           "[ 3/2 ]",
                           "[ 0/3 ]",
                           "[ 1/1 ]",
                           "[ 1/0 ]",
                           "[ 0:1/3 ]",
                           "[ 1:0/3 ]",
                           "[ 1:3/3 ]",
                           "[ 01/3 ]",
                           "[ 1/03 ]",
                           "[ 1: ]",
                           "[ 1:1 ]",
                           "[ 1/ ]",
                           "[ /3 ]",
                           "[ - ]",
                           "[ -0 ]",
                           "[ 00 ]",
                           "[ 1.5 ]",
                           "[ inf ]",
                           "[ 1/1000000000000000003 ]",
                           "[ 100000000000000000000000000000000000000 ]"})
    EXPECT_TRUE(mixed(text, 1, ZZ(1)).empty()) << text;
}

TEST(PlainPoint, CommonDenominatorsOfTwoTo62AreRefused) {
  EXPECT_TRUE(mixed("[ 1/999999999999999989 1/7 ]", 2, ZZ(1)).empty());
}

TEST(PlainPoint, IntegerEndsAtTheFirstOtherCharacter) {
  std::int64_t value = 0;
  const std::string text = "-17 | ";
  EXPECT_EQ(scanPlainInteger(text.c_str(), value), text.c_str() + 3);
  EXPECT_EQ(value, -17);
  EXPECT_EQ(scanPlainInteger("x", value), nullptr);
  EXPECT_EQ(scanPlainInteger("", value), nullptr);
}

}  // namespace
}  // namespace starsift
