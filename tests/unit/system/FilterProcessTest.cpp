#include "system/FilterProcess.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

TEST(FilterProcess, GivesWhatTheProgramMakesOfItsInput) {
  EXPECT_EQ(filtered("tr", {"a-c", "A-C"}, "abcd"), "ABCd");
}

// More than a pipe holds.
TEST(FilterProcess, TakesTextsOfAnyLength) {
  const std::string text(1 << 20, 'x');
  EXPECT_EQ(filtered("cat", {}, text), text);
}

TEST(FilterProcess, GivesNothingAfterAFailure) {
  EXPECT_EQ(filtered("false", {}, ""), std::nullopt);
  EXPECT_EQ(filtered("/nowhere/at/all", {}, ""), std::nullopt);
}

}  // namespace
}  // namespace starsift
