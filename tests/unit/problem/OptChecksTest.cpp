#include "problem/OptChecks.h"

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/OptText.h"
#include "support/fixtures/Problem.h"

namespace starsift {
namespace {

using test::OptText;

void parse(const OptText& items) {
  test::problemFrom(items.text());
}

TEST(OptChecks, ThresholdsAreAsManyAsTargets) {
  EXPECT_FAILS_WITH(parse({.kt = "= [ 1 2 3 ]"}),
                    "The dimensions of the target properties (kt, dt) differ (3, 1)");
}

TEST(OptChecks, EmptyThresholdsBehindTheSignAreTooFew) {
  EXPECT_FAILS_WITH(parse({.kt = "= [ ]"}),
                    "The dimensions of the target properties (kt, dt) differ (0, 1)");
}

TEST(OptChecks, TargetRowsAreAsManyAsGoals) {
  EXPECT_FAILS_WITH(parse({.At = "[ [ 1 2 ] [ 3 4 ] ]"}),
                    "The row count of At (2) differs with the dimension of dt (1)");
}

TEST(OptChecks, EquationsAreAsManyAsRightHandSides) {
  EXPECT_FAILS_WITH(parse({.bg = "[ 7 8 9 ]"}),
                    "The row count of Ag (1) differs with the dimension of bg (3)");
}

TEST(OptChecks, ModuliAreAsManyAsRightHandSides) {
  EXPECT_FAILS_WITH(parse({.qg = "[ 2 3 ]"}),
                    "The dimensions of the equation result properties (bg, qg) differ (1, 2)");
}

TEST(OptChecks, ModulusIsFinite) {
  EXPECT_FAILS_WITH(parse({.qg = "[ inf ]"}), "+-inf not allowed in qg");
}

TEST(OptChecks, ModulusIsNotMinusInfinityEither) {
  EXPECT_FAILS_WITH(parse({.qg = "[ -inf ]"}), "+-inf not allowed in qg");
}

TEST(OptChecks, ProblemWithoutRowsHasNoVariables) {
  EXPECT_FAILS_WITH(parse({.dt = "[ ]", .At = "[ ]", .Ag = "[ ]", .bg = "[ ]", .Au = "[ ]"}),
                    "Dimension error -- n == 0");
}

TEST(OptChecks, EmptyFileHasNoVariables) {
  EXPECT_FAILS_WITH(test::problemFrom(""), "Dimension error -- n == 0");
}

TEST(OptChecks, TargetRowsSayHowManyVariablesThereAre) {
  EXPECT_FAILS_WITH(parse({.At = "[ [ 1 2 3 ] ]"}),
                    "The column count of Ag (2) is not right ( != 3 )");
}

TEST(OptChecks, InequationsSayItWithoutTargets) {
  EXPECT_FAILS_WITH(parse({.dt = "[ ]", .At = "[ ]", .Au = "[ [ 1 -1 4 ] ]"}),
                    "The column count of Ag (2) is not right ( != 3 )");
}

TEST(OptChecks, InequationsHaveTheColumnsOfTheTargets) {
  EXPECT_FAILS_WITH(parse({.Au = "[ [ 1 ] ]"}), "The column count of Au (1) is not right ( != 2 )");
}

TEST(OptChecks, TargetRowsAreFinite) {
  EXPECT_FAILS_WITH(parse({.At = "[ [ 1 inf ] ]"}), "+-inf not allowed in At");
}

TEST(OptChecks, RightHandSidesAreFinite) {
  EXPECT_FAILS_WITH(parse({.bg = "[ -inf ]"}), "+-inf not allowed in bg");
}

TEST(OptChecks, EquationRowsAreFinite) {
  EXPECT_FAILS_WITH(parse({.Ag = "[ [ inf 1 ] ]"}), "+-inf not allowed in Ag");
}

TEST(OptChecks, InequationRowsAreFinite) {
  EXPECT_FAILS_WITH(parse({.Au = "[ [ 1 -inf ] ]"}), "+-inf not allowed in Au");
}

TEST(OptChecks, LowerBoundsAreAsManyAsInequations) {
  EXPECT_FAILS_WITH(parse({.lu = "[ ]"}),
                    "The row count of Au ( 1) differs with the dimension of lu / ru ( 0)");
}

TEST(OptChecks, UpperBoundsAreAsManyAsLowerOnes) {
  EXPECT_FAILS_WITH(parse({.ru = "[ 2 3 ]"}), "The dimensions of lu (1) and ru (2) differ");
}

TEST(OptChecks, UpperBoundOfAnInequationIsNotBelowItsLowerOne) {
  EXPECT_FAILS_WITH(parse({.lu = "[ 3 ]"}), "ru has to be >= lu in each of its components");
}

TEST(OptChecks, InequationWithoutBoundsIsUseless) {
  EXPECT_FAILS_WITH(parse({.ru = "[ inf ]"}), "Useless inequation -inf <= ... <= inf found");
}

TEST(OptChecks, UpperBoundsOfVariablesAreThere) {
  EXPECT_FAILS_WITH(parse({.rx = "[ ]"}), "The dimension of rx is zero or != 2");
}

TEST(OptChecks, UpperBoundsAreAsManyAsVariables) {
  EXPECT_FAILS_WITH(parse({.rx = "[ 5 5 5 ]"}), "The dimension of rx is zero or != 2");
}

TEST(OptChecks, LowerBoundsAreAsManyAsVariables) {
  EXPECT_FAILS_WITH(parse({.lx = "[ 0 ]"}),
                    "The dimensions of the solution properties (lx, rx, dx) differ (1, 2, 2)");
}

TEST(OptChecks, DecimalPlacesAreAsManyAsVariables) {
  EXPECT_FAILS_WITH(parse({.dx = "[ 0 0 0 ]"}),
                    "The dimensions of the solution properties (lx, rx, dx) differ (2, 2, 3)");
}

TEST(OptChecks, UpperBoundOfAVariableIsNotBelowItsLowerOne) {
  EXPECT_FAILS_WITH(parse({.lx = "[ 0 6 ]"}), "rx has to be >= lx in each of its components");
}

// The order of the checks: each file breaks two neighbours.

TEST(OptCheckOrder, ThresholdsBeforeTargetRows) {
  EXPECT_FAILS_WITH(parse({.kt = "= [ 1 2 ]", .At = "[ ]"}),
                    "The dimensions of the target properties (kt, dt) differ (2, 1)");
}

TEST(OptCheckOrder, TargetRowsBeforeAnythingIsReadBehindThem) {
  EXPECT_FAILS_WITH(parse({.At = "[ ]", .Ag = "[ [ x"}),
                    "The row count of At (0) differs with the dimension of dt (1)");
}

TEST(OptCheckOrder, EquationRowsBeforeModuli) {
  EXPECT_FAILS_WITH(parse({.bg = "[ 7 8 ]", .qg = "[ inf ]"}),
                    "The row count of Ag (1) differs with the dimension of bg (2)");
}

TEST(OptCheckOrder, CountOfModuliBeforeTheirValues) {
  EXPECT_FAILS_WITH(parse({.qg = "[ 1 inf ]"}),
                    "The dimensions of the equation result properties (bg, qg) differ (1, 2)");
}

TEST(OptCheckOrder, ModuliBeforeTheInequationsAreRead) {
  EXPECT_FAILS_WITH(parse({.qg = "[ inf ]", .Au = "[ [ x"}), "+-inf not allowed in qg");
}

TEST(OptCheckOrder, ColumnsOfEquationsBeforeThoseOfInequations) {
  EXPECT_FAILS_WITH(parse({.Ag = "[ [ 1 2 3 ] ]", .Au = "[ [ 1 ] ]"}),
                    "The column count of Ag (3) is not right ( != 2 )");
}

TEST(OptCheckOrder, ColumnsBeforeInfiniteEntries) {
  EXPECT_FAILS_WITH(parse({.At = "[ [ inf 2 ] ]", .Au = "[ [ 1 ] ]"}),
                    "The column count of Au (1) is not right ( != 2 )");
}

TEST(OptCheckOrder, EntriesOfTargetsBeforeRightHandSides) {
  EXPECT_FAILS_WITH(parse({.At = "[ [ inf 2 ] ]", .bg = "[ inf ]"}), "+-inf not allowed in At");
}

TEST(OptCheckOrder, EquationsRowByRow) {
  EXPECT_FAILS_WITH(parse({.Ag = "[ [ inf 1 ] [ 1 1 ] ]", .bg = "[ 1 inf ]"}),
                    "+-inf not allowed in Ag");
}

TEST(OptCheckOrder, RightHandSideBeforeItsRow) {
  EXPECT_FAILS_WITH(parse({.Ag = "[ [ 1 1 ] [ 1 inf ] ]", .bg = "[ 1 inf ]"}),
                    "+-inf not allowed in bg");
}

TEST(OptCheckOrder, EquationsBeforeInequations) {
  EXPECT_FAILS_WITH(parse({.Ag = "[ [ 1 inf ] ]", .Au = "[ [ 1 inf ] ]"}),
                    "+-inf not allowed in Ag");
}

TEST(OptCheckOrder, EntriesBeforeTheBoundsOfInequationsAreRead) {
  EXPECT_FAILS_WITH(parse({.Au = "[ [ 1 inf ] ]", .lu = "[ x"}), "+-inf not allowed in Au");
}

TEST(OptCheckOrder, CountOfLowerBoundsBeforeTheUpperOnesAreRead) {
  EXPECT_FAILS_WITH(parse({.lu = "[ 1 2 ]", .ru = "[ x"}),
                    "The row count of Au ( 1) differs with the dimension of lu / ru ( 2)");
}

TEST(OptCheckOrder, InequationsOneByOne) {
  EXPECT_FAILS_WITH(parse({.Au = "[ [ 1 1 ] [ 1 2 ] ]", .lu = "[ -inf 3 ]", .ru = "[ inf 2 ]"}),
                    "Useless inequation -inf <= ... <= inf found");
}

TEST(OptCheckOrder, BoundsOfInequationsBeforeTheVariablesAreRead) {
  EXPECT_FAILS_WITH(parse({.lu = "[ 3 ]", .dx = "[ x"}),
                    "ru has to be >= lu in each of its components");
}

TEST(OptCheckOrder, CountOfUpperBoundsBeforeThatOfLowerOnes) {
  EXPECT_FAILS_WITH(parse({.lx = "[ 0 ]", .rx = "[ 5 ]"}), "The dimension of rx is zero or != 2");
}

TEST(OptCheckOrder, CountsBeforeTheBoundsThemselves) {
  EXPECT_FAILS_WITH(parse({.dx = "[ 0 ]", .lx = "[ 6 0 ]"}),
                    "The dimensions of the solution properties (lx, rx, dx) differ (2, 2, 1)");
}

}  // namespace
}  // namespace starsift
