#include "search/jump/JumpProblem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "support/fixtures/OptText.h"
#include "support/fixtures/Problem.h"

namespace starsift {
namespace {

using test::OptText;
using test::problemFrom;
using ::testing::ElementsAre;

constexpr double infinity = std::numeric_limits<double>::infinity();

std::optional<JumpProblem> rowsOf(const OptText& text) {
  return jumpProblem(integerProblem(problemFrom(text.text())).value());
}

/// "column: value" of the entries of a row.
std::vector<std::pair<std::uint32_t, double>> entries(const SparseVectors& vectors, std::size_t i) {
  std::vector<std::pair<std::uint32_t, double>> result;
  for (const SparseEntry& entry : vectors[i]) result.emplace_back(entry.index, entry.value);
  return result;
}

using Entry = std::pair<std::uint32_t, double>;

TEST(JumpProblem, HasTheRowsOfTheProblemAndItsObjective) {
  // 6 x + y = 14, x - y <= 2, least -x - 2 y.
  const JumpProblem problem = rowsOf({}).value();
  ASSERT_EQ(problem.rows.size(), 3U);
  EXPECT_THAT(entries(problem.rows, 0), ElementsAre(Entry{0, 6}, Entry{1, 1}));
  EXPECT_EQ(problem.rowRanges[0].lower, 14);
  EXPECT_EQ(problem.rowRanges[0].upper, 14);
  EXPECT_EQ(problem.rowRanges[1].lower, -infinity);
  EXPECT_EQ(problem.rowRanges[1].upper, 2);
  EXPECT_EQ(problem.objectiveRow, 2U);
  EXPECT_THAT(entries(problem.rows, 2), ElementsAre(Entry{0, -1}, Entry{1, -2}));
}

TEST(JumpProblem, HasItsRowsByColumnToo) {
  const JumpProblem problem = rowsOf({}).value();
  ASSERT_EQ(problem.columns.size(), 2U);
  EXPECT_THAT(entries(problem.columns, 0), ElementsAre(Entry{0, 6}, Entry{1, 1}, Entry{2, -1}));
  EXPECT_THAT(entries(problem.columns, 1), ElementsAre(Entry{0, 1}, Entry{1, -1}, Entry{2, -2}));
}

TEST(JumpProblem, MakesAModulusAColumnWithoutBounds) {
  const JumpProblem problem = rowsOf({.qg = "[ 5 ]"}).value();
  EXPECT_THAT(entries(problem.rows, 0), ElementsAre(Entry{0, 6}, Entry{1, 1}, Entry{2, -10}));
  EXPECT_EQ(problem.box[2].lower, -infinity);
  EXPECT_EQ(problem.box[2].upper, infinity);
}

TEST(JumpProblem, MakesTheDistanceFromAGoalAColumn) {
  // |x + 2 y - 3| is at most the third column, which is the objective.
  const JumpProblem problem = rowsOf({.dt = "[ 3 ]", .Ag = "[ ]", .bg = "[ ]"}).value();
  ASSERT_EQ(problem.rows.size(), 4U);
  EXPECT_THAT(entries(problem.rows, 1), ElementsAre(Entry{0, 1}, Entry{1, 2}, Entry{2, -1}));
  EXPECT_EQ(problem.rowRanges[1].upper, 3);
  EXPECT_THAT(entries(problem.rows, 2), ElementsAre(Entry{0, -1}, Entry{1, -2}, Entry{2, -1}));
  EXPECT_EQ(problem.rowRanges[2].upper, -3);
  EXPECT_THAT(entries(problem.rows, 3), ElementsAre(Entry{2, 1}));
  EXPECT_EQ(problem.box[2].lower, 0);
}

TEST(JumpProblem, IsEmptyWithNumbersBeyond52Bits) {
  EXPECT_TRUE(rowsOf({.rx = "[ 5 4503599627370495 ]"}).has_value());
  EXPECT_FALSE(rowsOf({.rx = "[ 5 4503599627370496 ]"}).has_value());
  EXPECT_FALSE(rowsOf({.Au = "[ [ 1 -4503599627370497 ] ]"}).has_value());
}

}  // namespace
}  // namespace starsift
