#include "text/TextStreams.h"

#include <gtest/gtest.h>

#include "support/fixtures/GroupedDigits.h"

namespace starsift {
namespace {

TEST(TextWriter, WritesNumbersOfFilesInEveryLocale) {
  const test::GroupedDigits grouped;
  TextWriter text;
  text << 1234567 << ' ' << 1234.5;
  EXPECT_EQ(text.str(), "1234567 1234.5");
}

TEST(TextReader, ReadsNumbersOfFilesInEveryLocale) {
  const test::GroupedDigits grouped;
  TextReader text("1234.5");
  double value = 0;
  text >> value;
  EXPECT_EQ(value, 1234.5);
}

}  // namespace
}  // namespace starsift
