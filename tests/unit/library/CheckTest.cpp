#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <starsift/starsift.h>

#include <array>
#include <vector>

#include "LibraryErrors.h"

namespace starsift {
namespace {

using testing::ElementsAre;
using Point = std::vector<Number>;

/// x in 0..10, y in 0..10 in steps of 0.1: 2 x + 4 y = 20, x + y <= 8, x odd; x - y near 3, and y
/// as small as can be.
Problem mixed() {
  Problem problem;
  problem.addVariable(0, 10, "x");
  problem.addVariable(0, 10, "y", 1);
  problem.addRange({1, 1}, "-inf", 8, "sum");
  problem.addEquation({2, 4}, 20);
  problem.addCongruence({1, 0}, 1, 2);
  problem.approach({1, -1}, 3);
  problem.minimise({0, 1});
  return problem;
}

TEST(LibraryCheck, GivesValuesAndNormsOfASolution) {
  const Verdict verdict = check(mixed(), Point{5, "2.5"});
  EXPECT_TRUE(verdict.isSolution);
  EXPECT_TRUE(verdict.isRight());
  EXPECT_THAT(verdict.targetValues, ElementsAre(Number("2.5"), Number("2.5")));
  EXPECT_EQ(verdict.targetNorm, Number(3));
  EXPECT_EQ(verdict.slackNorm, Number("1/2"));
}

TEST(LibraryCheck, NamesEachBrokenRowWithItsAmountTheLargestFirst) {
  const Verdict verdict = check(mixed(), Point{8, "1.5"});
  EXPECT_FALSE(verdict.isSolution);
  ASSERT_EQ(verdict.violations.size(), 3U);
  EXPECT_EQ(verdict.violations[0].name, "g1");
  EXPECT_EQ(verdict.violations[0].amount, Number(2));
  EXPECT_EQ(verdict.violations[0].index, 1U);
  EXPECT_EQ(verdict.violations[1].name, "sum");
  EXPECT_EQ(verdict.violations[1].amount, Number("3/2"));
  EXPECT_EQ(verdict.violations[1].index, 0U);
  EXPECT_EQ(verdict.violations[2].name, "g2");
  EXPECT_EQ(verdict.violations[2].amount, Number(1));
}

TEST(LibraryCheck, TellsBoundsFromEachOther) {
  Problem problem;
  problem.addVariable(0, 5);
  problem.addVariable(0, 5);
  problem.maximise({1, 1});
  const Verdict verdict = check(problem, Point{-1, 8});
  ASSERT_EQ(verdict.violations.size(), 2U);
  EXPECT_EQ(verdict.violations[0].part, Part::upperBound);
  EXPECT_EQ(verdict.violations[0].name, "x2");
  EXPECT_EQ(verdict.violations[0].amount, Number(3));
  EXPECT_EQ(verdict.violations[1].part, Part::lowerBound);
  EXPECT_EQ(verdict.violations[1].index, 0U);
}

TEST(LibraryCheck, LeavesStepsOutOfTheVerdictOnSolutions) {
  const Verdict verdict = check(mixed(), Point{"1", "4.5"});
  EXPECT_TRUE(verdict.isRight());
  Problem halves;
  halves.addVariable(0, 5);
  halves.maximise({1});
  const Verdict half = check(halves, Point{"1/2"});
  EXPECT_TRUE(half.isSolution);
  EXPECT_FALSE(half.isRight());
  ASSERT_EQ(half.violations.size(), 1U);
  EXPECT_EQ(half.violations[0].part, Part::step);
  EXPECT_EQ(half.violations[0].amount, Number("1/2"));
}

TEST(LibraryCheck, ToleratesABillionthInEquationsOnly) {
  Problem problem;
  problem.addVariable(0, 10, "", 12);
  problem.addEquation({1}, 5);
  EXPECT_TRUE(check(problem, Point{"5.000000001"}).isSolution);
  EXPECT_FALSE(check(problem, Point{"5.000000001001"}).isSolution);
  problem.addRange({1}, 0, 5);
  EXPECT_FALSE(check(problem, Point{"5.000000001"}).isSolution);
}

// The remainder of what a value misses is truncated, as it always was.
TEST(LibraryCheck, ToleratesABillionthBeyondAMultipleButNotBelow) {
  Problem problem;
  problem.addVariable(0, 9);
  problem.addCongruence({1}, "2.9999999999", 3);
  EXPECT_TRUE(check(problem, Point{3}).isSolution);
  EXPECT_FALSE(check(problem, Point{0}).isSolution);
}

TEST(LibraryCheck, StepsOfEndlessDecimalsAreNone) {
  const Problem problem =
      Problem::fromOpt("[ ] [ ] [ [ 1 ] ] [ 5 ] [ ] [ ] [ ] [ ] [ inf ] [ 0 ] [ 20 ]");
  EXPECT_TRUE(check(problem, Point{5}).isRight());
  EXPECT_EQ(check(problem, Point{"11/2"}).violations.size(), 1U);
}

TEST(LibraryCheck, IsExactBeyondMachineNumbers) {
  Problem problem;
  problem.addVariable(0, "inf");
  problem.addEquation({"123456789012345678901234567890"}, "246913578024691357802469135780");
  EXPECT_TRUE(check(problem, Point{2}).isRight());
  problem.addEquation({1}, "1e40");
  EXPECT_EQ(check(problem, Point{2}).violations.at(0).amount,
            Number("9999999999999999999999999999999999999998"));
}

TEST(LibraryCheck, TakesMachineIntegers) {
  Problem problem;
  problem.addVariable("-inf", "inf");
  problem.addEquation({2}, "18446744073709551614");
  Checker large(problem);
  EXPECT_TRUE(large.check(std::array{std::int64_t{9223372036854775807}}).isRight());
  EXPECT_EQ(large.check(std::array{std::int64_t{0}}).violations.at(0).amount,
            Number("18446744073709551614"));
}

TEST(LibraryCheck, JudgesManyPointsInOrder) {
  const std::vector<Point> points{{5, "2.5"}, {8, "1.5"}, {1, "4.5"}};
  const std::vector<Verdict> verdicts = check(mixed(), points);
  ASSERT_EQ(verdicts.size(), 3U);
  EXPECT_TRUE(verdicts[0].isSolution);
  EXPECT_FALSE(verdicts[1].isSolution);
  EXPECT_TRUE(verdicts[2].isSolution);
}

TEST(LibraryCheck, RefusesOtherPoints) {
  EXPECT_ERROR(check(mixed(), Point{1}), "a point has 1 component, the problem 2 variables");
  EXPECT_ERROR(check(mixed(), Point{1, "inf"}), "a point has an infinite component");
  EXPECT_ERROR(Checker(mixed()).check(std::array<std::int64_t, 3>{1, 2, 3}),
               "a point has 3 components, the problem 2 variables");
  EXPECT_ERROR(Checker{Problem()}, "the problem has no variables");
}

// Records of a file.

constexpr const char* knapsack =
    "[ inf ] [ [ 3 5 7 9 ] ] [ [ 12 17 23 31 ] ] [ 1000 ] [ ] [ ] [ ] [ ] "
    "[ 0 0 0 0 ] [ 0 0 0 0 ] [ 40 40 40 40 ]";
constexpr const char* records =
    "// found by hand\n[ 0 11 34 1 ]\n[ 1 4 40 0 ]\n"
    "[ 0 1 36 6 ] | -310 | [ 310 ] | 0 | 2 | --beta=20 | 2.4.2\n"
    "[ 0 1 36 5 ] | -302 | [ 302 ] | 0 | 75 | --beta=20 | 2.4.2\n"
    "[ 0 1 36 5 ] | -302 | [ 302 ] | 0 | 9 | --beta=20 | 2.4.2\n";

TEST(LibrarySol, ReadsRecordsWithTheirData) {
  const std::vector<Solution> solutions = Problem::fromOpt(knapsack).fromSol(records);
  ASSERT_EQ(solutions.size(), 5U);
  EXPECT_THAT(solutions[1].x, ElementsAre(Number(1), Number(4), Number(40), Number(0)));
  EXPECT_EQ(solutions[1].targetNorm, Number(-303));
  EXPECT_EQ(solutions[1].seconds, -1);
  EXPECT_EQ(solutions[3].seconds, 75);
  EXPECT_EQ(solutions[3].parameters, "--beta=20");
  EXPECT_EQ(solutions[3].version, "2.4.2");
}

TEST(LibrarySol, WritesWhatTheCommandWrites) {
  const Problem problem = Problem::fromOpt(knapsack);
  EXPECT_EQ(problem.toSol(problem.fromSol(records)),
            "[ 1 4 40 0 ] | -303 | [ 303 ] | 0 | -1 | \n"
            "[ 0 1 36 5 ] | -302 | [ 302 ] | 0 | 9 | --beta=20 | 2.4.2\n"
            "[ 0 11 34 1 ] | -302 | [ 302 ] | 0 | -1 | \n");
}

TEST(LibrarySol, KeepsRecordsOnOneLine) {
  const Problem problem = Problem::fromOpt(knapsack);
  Solution solution;
  solution.x = {1, 4, 40, 0};
  solution.parameters = "one\ntwo | three";
  EXPECT_EQ(problem.fromSol(problem.toSol({&solution, 1})).at(0).parameters, "one two   three");
}

TEST(LibrarySol, RefusesMalformedNumbersAndOtherLengths) {
  const Problem problem = Problem::fromOpt(knapsack);
  EXPECT_ERROR(problem.fromSol("[ 1 2 3 i ]"), "Vector: bad input2");
  Solution solution;
  solution.x = {1, 2};
  EXPECT_ERROR(problem.toSol({&solution, 1}), "a point has 2 components, the problem 4 variables");
  solution.x = {1, 2, 3, "inf"};
  EXPECT_ERROR(problem.toSol({&solution, 1}), "a point has an infinite component");
}

}  // namespace
}  // namespace starsift
