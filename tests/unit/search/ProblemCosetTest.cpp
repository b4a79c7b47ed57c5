#include "search/decide/ProblemCoset.h"

#include <gtest/gtest.h>

#include "support/fixtures/OptText.h"
#include "support/fixtures/Problem.h"

namespace starsift {
namespace {

using test::OptText;
using test::problemFrom;

CosetSettings settingsFor(bool withObjective) {
  return {withObjective, std::nullopt, [](BoxCoset&) { return true; }, [] { return true; }};
}

std::vector<ZZ> numbers(std::initializer_list<int> values) {
  return {values.begin(), values.end()};
}

CosetResult cosetOf(const OptText& text, bool withObjective = true) {
  return problemCoset(integerProblem(problemFrom(text.text())).value(), settingsFor(withObjective));
}

/// x + 2 y, both from 0 to 5, without rows.
const OptText free{.Ag = "[ ]", .bg = "[ ]", .Au = "[ ]", .lu = "[ ]", .ru = "[ ]"};

OptText withEquation(const std::string& row, const std::string& value,
                     const std::string& modulus = "") {
  OptText text = free;
  text.Ag = "[ [ " + row + " ] ]";
  text.bg = "[ " + value + " ]";
  text.qg = "[ " + modulus + " ]";
  return text;
}

TEST(SolutionCoset, IsTheWholeSpaceWithoutEquations) {
  const auto coset = std::get<ProblemCoset>(cosetOf(free, false));
  EXPECT_EQ(coset.coset.basis.size(), 2U);
  EXPECT_EQ(coset.coset.upper, numbers({5, 5}));
}

TEST(SolutionCoset, HasTheKernelOfAnEquation) {
  const auto coset = std::get<ProblemCoset>(cosetOf(withEquation("3 5", "31"), false));
  ASSERT_EQ(coset.coset.basis.size(), 1U);
  EXPECT_EQ(abs(coset.coset.basis[0][0]), ZZ(5));
  EXPECT_EQ(abs(coset.coset.basis[0][1]), ZZ(3));
  const std::vector<ZZ>& p = coset.coset.point;
  EXPECT_EQ(ZZ(3) * p[0] + ZZ(5) * p[1], ZZ(31));
}

TEST(SolutionCoset, HasTheLatticeOfACongruence) {
  const auto coset = std::get<ProblemCoset>(cosetOf(withEquation("3 5", "1", "7"), false));
  ASSERT_EQ(coset.coset.basis.size(), 2U);
  const auto& b = coset.coset.basis;
  // The points with 3 x + 5 y = 0 modulo 7 have the index 7.
  EXPECT_EQ(abs(b[0][0] * b[1][1] - b[0][1] * b[1][0]), ZZ(7));
  for (const std::vector<ZZ>& row : b)
    EXPECT_TRUE(mpz_divisible_ui_p(ZZ(ZZ(3) * row[0] + ZZ(5) * row[1]).get(), 7));
}

TEST(SolutionCoset, IsEmptyIfTheDivisorDoesNotDivideTheValue) {
  EXPECT_TRUE(std::holds_alternative<NoSolution>(cosetOf(withEquation("4 6", "7"))));
  EXPECT_TRUE(std::holds_alternative<NoSolution>(cosetOf(withEquation("4 6", "7", "8"))));
  EXPECT_TRUE(std::holds_alternative<NoSolution>(cosetOf(withEquation("0 0", "7"))));
  EXPECT_TRUE(std::holds_alternative<ProblemCoset>(cosetOf(withEquation("4 6", "7", "9"))));
}

TEST(SolutionCoset, IgnoresRedundantEquationsAndRejectsContradictions) {
  OptText text = withEquation("1 1", "4");
  text.Ag = "[ [ 1 1 ] [ 2 2 ] ]";
  text.bg = "[ 4 8 ]";
  EXPECT_EQ(std::get<ProblemCoset>(cosetOf(text)).coset.basis.size(), 1U);
  text.bg = "[ 4 10 ]";
  EXPECT_TRUE(std::holds_alternative<NoSolution>(cosetOf(text)));
}

TEST(SolutionCoset, EndsWhenTheReducerDoes) {
  const OptText text =
      withEquation("123456789012345678901 234567890123456789012", "3", "7777777777777");
  CosetSettings settings = settingsFor(false);
  settings.reduce = [](BoxCoset&) { return false; };
  const IntegerProblem problem = integerProblem(problemFrom(text.text())).value();
  EXPECT_TRUE(std::holds_alternative<CosetStopped>(problemCoset(problem, settings)));
}

TEST(ProblemCoset, LeavesFixedVariablesOut) {
  OptText text = withEquation("1 1", "4");
  text.Ag = "[ [ 1 1 ] [ 1 -1 ] ]";
  text.bg = "[ 4 2 ]";
  const auto coset = std::get<ProblemCoset>(cosetOf(text, false));
  EXPECT_TRUE(coset.coset.point.empty());
  EXPECT_EQ(coset.variablesAt({}), numbers({3, 1}));
}

TEST(ProblemCoset, IsEmptyIfAFixedVariableLeavesItsBounds) {
  OptText text = withEquation("1 1", "4");
  text.Ag = "[ [ 1 1 ] [ 1 -1 ] ]";
  text.bg = "[ 4 8 ]";
  EXPECT_TRUE(std::holds_alternative<NoSolution>(cosetOf(text)));
}

TEST(ProblemCoset, NarrowsRangesToTheValuesOfTheirCoordinates) {
  // x = 3 modulo 7 within 0 and 15, free y
  OptText text = withEquation("1 0", "3", "7");
  text.rx = "[ 15 5 ]";
  const auto coset = std::get<ProblemCoset>(cosetOf(text, false));
  EXPECT_EQ(coset.coset.lower, numbers({3, 0}));
  EXPECT_EQ(coset.coset.upper, numbers({10, 5}));
}

TEST(ProblemCoset, HasACoordinateForARowThatCanLeaveItsRange) {
  OptText text = free;
  text.Au = "[ [ 1 1 ] [ 1 1 ] ]";
  text.lu = "[ -inf 0 ]";
  text.ru = "[ 7 10 ]";
  const auto coset = std::get<ProblemCoset>(cosetOf(text, false));
  EXPECT_EQ(coset.coset.lower, numbers({0, 0, 0}));
  EXPECT_EQ(coset.coset.upper, numbers({5, 5, 7}));
}

TEST(ProblemCoset, TurnsARowWithEqualBoundsIntoAnEquation) {
  OptText text = free;
  text.Au = "[ [ 1 1 ] ]";
  text.lu = "[ 7 ]";
  text.ru = "[ 7 ]";
  EXPECT_EQ(std::get<ProblemCoset>(cosetOf(text, false)).coset.basis.size(), 1U);
}

TEST(ProblemCoset, NamesAVariableWithoutBound) {
  OptText text = free;
  text.rx = "[ 5 inf ]";
  const CosetResult result = cosetOf(text);
  ASSERT_TRUE(std::holds_alternative<NoFiniteBox>(result));
  EXPECT_EQ(std::get<NoFiniteBox>(result).variable, 1U);
}

TEST(ProblemCoset, FindsBoundsInTheRows) {
  // x + y = 4 and x - y within -2 and 2, without bounds of their own
  OptText text = withEquation("1 1", "4");
  text.Au = "[ [ 1 -1 ] ]";
  text.lu = "[ -2 ]";
  text.ru = "[ 2 ]";
  text.lx = "[ -inf -inf ]";
  text.rx = "[ inf inf ]";
  const auto coset = std::get<ProblemCoset>(cosetOf(text, false));
  EXPECT_EQ(coset.coset.lower, numbers({1, 1, -2}));
  EXPECT_EQ(coset.coset.upper, numbers({3, 3, 2}));
}

TEST(ProblemCoset, FindsADirectionInWhichTheObjectiveFalls) {
  // To maximise x + 2 y with x - y = 0 modulo 3, x >= y
  OptText text = withEquation("1 -1", "0", "3");
  text.Au = "[ [ 1 -1 ] ]";
  text.lu = "[ 0 ]";
  text.ru = "[ inf ]";
  text.rx = "[ inf inf ]";
  const CosetResult result = cosetOf(text);
  ASSERT_TRUE(std::holds_alternative<NoFiniteBox>(result));
  const std::vector<ZZ>& direction = std::get<NoFiniteBox>(result).direction;
  EXPECT_TRUE(lowersForEver(integerProblem(problemFrom(text.text())).value(), direction));
}

TEST(ProblemCoset, HasNoFallingDirectionIfTheObjectiveIsBounded) {
  OptText text = free;
  text.dt = "[ -inf ]";
  text.rx = "[ inf inf ]";
  EXPECT_TRUE(std::get<NoFiniteBox>(cosetOf(text)).direction.empty());
}

TEST(ProblemCoset, IsBoundedByTheObjectiveWanted) {
  OptText text = free;
  text.dt = "[ -inf ]";
  text.rx = "[ inf inf ]";
  CosetSettings settings = settingsFor(true);
  settings.most = ZZ(6);
  const IntegerProblem problem = integerProblem(problemFrom(text.text())).value();
  const auto coset = std::get<ProblemCoset>(problemCoset(problem, settings));
  EXPECT_EQ(coset.coset.upper, numbers({6, 3, 6}));
  settings.most = ZZ(-1);
  EXPECT_TRUE(std::holds_alternative<NoSolution>(problemCoset(problem, settings)));
}

TEST(ProblemCoset, RaisesTheBoundOfTheObjectiveToThatOfTheRelaxation) {
  // To minimise x + 2 y with 2 x + 3 y >= 8: at least 4, by x = 4.
  OptText text = free;
  text.dt = "[ -inf ]";
  text.Au = "[ [ 2 3 ] ]";
  text.lu = "[ 8 ]";
  text.ru = "[ inf ]";
  auto coset = std::get<ProblemCoset>(cosetOf(text));
  EXPECT_EQ(coset.leastObjective, ZZ());
  ASSERT_TRUE(raiseObjective(coset, [] { return true; }));
  EXPECT_EQ(coset.leastObjective, ZZ(4));
  EXPECT_EQ(coset.coset.lower.back(), ZZ(4));
}

TEST(ProblemCoset, NeedsNoBoundsOfFixedVariables) {
  OptText text = withEquation("1 1", "4");
  text.Ag = "[ [ 1 1 ] [ 1 -1 ] ]";
  text.bg = "[ 4 2 ]";
  text.lx = "[ -inf -inf ]";
  text.rx = "[ inf inf ]";
  EXPECT_EQ(std::get<ProblemCoset>(cosetOf(text)).variablesAt({}), numbers({3, 1}));
}

TEST(ProblemCoset, BoundsTheObjectiveByACoordinate) {
  // To maximise x + 2 y: the objective is -x - 2 y, from -15 to 0.
  const auto coset = std::get<ProblemCoset>(cosetOf(free));
  ASSERT_EQ(coset.objective.size(), 1U);
  const ObjectiveCoordinate& objective = coset.objective[0];
  EXPECT_EQ(coset.leastObjective, ZZ(-15));
  EXPECT_EQ(coset.coset.lower[objective.coordinate], ZZ(-15));
  EXPECT_EQ(objective.bound.rangeBelow(ZZ(-7)).upper, ZZ(-7));
  EXPECT_FALSE(objective.bound.rangeBelow(ZZ(-7)).lower);
}

TEST(ProblemCoset, BoundsADistanceOnBothSides) {
  // |2 x + 4 y - 7| is at least 1 and 1 modulo 2.
  OptText text = free;
  text.dt = "[ 7 ]";
  text.At = "[ [ 2 4 ] ]";
  const auto coset = std::get<ProblemCoset>(cosetOf(text));
  ASSERT_EQ(coset.objective.size(), 1U);
  EXPECT_EQ(coset.leastObjective, ZZ());
  // At most 2: 5 <= 2 x + 4 y <= 9, so that x + 2 y is 3 or 4.
  const IntegerRange range = coset.objective[0].bound.rangeBelow(ZZ(2));
  EXPECT_EQ(range.lower, ZZ(3));
  EXPECT_EQ(range.upper, ZZ(4));
}

TEST(ProblemCoset, BoundsSumsOfDistancesForEveryChoiceOfSigns) {
  OptText text = free;
  text.dt = "[ 3 2 ]";
  text.At = "[ [ 1 0 ] [ 0 1 ] ]";
  EXPECT_EQ(std::get<ProblemCoset>(cosetOf(text)).objective.size(), 2U);
  text.dt = "[ 3 inf ]";
  EXPECT_EQ(std::get<ProblemCoset>(cosetOf(text)).objective.size(), 2U);
  text.dt = "[ 3 2 inf 1 0 ]";
  text.At = "[ [ 1 0 ] [ 0 1 ] [ 1 1 ] [ 1 -1 ] [ 1 2 ] ]";
  EXPECT_EQ(std::get<ProblemCoset>(cosetOf(text)).objective.size(), 8U + 2U);
}

}  // namespace
}  // namespace starsift
