#include "problem/Bounds.h"

#include <gtest/gtest.h>

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/FreshConsole.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/RowsText.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::problemFrom;
using test::rowsText;
using test::textOf;

template <class T>
class BoundsOver : public test::FreshConsole {
 protected:
  /// One equation with the sum of the variables; `variables` are dx, lx and rx.
  static Vanu<T> sumOf(int n, const std::string& variables) {
    std::string row;
    for (int j = 0; j < n; ++j) row += "1 ";
    return problemFrom<T>("[ ] [ ] [ [ " + row + "] ] [ 0 ] [ ] [ ] [ ] [ ] " + variables);
  }
};
using NumberTypes = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(BoundsOver, NumberTypes);

TYPED_TEST(BoundsOver, RoundsInwardsToTheStepsOfTheVariable) {
  auto problem = this->sumOf(4, "[ 0 1 2 0 ] [ 0.5 -0.55 0.001 -inf ] [ 7.5 0.07 1.239 2.5 ]");
  roundBounds(problem);
  const auto rounded = this->sumOf(4, "[ 0 1 2 0 ] [ 1 -0.5 0.01 -inf ] [ 7 0 1.23 2 ]");
  EXPECT_TRUE(identical(problem.lx, rounded.lx));
  EXPECT_TRUE(identical(problem.rx, rounded.rx));
}

// 0.07 * 100 is a little more than 7 in binary fractions.
TYPED_TEST(BoundsOver, KeepsBoundsThatAreSteps) {
  auto problem = this->sumOf(2, "[ 2 2 ] [ 0.07 -0.29 ] [ 0.58 0.07 ]");
  const auto before = problem;
  roundBounds(problem);
  EXPECT_TRUE(identical(problem.lx, before.lx));
  EXPECT_TRUE(identical(problem.rx, before.rx));
}

TYPED_TEST(BoundsOver, KeepsAConstantBetweenTwoSteps) {
  auto problem = this->sumOf(1, "[ 0 ] [ 0.25 ] [ 0.25 ]");
  const auto before = problem;
  roundBounds(problem);
  EXPECT_TRUE(identical(problem.lx, before.lx));
  EXPECT_TRUE(identical(problem.rx, before.rx));
}

TYPED_TEST(BoundsOver, RefusesAVariableWithoutAStepBetweenItsBounds) {
  auto problem = this->sumOf(2, "[ 0 0 ] [ 0 0.2 ] [ 1 0.8 ]");
  EXPECT_FAILS_WITH(roundBounds(problem), "sol bounds error");
}

TYPED_TEST(BoundsOver, RefusesBoundsBeyondEveryNumber) {
  auto above = this->sumOf(1, "[ 0 ] [ inf ] [ inf ]");
  EXPECT_FAILS_WITH(roundBounds(above), "sol bounds error");
  auto below = this->sumOf(1, "[ 0 ] [ -inf ] [ -inf ]");
  EXPECT_FAILS_WITH(roundBounds(below), "sol bounds error");
}

TYPED_TEST(BoundsOver, RefusesDecimalPlacesThatAreNoCount) {
  const char* const message = "dx has to be a non-negative integer in each of its components";
  for (const char* places : {"-1", "0.5", "inf", "-inf"}) {
    auto problem = this->sumOf(2, std::string("[ 0 ") + places + " ] [ 0 0 ] [ 5 5 ]");
    EXPECT_FAILS_WITH(roundBounds(problem), message);
  }
}

