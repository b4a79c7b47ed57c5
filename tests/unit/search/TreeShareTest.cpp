#include "search/enumeration/TreeShare.h"

#include <gtest/gtest.h>

#include <limits>

namespace starsift {
namespace {

constexpr double endless = std::numeric_limits<double>::infinity();

/// Choices from -100 to 100 around a centre at the current one, with a radius of 10.
LevelChoices wide(double doneAbove, double doneBelow) {
  return {4, 0.01, 0, -100, 100, doneAbove, doneBelow};
}

/// One choice, the current one.
const LevelChoices single{4, 0.01, 0, 0, 0, -1, 1};

TEST(OpenChoices, AreNoneWhereEverySideIsDone) {
  EXPECT_FALSE(largestOpenChoices({}));
  EXPECT_FALSE(largestOpenChoices({single, single}));
  EXPECT_FALSE(largestOpenChoices({wide(-endless, endless)}));
}

TEST(OpenChoices, AreTheLargerOfTwoSides) {
  const auto open = largestOpenChoices({single, wide(-1, 3)});
  ASSERT_TRUE(open.has_value());
  EXPECT_EQ(open->depth, 1U);
  EXPECT_FALSE(open->isUp);
  EXPECT_EQ(open->first, -1);
  EXPECT_LT(open->share, 0.5);
  EXPECT_GT(open->share, 0.3);
}

TEST(OpenChoices, AreTheOuterHalfOfTheOnlySide) {
  const auto up = largestOpenChoices({wide(-endless, 3)});
  ASSERT_TRUE(up.has_value());
  EXPECT_TRUE(up->isUp);
  EXPECT_EQ(up->first, 7);
  const auto down = largestOpenChoices({wide(-4, endless)});
  ASSERT_TRUE(down.has_value());
  EXPECT_FALSE(down->isUp);
  EXPECT_EQ(down->first, -7);
}

TEST(OpenChoices, OutsideTheRadiusAreHandedOverToo) {
  const auto open = largestOpenChoices({wide(-endless, 20)});
  ASSERT_TRUE(open.has_value());
  EXPECT_EQ(open->first, 20);
  EXPECT_EQ(open->share, 0);
}

TEST(OpenChoices, AreThoseOfTheLevelWithTheLargestShare) {
  // Deeper levels have the share of one choice above.
  const auto open = largestOpenChoices({wide(-1, 1), wide(-1, 1)});
  ASSERT_TRUE(open.has_value());
  EXPECT_EQ(open->depth, 0U);
}

}  // namespace
}  // namespace starsift
