#include "search/decide/IntegerProblem.h"

#include <gtest/gtest.h>

#include "numbers/VectorQQ.h"
#include "support/fixtures/OptText.h"
#include "support/fixtures/Problem.h"

namespace starsift {
namespace {

using test::OptText;
using test::problemFrom;
using test::q;

IntegerProblem integersOf(const OptText& text) {
  return integerProblem(problemFrom(text.text())).value();
}

std::vector<ZZ> numbers(std::initializer_list<int> values) {
  return {values.begin(), values.end()};
}

TEST(IntegerProblem, RoundsBoundsInwardsToSteps) {
  const IntegerProblem problem =
      integersOf({.dx = "[ 1 0 ]", .lx = "[ 0.31 -inf ]", .rx = "[ 4.99 7/2 ]"});
  EXPECT_EQ(problem.box[0].lower, ZZ(4));
  EXPECT_EQ(problem.box[0].upper, ZZ(49));
  EXPECT_FALSE(problem.box[1].lower);
  EXPECT_EQ(problem.box[1].upper, ZZ(3));
}

TEST(IntegerProblem, ScalesEquationsToIntegers) {
  // 3 x + y / 2 = 7
  const IntegerProblem problem = integersOf({});
  ASSERT_EQ(problem.equations.size(), 1U);
  EXPECT_EQ(problem.equations[0].form.coefficients, numbers({6, 1}));
  EXPECT_EQ(problem.equations[0].form.constant, ZZ(-14));
  EXPECT_TRUE(problem.equations[0].modulus.isZero());
}

TEST(IntegerProblem, ScalesAModulusWithItsRow) {
  const IntegerProblem problem = integersOf({.qg = "[ -3/4 ]"});
  EXPECT_EQ(problem.equations[0].form.coefficients, numbers({12, 2}));
  EXPECT_EQ(problem.equations[0].modulus, ZZ(3));
}

TEST(IntegerProblem, KeepsACongruenceWithinTheToleranceIfItsModulusIs) {
  const OptText text{.Ag = "[ [ 1/10000000000 0 ] ]", .bg = "[ 0 ]", .qg = "[ 1/10000000000 ]"};
  const IntegerProblem problem = integersOf(text);
  EXPECT_EQ(problem.equations[0].modulus, ZZ(1));
  ASSERT_EQ(problem.ranges.size(), 2U);
  EXPECT_EQ(problem.ranges[0].range.lower, ZZ(-10));
  EXPECT_EQ(problem.ranges[0].range.upper, ZZ(10));
}

TEST(IntegerProblem, RoundsBoundsOfRowsInwardsAfterTheCommonFactor) {
  // 1 <= 2/3 x - 4/3 y <= 3 is 3/2 <= x - 2 y <= 9/2.
  const IntegerProblem problem =
      integersOf({.Au = "[ [ 2/3 -4/3 ] ]", .lu = "[ 1 ]", .ru = "[ 3 ]"});
  EXPECT_EQ(problem.ranges[0].form.coefficients, numbers({1, -2}));
  EXPECT_EQ(problem.ranges[0].range.lower, ZZ(2));
  EXPECT_EQ(problem.ranges[0].range.upper, ZZ(4));
}

TEST(IntegerProblem, LeavesConstantsOut) {
  const IntegerProblem problem = integersOf({.lx = "[ 1/3 0 ]", .rx = "[ 1/3 5 ]"});
  EXPECT_EQ(problem.variableCount(), 1U);
  // 1 + y / 2 = 7
  EXPECT_EQ(problem.equations[0].form.coefficients, numbers({1}));
  EXPECT_EQ(problem.equations[0].form.constant, ZZ(-12));
  const Vector<QQ> x = problem.pointAsRead(numbers({4}));
  EXPECT_EQ(x[1], q("1/3"));
  EXPECT_EQ(x[2], QQ(4));
}

TEST(IntegerProblem, ReturnsComponentsInTheUnitsOfTheUser) {
  const IntegerProblem problem = integersOf({.dx = "[ 1 0 ]"});
  EXPECT_EQ(problem.pointAsRead(numbers({7, 2}))[1], q("0.7"));
}

TEST(IntegerProblem, AddsTargetsWithTheirSigns) {
  const IntegerProblem problem =
      integersOf({.dt = "[ inf -inf 1/2 ]", .At = "[ [ 1 0 ] [ 0 1/3 ] [ 1 1 ] ]"});
  const IntegerObjective& objective = problem.objective.value();
  EXPECT_EQ(objective.scale, ZZ(6));
  EXPECT_EQ(objective.linear.coefficients, numbers({-6, 2}));
  ASSERT_EQ(objective.deviations.size(), 1U);
  EXPECT_EQ(objective.deviations[0].coefficients, numbers({6, 6}));
  EXPECT_EQ(objective.deviations[0].constant, ZZ(-3));
  // -x + y / 3 + |x + y - 1/2| at (2, 3)
  EXPECT_EQ(QQ(objective.at(numbers({2, 3})), objective.scale), q("7/2"));
}

TEST(IntegerProblem, RefusesStepsThatAreNone) {
  EXPECT_FALSE(integerProblem(problemFrom(OptText{.dx = "[ 1/2 0 ]"}.text())));
}

TEST(IntegerProblem, RefusesInfiniteConstants) {
  EXPECT_FALSE(integerProblem(problemFrom(OptText{.lx = "[ inf 0 ]", .rx = "[ inf 5 ]"}.text())));
}

TEST(IntegerProblem, HasNoSolutionBelowAnInfiniteLowerBoundOfARow) {
  const IntegerProblem problem = integersOf({.lu = "[ inf ]", .ru = "[ inf ]"});
  EXPECT_TRUE(problem.ranges[0].range.isEmpty());
}

TEST(IntegerProblem, TestsPointsAgainstEveryRow) {
  // 3 x + y / 2 = 7, x - y <= 2, 0 <= x, y <= 5
  const IntegerProblem problem = integersOf({});
  EXPECT_TRUE(isSolution(problem, numbers({2, 2})));
  EXPECT_FALSE(isSolution(problem, numbers({1, 8})));
  EXPECT_FALSE(isSolution(problem, numbers({2, 3})));
  EXPECT_FALSE(isSolution(integersOf({.ru = "[ -1 ]"}), numbers({2, 2})));
  EXPECT_TRUE(isSolution(integersOf({.qg = "[ 2 ]"}), numbers({3, 4})));
  EXPECT_FALSE(isSolution(integersOf({.qg = "[ 2 ]"}), numbers({3, 2})));
}

}  // namespace
}  // namespace starsift