TYPED_TEST(BoundsOver, SubstitutesFixedVariables) {
  auto problem = problemFrom<TypeParam>(
      "[ inf -inf ] [ [ 1 2 3 ] [ 4 5 6 ] ] [ [ 2 1 7 ] ] [ 20 ] [ ] [ [ 5 1 9 ] ] [ 0 ] [ inf ] "
      "[ 1 2 3 ] [ 3 0 -2 ] [ 3 5 -2 ]");
  problem.ltu = TypeParam(10);
  problem.rtu = TypeParam(90);
  problem.atu = Vector<TypeParam>{TypeParam(-3), TypeParam(-4), TypeParam(-5)};
  removeFixedVariables(problem);
  EXPECT_EQ(rowsText(problem.At), "[ 2 ] [ 5 ]");
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 ]");
  EXPECT_EQ(rowsText(problem.Au), "[ 1 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 28 ]");
  EXPECT_EQ(textOf(problem.lu), "[ 3 ]");
  EXPECT_EQ(textOf(problem.ru), "[ inf ]");
  // 3 * (1 - 4) + -2 * (3 - 6) is what they are worth as targets.
  EXPECT_EQ(problem.ltu, TypeParam(13));
  EXPECT_EQ(problem.rtu, TypeParam(93));
  EXPECT_EQ(textOf(problem.atu), "[ -4 ]");
  EXPECT_EQ(textOf(problem.dx), "[ 2 ]");
  EXPECT_EQ(textOf(problem.lx), "[ 0 ]");
  EXPECT_EQ(textOf(problem.rx), "[ 5 ]");
  EXPECT_EQ(problem.fd.dimension(), 1);
  ASSERT_EQ(problem.fixedVars.dimension(), 2);
  EXPECT_EQ(problem.fixedVars[1].left, 1);
  EXPECT_EQ(problem.fixedVars[1].right, TypeParam(3));
  EXPECT_EQ(problem.fixedVars[2].left, 3);
  EXPECT_EQ(problem.fixedVars[2].right, TypeParam(-2));
}

TYPED_TEST(BoundsOver, RemovesAllVariablesWhereAllAreFixed) {
  auto problem = this->sumOf(2, "[ 0 0 ] [ 1 2 ] [ 1 2 ]");
  removeFixedVariables(problem);
  EXPECT_EQ(problem.rx.dimension(), 0);
  EXPECT_EQ(problem.Ag.columnCount(), 0);
  EXPECT_EQ(textOf(problem.bg), "[ -3 ]");
}

TYPED_TEST(BoundsOver, ForgetsTheFixedVariablesOfAnEarlierRun) {
  auto problem = this->sumOf(2, "[ 0 0 ] [ 1 0 ] [ 1 2 ]");
  removeFixedVariables(problem);
  removeFixedVariables(problem);
  EXPECT_EQ(problem.fixedVars.dimension(), 0);
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 ]");
}

TYPED_TEST(BoundsOver, CountsDecimalVariablesInTheirSteps) {
  auto problem = problemFrom<TypeParam>(
      "[ inf ] [ [ 300 1 ] ] [ [ 500 1 ] ] [ 4 ] [ ] [ [ 700 1 ] ] [ 0 ] [ 9 ] "
      "[ 2 0 ] [ 0.001 -1.5 ] [ 1.239 2.5 ]");
  scaleDecimalVariables(problem);
  EXPECT_EQ(textOf(problem.lx), "[ 1 -1 ]");
  EXPECT_EQ(textOf(problem.rx), "[ 123 2 ]");
  EXPECT_EQ(rowsText(problem.At), "[ 3 1 ]");
  EXPECT_EQ(rowsText(problem.Ag), "[ 5 1 ]");
  EXPECT_EQ(rowsText(problem.Au), "[ 7 1 ]");
  EXPECT_EQ(textOf(problem.dx), "[ 2 0 ]");
}

TYPED_TEST(BoundsOver, LeavesInfiniteBoundsWhenScaling) {
  auto problem = this->sumOf(1, "[ 3 ] [ -inf ] [ inf ]");
  scaleDecimalVariables(problem);
  EXPECT_EQ(textOf(problem.lx), "[ -inf ]");
  EXPECT_EQ(textOf(problem.rx), "[ inf ]");
}

