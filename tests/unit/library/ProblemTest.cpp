#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <starsift/starsift.h>

#include <vector>

#include "LibraryErrors.h"
#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

using testing::HasSubstr;

/// 4 variables from 0 to 40, their weights 1000 in all, the value as large as can be.
Problem knapsack() {
  Problem problem;
  for (int i = 0; i < 4; ++i) problem.addVariable(0, 40);
  problem.addEquation({12, 17, 23, 31}, 1000);
  problem.maximise({3, 5, 7, 9});
  return problem;
}

TEST(LibraryProblem, CountsWhatWasAdded) {
  Problem problem = knapsack();
  EXPECT_EQ(problem.addRange({1, 1, 1, 1}, "-inf", 50), 1U);
  EXPECT_EQ(problem.addCongruence({1, 0, 0, 0}, 1, 2), 2U);
  EXPECT_EQ(problem.approach({1, 0, 0, 0}, 7), 1U);
  EXPECT_EQ(problem.variableCount(), 4U);
  EXPECT_EQ(problem.rowCount(), 3U);
  EXPECT_EQ(problem.targetCount(), 2U);
}

TEST(LibraryProblem, NamesWhatHasNoName) {
  Problem problem = knapsack();
  problem.addRange({1, 1, 1, 1}, "-inf", 50);
  problem.addRange({1, 1, 1, 1}, 0, 50, "pieces");
  problem.addCongruence({1, 0, 0, 0}, 1, 2);
  problem.addVariable(0, 1, "spare");
  EXPECT_EQ(problem.rowName(0), "g1");
  EXPECT_EQ(problem.rowName(1), "u1");
  EXPECT_EQ(problem.rowName(2), "pieces");
  EXPECT_EQ(problem.rowName(3), "g2");
  EXPECT_EQ(problem.variableName(3), "x4");
  EXPECT_EQ(problem.variableName(4), "spare");
}

TEST(LibraryProblem, HasTheTextOfAFile) {
  Problem problem = knapsack();
  problem.addRange({"0.5", 0, 0, "1/3"}, "-inf", "7/2");
  EXPECT_EQ(problem.toOpt(),
            "[ inf ]\n[ [ 3 5 7 9 ]\n]\n[ [ 12 17 23 31 ]\n]\n[ 1000 ]\n[ ]\n"
            "[ [ 0.5 0 0 1/3 ]\n]\n[ -inf ]\n[ 3.5 ]\n"
            "[ 0 0 0 0 ]\n[ 0 0 0 0 ]\n[ 40 40 40 40 ]\n");
}

TEST(LibraryProblem, ComesBackFromItsText) {
  Problem problem = knapsack();
  problem.addRange({1, 1, 1, 1}, "-inf", 50);
  problem.addCongruence({1, 0, 0, 0}, 1, 2);
  problem.approach({1, 0, 0, 0}, 7);
  problem.addVariable("-1.25", "inf", "", 2);
  const std::string text = problem.toOpt();
  EXPECT_EQ(Problem::fromOpt(text).toOpt(), text);
}

TEST(LibraryProblem, KeepsTheThresholdsOfAFile) {
  const std::string text = "[ inf ] = [ 5 ] [ [ 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 9 ]";
  EXPECT_THAT(Problem::fromOpt(text).toOpt(), HasSubstr("[ inf ]\n= [ 5 ]\n"));
}

TEST(LibraryProblem, IsReadFromAFile) {
  const test::ScratchDir dir;
  const std::string path = dir.write("k.opt", knapsack().toOpt());
  EXPECT_EQ(Problem::read(path).toOpt(), knapsack().toOpt());
}

TEST(LibraryProblem, AddsCoefficientsOfOneVariable) {
  Problem problem;
  for (int i = 0; i < 3; ++i) problem.addVariable(0, 1);
  problem.addEquation(Row::sparse({{2, 5}, {0, 1}, {2, -3}}), 1);
  EXPECT_THAT(problem.toOpt(), HasSubstr("[ [ 1 0 2 ]\n]\n[ 1 ]"));
}

