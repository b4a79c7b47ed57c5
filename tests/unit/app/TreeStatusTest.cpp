#include "app/TreeStatus.h"

#include <gtest/gtest.h>

#include "support/fixtures/GroupedDigits.h"

namespace starsift {
namespace {

TEST(RoughDuration, HasTheLargestUnitThatItReaches) {
  EXPECT_EQ(roughDuration(0), "about 0 seconds");
  EXPECT_EQ(roughDuration(1), "about 1 second");
  EXPECT_EQ(roughDuration(90), "about 1.5 minutes");
  EXPECT_EQ(roughDuration(3600), "about 1 hour");
  EXPECT_EQ(roughDuration(3 * 86400), "about 3 days");
  EXPECT_EQ(roughDuration(45 * 86400), "about 45 days");
  EXPECT_EQ(roughDuration(1e9), "about 32 years");
  EXPECT_EQ(roughDuration(1e30), "more than 1000 years");
}

TEST(RoughDuration, IsTheSameInEveryLocale) {
  const test::GroupedDigits grouped;
  EXPECT_EQ(roughDuration(90), "about 1.5 minutes");
}

TEST(TreeStatus, TellsShareSpeedAndTimeLeft) {
  EXPECT_EQ(treeStatus({0.25, 8'400'000, 2}),
            "25 % of the tree, 4.2 million nodes a second, about 6 seconds left");
}

TEST(TreeStatus, TellsNoTimeLeftAtTheStart) {
  EXPECT_EQ(treeStatus({0, 0, 0}), "0 % of the tree");
  EXPECT_EQ(treeStatus({0, 2'000'000, 1}), "0 % of the tree, 2 million nodes a second");
}

}  // namespace
}  // namespace starsift