TYPED_TEST(BoundsOver, SwapsHalfFreeVariables) {
  auto problem = problemFrom<TypeParam>(
      "[ inf ] [ [ 1 2 3 4 ] ] [ [ 5 6 7 8 ] ] [ 4 ] [ ] [ [ 1 -1 1 -1 ] ] [ 0 ] [ 9 ] "
      "[ 0 0 0 0 ] [ -inf 0 -inf -inf ] [ 7 5 inf -2 ]");
  EXPECT_EQ(this->consoleOf([&] { swapHalfFreeVariables(problem, true); }),
            "|-> Swapped half-free variable detected\n"
            "|-> Swapped half-free variable detected\n");
  EXPECT_EQ(rowsText(problem.At), "[ -1 2 3 -4 ]");
  EXPECT_EQ(rowsText(problem.Ag), "[ -5 6 7 -8 ]");
  EXPECT_EQ(rowsText(problem.Au), "[ -1 -1 1 1 ]");
  EXPECT_EQ(textOf(problem.lx), "[ -7 0 -inf 2 ]");
  EXPECT_EQ(textOf(problem.rx), "[ inf 5 inf inf ]");
  EXPECT_EQ(problem.fd[1], FreedomDegree::rightFree);
  EXPECT_EQ(problem.fd[3], FreedomDegree::free);
  EXPECT_EQ(problem.fd[4], FreedomDegree::rightFree);
  ASSERT_EQ(problem.swappedVars.dimension(), 2);
  EXPECT_EQ(problem.swappedVars[1], 1);
  EXPECT_EQ(problem.swappedVars[2], 4);
}

TYPED_TEST(BoundsOver, SwapsWithoutAWordWhenNotVerbose) {
  auto problem = this->sumOf(1, "[ 0 ] [ -inf ] [ 7 ]");
  EXPECT_EQ(this->consoleOf([&] { swapHalfFreeVariables(problem, false); }), "");
  EXPECT_EQ(textOf(problem.lx), "[ -7 ]");
}

TYPED_TEST(BoundsOver, NoVariableIsFreeBelowOnlyBehindTheSwap) {
  auto problem = this->sumOf(3, "[ 0 0 0 ] [ -inf -inf -inf ] [ 1 2 3 ]");
  this->consoleOf([&] { swapHalfFreeVariables(problem, true); });
  for (const FreedomDegree kind : problem.fd) EXPECT_EQ(kind, FreedomDegree::rightFree);
}

TYPED_TEST(BoundsOver, MovesVariablesToStartAtZero) {
  auto problem = problemFrom<TypeParam>(
      "[ inf ] [ [ 1 2 3 ] ] [ [ 5 6 7 ] ] [ 40 ] [ ] [ [ 1 -1 1 ] ] [ 0 ] [ 9 ] "
      "[ 0 0 0 ] [ -3 2 -inf ] [ 4 inf inf ]");
  problem.atuValid = true;
  problem.ltu = TypeParam(10);
  problem.rtu = TypeParam(20);
  problem.atu = Vector<TypeParam>{TypeParam(1), TypeParam(2), TypeParam(3)};
  shiftLowerBounds(problem);
  EXPECT_EQ(textOf(problem.shift), "[ -3 2 0 ]");
  EXPECT_EQ(textOf(problem.lx), "[ 0 0 -inf ]");
  EXPECT_EQ(textOf(problem.rx), "[ 7 inf inf ]");
  EXPECT_EQ(textOf(problem.bg), "[ 43 ]");
  EXPECT_EQ(textOf(problem.lu), "[ 5 ]");
  EXPECT_EQ(textOf(problem.ru), "[ 14 ]");
  EXPECT_EQ(problem.ltu, TypeParam(9));
  EXPECT_EQ(problem.rtu, TypeParam(19));
}

TYPED_TEST(BoundsOver, LeavesTheTargetRangeWhereThereIsNone) {
  auto problem = this->sumOf(1, "[ 0 ] [ 2 ] [ 4 ]");
  problem.ltu = TypeParam(10);
  problem.atu = Vector<TypeParam>{TypeParam(1)};
  shiftLowerBounds(problem);
  EXPECT_EQ(problem.ltu, TypeParam(10));
}

TYPED_TEST(BoundsOver, ShiftHasAnEntryPerColumnOfTheEquations) {
  auto problem = this->sumOf(2, "[ 0 0 ] [ 2 0 ] [ 4 1 ]");
  problem.Ag.resize(1, 3, false);
  problem.Ag[1][3] = TypeParam(11);
  shiftLowerBounds(problem);
  EXPECT_EQ(textOf(problem.shift), "[ 2 0 0 ]");
  EXPECT_EQ(textOf(problem.bg), "[ -2 ]");
}

}  // namespace
}  // namespace starsift
