#include "problem/TightenBounds.h"

#include <gtest/gtest.h>

#include "numbers/VectorQQ.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/ProblemFields.h"
#include "support/fixtures/RowsText.h"

namespace starsift {
namespace {

using test::fieldsText;
using test::problemFrom;
using test::textOf;

/// lx and rx after tightening.
std::string boundsOf(std::string_view text) {
  auto problem = problemFrom(text);
  tightenBounds(problem);
  return textOf(problem.lx) + " " + textOf(problem.rx);
}

void expectUnchanged(std::string_view text) {
  auto problem = problemFrom(text);
  const std::string before = fieldsText(problem);
  tightenBounds(problem);
  EXPECT_EQ(fieldsText(problem), before);
}

TEST(TightenBounds, NarrowsByAnEquation) {
  EXPECT_EQ(boundsOf("[ ] [ ] [ [ 7 11 13 29 ] ] [ 1000 ] [ ] [ ] [ ] [ ] "
                     "[ 0 0 0 0 ] [ 0 0 0 0 ] [ 1000 1000 1000 1000 ]"),
            "[ 0 0 0 0 ] [ 142 90 76 34 ]");
}

TEST(TightenBounds, NarrowsFromBelowByAnEquation) {
  EXPECT_EQ(boundsOf("[ ] [ ] [ [ 2 1 ] ] [ 41 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 20 3 ]"),
            "[ 19 0 ] [ 20 3 ]");
}

TEST(TightenBounds, NarrowsByNegativeCoefficients) {
  EXPECT_EQ(boundsOf("[ ] [ ] [ ] [ ] [ ] [ [ -3 -5 ] ] [ -31 ] [ inf ] [ 0 0 ] [ 0 0 ] [ 99 99 ]"),
            "[ 0 0 ] [ 10 6 ]");
  EXPECT_EQ(boundsOf("[ ] [ ] [ [ 1 -4 ] ] [ 2 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ -50 -50 ] [ 9 50 ]"),
            "[ -50 -13 ] [ 9 1 ]");
}

TEST(TightenBounds, NarrowsByAnInequationFromAbove) {
  EXPECT_EQ(boundsOf("[ ] [ ] [ ] [ ] [ ] [ [ 2 3 ] ] [ -inf ] [ 12 ] [ 0 0 ] [ 0 1 ] [ 50 50 ]"),
            "[ 0 1 ] [ 4 4 ]");
}

TEST(TightenBounds, NarrowsByAnInequationFromBelow) {
  EXPECT_EQ(boundsOf("[ ] [ ] [ ] [ ] [ ] [ [ 2 3 ] ] [ 200 ] [ inf ] [ 0 0 ] [ 0 0 ] [ 50 50 ]"),
            "[ 25 34 ] [ 50 50 ]");
}

TEST(TightenBounds, NarrowsByBothSidesOfAnInequation) {
  EXPECT_EQ(boundsOf("[ ] [ ] [ ] [ ] [ ] [ [ 3 ] ] [ 10 ] [ 20 ] [ 0 ] [ 0 ] [ 50 ]"),
            "[ 4 ] [ 6 ]");
}

// x + y <= 5 limits x, and x - z = 0 then z.
TEST(TightenBounds, CarriesWhatOneRowSaysToOthers) {
  EXPECT_EQ(boundsOf("[ ] [ ] [ [ 1 0 -1 ] ] [ 0 ] [ ] [ [ 1 1 0 ] ] [ -inf ] [ 5 ] "
                     "[ 0 0 0 ] [ 0 0 0 ] [ 40 40 40 ]"),
            "[ 0 0 0 ] [ 5 5 5 ]");
}

TEST(TightenBounds, RoundsInwardsToTheStepsOfTheVariable) {
  EXPECT_EQ(boundsOf("[ ] [ ] [ ] [ ] [ ] [ [ 3 7 ] ] [ -inf ] [ 10 ] [ 1 2 ] [ 0 0 ] [ 100 100 ]"),
            "[ 0 0 ] [ 3:3/10 1:21/50 ]");
  EXPECT_EQ(boundsOf("[ ] [ ] [ ] [ ] [ ] [ [ -3 ] ] [ -inf ] [ 10 ] [ 1 ] [ -100 ] [ 0 ]"),
            "[ -3:3/10 ] [ 0 ]");
}

TEST(TightenBounds, ReadsFractions) {
  EXPECT_EQ(
      boundsOf("[ ] [ ] [ ] [ ] [ ] [ [ 1/3 2/7 ] ] [ -inf ] [ 1 ] [ 0 0 ] [ 0 0 ] [ 60 60 ]"),
      "[ 0 0 ] [ 3 3 ]");
}

/// lu and ru after tightening.
std::string rowBoundsOf(std::string_view text) {
  auto problem = problemFrom(text);
  EXPECT_TRUE(tightenBounds(problem));
  return textOf(problem.lu) + " " + textOf(problem.ru);
}

TEST(TightenBounds, ClosesAnInequationFromAbove) {
  EXPECT_EQ(rowBoundsOf("[ ] [ ] [ ] [ ] [ ] [ [ 2 -3 ] ] [ -7 ] [ inf ] [ 0 0 ] [ 0 1 ] [ 5 4 ]"),
            "[ -7 ] [ 7 ]");
}

TEST(TightenBounds, ClosesAnInequationFromBelow) {
  EXPECT_EQ(rowBoundsOf("[ ] [ ] [ ] [ ] [ ] [ [ 2 -3 ] ] [ -inf ] [ 4 ] [ 0 0 ] [ 1 0 ] [ 5 4 ]"),
            "[ -10 ] [ 4 ]");
}

// Among decimals 3.3 is the greatest x, so that -0.5 x goes down to -1.65.
TEST(TightenBounds, ClosesByStepsOfTheVariables) {
  EXPECT_EQ(rowBoundsOf("[ ] [ ] [ ] [ ] [ ] [ [ -1/2 ] ] [ -inf ] [ -1 ] [ 1 ] [ 0 ] [ 10/3 ]"),
            "[ -1:13/20 ] [ -1 ]");
}

// Neither has x an upper bound of its own, but 3 x <= 20 is one.
TEST(TightenBounds, ClosesByWhatOtherRowsImply) {
  EXPECT_EQ(rowBoundsOf("[ ] [ ] [ ] [ ] [ ] [ [ 3 0 ] [ 1 1 ] ] [ -inf 2 ] [ 20 inf ] "
                        "[ 0 0 ] [ 0 0 ] [ inf 4 ]"),
            "[ 0 2 ] [ 20 10 ]");
}

TEST(TightenBounds, LeavesAnInequationOpenWhereNothingBoundsIt) {
  EXPECT_EQ(rowBoundsOf("[ ] [ ] [ ] [ ] [ ] [ [ 1 1 ] ] [ 2 ] [ inf ] [ 0 0 ] [ 0 0 ] [ inf 4 ]"),
            "[ 2 ] [ inf ]");
}

/// Whether the rows may be satisfied within the bounds.
bool isConsistent(std::string_view text) {
  auto problem = problemFrom(text);
  return tightenBounds(problem);
}

TEST(TightenBounds, ReportsAContradictionOfRowsThatHoldOneByOne) {
  EXPECT_FALSE(
      isConsistent("[ ] [ ] [ ] [ ] [ ] [ [ 1 1 ] [ 1 -1 ] ] [ 8 3 ] [ inf inf ] "
                   "[ 0 0 ] [ 0 0 ] [ 5 5 ]"));
  EXPECT_TRUE(
      isConsistent("[ ] [ ] [ ] [ ] [ ] [ [ 1 1 ] [ 1 -1 ] ] [ 7 3 ] [ inf inf ] "
                   "[ 0 0 ] [ 0 0 ] [ 5 5 ]"));
}

// Later steps report these with texts of their own.
TEST(TightenBounds, ReportsNoContradictionWhereBoundsOrStepsAreUnusable) {
  EXPECT_TRUE(isConsistent("[ ] [ ] [ ] [ ] [ ] [ [ 1 ] ] [ 9 ] [ inf ] [ 0 ] [ 1/3 ] [ 2/3 ]"));
  EXPECT_TRUE(isConsistent("[ ] [ ] [ ] [ ] [ ] [ [ 1 ] ] [ 9 ] [ inf ] [ 1/2 ] [ 0 ] [ 4 ]"));
}

TEST(TightenBounds, LeavesInfiniteBoundsInfinite) {
  expectUnchanged(
      "[ ] [ ] [ [ 1 1 1 ] ] [ 9 ] [ ] [ [ 1 0 0 ] ] [ 3 ] [ 5 ] "
      "[ 0 0 0 ] [ 0 -inf -inf ] [ inf 0 inf ]");
}

// The first row limits x, which has no upper bound, and by it y.
TEST(TightenBounds, NarrowsByWhatAnUnboundedVariableMayBe) {
  EXPECT_EQ(boundsOf("[ ] [ ] [ [ 1 -1 ] ] [ 0 ] [ ] [ [ 2 0 ] ] [ -inf ] [ 7 ] "
                     "[ 0 0 ] [ 0 0 ] [ inf 40 ]"),
            "[ 0 0 ] [ inf 3 ]");
}

TEST(TightenBounds, NarrowsNothingByARowOfTwoUnboundedVariables) {
  expectUnchanged(
      "[ ] [ ] [ [ 1 1 1 ] ] [ 9 ] [ ] [ ] [ ] [ ] [ 0 0 0 ] [ -inf 0 0 ] [ 40 inf 40 ]");
}

TEST(TightenBounds, LeavesAllWhereRowsContradictEachOther) {
  expectUnchanged(
      "[ ] [ ] [ [ 1 1 ] ] [ 6 ] [ ] [ [ 1 1 ] ] [ 7 ] [ inf ] [ 0 0 ] [ 0 0 ] [ 40 40 ]");
}

TEST(TightenBounds, LeavesAllWhereARowContradictsTheBounds) {
  expectUnchanged("[ ] [ ] [ [ 1 0 ] [ 0 2 ] ] [ 3 90 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 40 40 ]");
}

TEST(TightenBounds, LeavesAllWhereNoStepIsLeft) {
  expectUnchanged("[ ] [ ] [ [ 1 0 ] [ 0 4 ] ] [ 3 6 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 40 40 ]");
}

TEST(TightenBounds, LeavesAllWhereAZeroRowIsFalse) {
  expectUnchanged("[ ] [ ] [ [ 1 ] [ 0 ] ] [ 3 2 ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 40 ]");
}

TEST(TightenBounds, GoesOnBesideAZeroRowThatHolds) {
  EXPECT_EQ(boundsOf("[ ] [ ] [ [ 0 ] [ 1 ] ] [ 0 3 ] [ ] [ [ 0 ] ] [ -1 ] [ 0 ] [ 0 ] [ 0 ] "
                     "[ 40 ]"),
            "[ 3 ] [ 3 ]");
}

TEST(TightenBounds, LeavesAllWhereABoundIsNone) {
  const std::string rows = "[ ] [ ] [ [ 1 0 ] ] [ 3 ] [ ] [ ] [ ] [ ] [ 0 0 ] ";
  expectUnchanged(rows + "[ 0 inf ] [ 40 inf ]");
  expectUnchanged(rows + "[ 0 -inf ] [ 40 -inf ]");
  expectUnchanged(rows + "[ 0 0.2 ] [ 40 0.8 ]");
}

TEST(TightenBounds, LeavesAllWhereDecimalsAreNoSmallCount) {
  const std::string rows = "[ ] [ ] [ [ 1 0 ] ] [ 3 ] [ ] [ ] [ ] [ ] ";
  for (const char* places : {"-1", "0.5", "inf", "1001", "100001"})
    expectUnchanged(rows + "[ 0 " + places + " ] [ 0 0 ] [ 40 40 ]");
}

TEST(TightenBounds, LeavesARangeOfWhichMoreThanHalfIsLeft) {
  const std::string rows = "[ ] [ ] [ ] [ ] [ ] [ [ 1 ] ] [ -inf ] [ 20 ] [ 0 ] [ 0 ] ";
  EXPECT_EQ(boundsOf(rows + "[ 39 ]"), "[ 0 ] [ 39 ]");
  EXPECT_EQ(boundsOf(rows + "[ 40 ]"), "[ 0 ] [ 20 ]");
}

// x <= 30 isn't worth taking, but with x + 4 y >= 190 it leaves y at least 40, not 38.
TEST(TightenBounds, NarrowsByRangesThatAreNotTaken) {
  EXPECT_EQ(boundsOf("[ ] [ ] [ ] [ ] [ ] [ [ 1 0 ] [ 1 4 ] ] [ -inf 190 ] [ 30 inf ] "
                     "[ 0 0 ] [ 0 0 ] [ 40 60 ]"),
            "[ 0 40 ] [ 40 60 ]");
}

TEST(TightenBounds, IgnoresCongruences) {
  EXPECT_EQ(boundsOf("[ ] [ ] [ [ 1 0 ] [ 0 1 ] ] [ 3 3 ] [ 5 0 ] [ ] [ ] [ ] "
                     "[ 0 0 ] [ 0 0 ] [ 40 40 ]"),
            "[ 0 3 ] [ 40 3 ]");
}

TEST(TightenBounds, IgnoresTargets) {
  expectUnchanged(
      "[ 3 inf ] = [ 3 3 ] [ [ 1 ] [ -1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 40 ]");
}

TEST(TightenBounds, CountsConstantsBetweenTwoSteps) {
  EXPECT_EQ(boundsOf("[ ] [ ] [ ] [ ] [ ] [ [ 1 1 ] ] [ -inf ] [ 5.5 ] [ 0 0 ] "
                     "[ 0.75 0 ] [ 0.75 40 ]"),
            "[ 3/4 0 ] [ 3/4 4 ]");
}

TEST(TightenBounds, LeavesAllWhereConstantsContradictARow) {
  expectUnchanged(
      "[ ] [ ] [ [ 1 0 ] [ 0 1 ] ] [ 1 3 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0.75 0 ] "
      "[ 0.75 40 ]");
}

TEST(TightenBounds, FixesVariables) {
  EXPECT_EQ(boundsOf("[ ] [ ] [ [ 1 1 1 ] ] [ 0 ] [ ] [ ] [ ] [ ] [ 0 0 0 ] [ 0 0 0 ] [ 9 9 9 ]"),
            "[ 0 0 0 ] [ 0 0 0 ]");
}

TEST(TightenBounds, KeepsAllButTheBounds) {
  auto problem = problemFrom(
      "[ inf ] [ [ 1 2 ] ] [ [ 3 5 ] ] [ 31 ] [ 0 ] [ [ 1 -1 ] ] [ -inf ] [ 4 ] [ 0 1 ] [ 0 0 ] "
      "[ 99 99 ]");
  auto expected = problem;
  expected.lx = {QQ(0), test::q("1/5")};
  expected.rx = {QQ(10), test::q("31/5")};
  tightenBounds(problem);
  expected.lu[1] = QQ(-31, 5);
  EXPECT_EQ(fieldsText(problem), fieldsText(expected));
}

// Every round takes one step off both: x >= y + 1 and y >= x + 1 have no solution.
TEST(TightenBounds, EndsWhereRowsNarrowARangeStepByStep) {
  EXPECT_EQ(
      boundsOf("[ ] [ ] [ ] [ ] [ ] [ [ 1 -1 ] [ -1 1 ] ] [ 1 1 ] [ inf inf ] [ 0 0 ] [ 0 0 ] "
               "[ 1000000000 1000000000 ]"),
      "[ 0 0 ] [ 1000000000 1000000000 ]");
}

}  // namespace
}  // namespace starsift