TEST(LibraryProblem, TakesRowsOfAnyRange) {
  Problem problem;
  for (int i = 0; i < 3; ++i) problem.addVariable(0, 1);
  const std::vector<long> weights{4, 5, 6};
  problem.addEquation(weights, 9);
  EXPECT_THAT(problem.toOpt(), HasSubstr("[ [ 4 5 6 ]\n]\n[ 9 ]"));
}

TEST(LibraryProblem, IsCopiedWhole) {
  const Problem problem = knapsack();
  Problem copy = problem;
  copy.addVariable(0, 1);
  EXPECT_EQ(problem.variableCount(), 4U);
  EXPECT_EQ(copy.variableCount(), 5U);
}

TEST(LibraryProblem, RefusesWhatFitsNoRow) {
  Problem problem = knapsack();
  EXPECT_ERROR(problem.addEquation({1, 2, 3}, 1), "row g2: 3 coefficients for 4 variables");
  EXPECT_ERROR(problem.addEquation(Row::sparse({{7, 1}}), 1), "row g2: there is no variable 7");
  EXPECT_ERROR(problem.addEquation({1, "inf", 0, 0}, 1), "row g2: an infinite coefficient");
  EXPECT_ERROR(problem.addEquation({1, 0, 0, 0}, "inf", "w"), "row w: an infinite value");
  EXPECT_ERROR(problem.addCongruence({1, 0, 0, 0}, 1, 0), "row g2: the modulus is 0 or infinite");
  EXPECT_ERROR(problem.addCongruence({1, 0, 0, 0}, 1, "inf"),
               "row g2: the modulus is 0 or infinite");
  EXPECT_ERROR(problem.addRange({1, 0, 0, 0}, 2, 1),
               "row u1: the upper bound is below the lower one");
  EXPECT_ERROR(problem.addRange({1, 0, 0, 0}, "-inf", "inf"), "row u1: no bound is finite");
  EXPECT_ERROR(problem.maximise({1}), "target 2: 1 coefficient for 4 variables");
  EXPECT_ERROR(problem.approach({1, 0, 0, 0}, "inf"), "target 2: an infinite value");
  EXPECT_EQ(problem.toOpt(), knapsack().toOpt());
}

TEST(LibraryProblem, RefusesWhatIsNoVariable) {
  Problem problem;
  EXPECT_ERROR(problem.addVariable(2, 1), "variable x1: the upper bound is below the lower one");
  EXPECT_ERROR(problem.addVariable(0, 1, "money", 19), "variable money: decimals are from 0 to 18");
  EXPECT_EQ(problem.variableCount(), 0U);
}

TEST(LibraryProblem, HasNoTextWithoutVariablesOrRows) {
  Problem problem;
  EXPECT_ERROR(problem.toOpt(), "the problem has no variables");
  problem.addVariable(0, 1);
  EXPECT_ERROR(problem.toOpt(), "the problem has neither rows nor targets");
}

TEST(LibraryProblem, KnowsNoNamesBeyondItsEnd) {
  const Problem problem = knapsack();
  EXPECT_ERROR(problem.variableName(4), "there is no variable 4");
  EXPECT_ERROR(problem.rowName(1), "there is no row 1");
}

TEST(LibraryProblem, RefusesAFileWithTheReportOfTheCommands) {
  EXPECT_ERROR(Problem::read("/nowhere/at/all.opt"),
               "Could not read opt file: /nowhere/at/all.opt");
  EXPECT_ERROR(Problem::fromOpt("[ ] [ ] [ [ 1 ] ] [ 1 ] [ ] [ ] [ ] [ ] [ 0 ] [ 2 ] [ 1 ]"),
               "rx has to be >= lx in each of its components");
}

}  // namespace
}  // namespace starsift
