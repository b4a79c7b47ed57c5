#include "search/decide/ParallelRows.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

RangedForm row(std::initializer_list<int> coefficients, std::optional<int> lower,
               std::optional<int> upper) {
  RangedForm result{{{coefficients.begin(), coefficients.end()}, ZZ()}, {}};
  if (lower) result.range.lower = ZZ(*lower);
  if (upper) result.range.upper = ZZ(*upper);
  return result;
}

TEST(ParallelRows, BecomeTheFirstOfThemWithTheCommonRange) {
  std::vector<RangedForm> rows = {row({0, -2, 3}, -5, std::nullopt), row({1, 2, 3}, 0, 9),
                                  row({0, 2, -3}, -7, std::nullopt), row({0, -2, 3}, -9, 6)};
  mergeParallelRows(rows);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].form.coefficients, (std::vector<ZZ>{ZZ(0), ZZ(-2), ZZ(3)}));
  EXPECT_EQ(rows[0].range.lower, ZZ(-5));
  EXPECT_EQ(rows[0].range.upper, ZZ(6));
  EXPECT_EQ(rows[1].range.upper, ZZ(9));
}

TEST(ParallelRows, OfContradictoryBoundsHaveAnEmptyRange) {
  std::vector<RangedForm> rows = {row({1, 1}, std::nullopt, 2), row({-1, -1}, std::nullopt, -3)};
  mergeParallelRows(rows);
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_TRUE(rows[0].range.isEmpty());
}

TEST(ParallelRows, AreNoRowsThatDifferInOneSign) {
  std::vector<RangedForm> rows = {row({1, 2}, 0, 3), row({1, -2}, 0, 3), row({-1, 2}, 0, 1)};
  mergeParallelRows(rows);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[1].range.lower, ZZ(0));
  EXPECT_EQ(rows[1].range.upper, ZZ(0));
}

}  // namespace
}  // namespace starsift
