// The order of the steps towards normal form; the steps themselves are tested with the
// problem.
#include <gtest/gtest.h>

#include "lattice/YLattice.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/FreshConsole.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/ProblemFields.h"
#include "support/fixtures/RowsText.h"

namespace starsift {
namespace {

using test::failureText;
using test::problemFrom;
using test::q;
using test::rowsText;
using test::textOf;

template <class T>
class NormalFormOver : public test::FreshConsole {
 protected:
  /// Normalises the problem as a first call does; what the console shows of it.
  std::string normalise(const std::string& problem) {
    lattice.setProblem(problemFrom<T>(problem));
    return normaliseAgain(true, false);
  }
  std::string normaliseAgain(bool generate, bool force) {
    return test::FreshConsole::consoleOf([&] {
      lattice.normalise(generate ? TargetRange::find : TargetRange::omit,
                        force ? From::read : From::lifted);
    });
  }

  Lattice<T, long double> lattice;
};
using NumberTypes = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(NormalFormOver, NumberTypes);

// 2.5 x + y >= 3, x + y + z + w = 10, 0 <= 2 x - 3 y <= 100, goal z = 4, w = 3,
// x from 1 to 4.9, y in steps of a tenth from -inf to 2, z from 0 to 9: the example of
// docs/reduction.md.
constexpr const char* mixed =
    "[ 4 inf ] [ [ 0 0 1 0 ] [ 1 0 0 0 ] ] [ [ 1 1 1 1 ] ] [ 10 ] [ ] "
    "[ [ 2.5 1 0 0 ] [ 2 -3 0 0 ] ] [ 3 0 ] [ inf 100 ] "
    "[ 0 1 0 0 ] [ 1 -inf 0 3 ] [ 4.9 2 9 3 ]";

TYPED_TEST(NormalFormOver, AllStepsWorkTogether) {
  this->normalise(mixed);
  const auto& problem = this->lattice;
  // x, y negated in tenths, z, slack, two deviations.
  EXPECT_EQ(textOf(problem.lx), "[ 0 0 0 0 0 0 ]");
  EXPECT_EQ(textOf(problem.rx), "[ 3 inf 9 inf inf inf ]");
  EXPECT_EQ(textOf(problem.shift), "[ 1 -20 0 0 0 0 ]");
  ASSERT_EQ(problem.fixedVars.dimension(), 1);
  EXPECT_EQ(problem.fixedVars[1].left, 4);
  ASSERT_EQ(problem.swappedVars.dimension(), 1);
  EXPECT_EQ(problem.swappedVars[1], 2);
  EXPECT_EQ(textOf(problem.slackUnit), "[ 1 1 1 10 1 1 ]");
  EXPECT_EQ(rowsText(problem.Ag), "[ 10 -1 10 0 0 0 ] [ 25 -1 0 -1 0 0 ] [ 0 0 1 0 1 -1 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 40 -15 4 ]");
  // 20 x + 3 y' from 0 to 1000; with x from 1 and y' from -20 on nothing is tighter.
  EXPECT_EQ(rowsText(problem.Au), "[ 20 3 0 0 0 0 ]");
  EXPECT_EQ(textOf(problem.lu), "[ 40 ]");
  EXPECT_EQ(textOf(problem.ru), "[ 1040 ]");
  EXPECT_EQ(rowsText(problem.At), "[ 1 0 0 0 0 0 ] [ 0 0 0 0 1 1 ]");
  EXPECT_EQ(textOf(problem.atu), "[ 1 0 0 0 -1 -1 ]");
  EXPECT_TRUE(problem.lifted);
}

TYPED_TEST(NormalFormOver, ProblemAsReadStaysWhatStarsAreCheckedAgainst) {
  this->normalise(mixed);
  const Vanu<TypeParam>& asRead = this->lattice.file.problem();
  EXPECT_EQ(rowsText(asRead.At), "[ 0 0 1 0 ] [ 1 0 0 0 ]");
  EXPECT_EQ(textOf(asRead.dt), "[ 4 inf ]");
  EXPECT_EQ(asRead.Au.rowCount(), 2);
  EXPECT_FALSE(asRead.lifted);
  this->lattice.file.stars.resize(2, false);
  this->lattice.file.stars[1] =
      Star<TypeParam>{TypeParam(1), TypeParam(0), TypeParam(6), TypeParam(3)};
  this->lattice.file.stars[2] =
      Star<TypeParam>{TypeParam(2), TypeParam(1), TypeParam(4), TypeParam(3)};
  EXPECT_FALSE(this->lattice.checkStars());
  ASSERT_EQ(this->lattice.file.stars.dimension(), 1);
  EXPECT_EQ(this->lattice.file.stars[1][1], TypeParam(2));
  EXPECT_EQ(textOf(this->lattice.file.stars[1].targetValues), "[ 4 2 ]");
}

TYPED_TEST(NormalFormOver, LiftingHappensOnce) {
  this->normalise(mixed);
  const auto ag = rowsText(this->lattice.Ag);
  const auto lifted = rowsText(this->lattice.optOriginal.Ag);
  this->normaliseAgain(false, false);
  EXPECT_EQ(rowsText(this->lattice.Ag), ag);
  EXPECT_EQ(rowsText(this->lattice.optOriginal.Ag), lifted);
  this->normaliseAgain(true, false);
  EXPECT_EQ(rowsText(this->lattice.Ag), ag);
  EXPECT_EQ(rowsText(this->lattice.optOriginal.Ag), lifted);
}

TYPED_TEST(NormalFormOver, FirstCallLiftsWithoutBeingAskedToGenerate) {
  this->lattice.setProblem(problemFrom<TypeParam>(mixed));
  this->normaliseAgain(false, false);
  EXPECT_EQ(this->lattice.slackCount, 1);
  EXPECT_EQ(this->lattice.deviationCount, 2);
}

TYPED_TEST(NormalFormOver, ForceStartsFromTheProblemAsRead) {
  this->normalise("[ inf ] = [ 2 ] [ [ 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 5 ]");
  EXPECT_TRUE(this->lattice.atuValid);
  this->normaliseAgain(false, true);
  EXPECT_FALSE(this->lattice.atuValid);
  EXPECT_EQ(rowsText(this->lattice.At), "[ 1 ]");
}

TYPED_TEST(NormalFormOver, TargetRangeIsLookedForOnlyWhenGenerating) {
  const std::string problem =
      "[ inf ] = [ 2.5 ] [ [ 0.5 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 1 ] [ 9 ]";
  this->normalise(problem);
  EXPECT_TRUE(this->lattice.atuValid);
  // 5 to 9 halves, less the one half at the lower bound.
  EXPECT_EQ(this->lattice.ltu, TypeParam(4));
  EXPECT_EQ(this->lattice.rtu, TypeParam(8));
  this->lattice.setProblem(problemFrom<TypeParam>(problem));
  this->normaliseAgain(false, false);
  EXPECT_FALSE(this->lattice.atuValid);
}

TYPED_TEST(NormalFormOver, StateFlagsOfTheWorkingCopySurvive) {
  this->lattice.reactionsOff = true;
  this->lattice.trackingRestarted = true;
  this->normalise(mixed);
  EXPECT_TRUE(this->lattice.reactionsOff);
  EXPECT_TRUE(this->lattice.trackingRestarted);
  EXPECT_FALSE(this->lattice.optOriginal.reactionsOff);
  EXPECT_FALSE(this->lattice.optOriginal.trackingRestarted);
}

TYPED_TEST(NormalFormOver, UselessAndFakeInequationsAreReported) {
  EXPECT_EQ(this->normalise("[ ] [ ] [ ] [ ] [ ] [ [ 1 1 ] ] [ 3 ] [ 3 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]"),
            "|-> Fake inequation detected and transfered\n");
  EXPECT_EQ(rowsText(this->lattice.Ag), "[ 1 1 ]");
}

TYPED_TEST(NormalFormOver, DependentEquationsAreReportedAtTheHighestLevel) {
  const std::string problem =
      "[ ] [ ] [ [ 1 1 ] [ 2 2 ] ] [ 3 6 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";
  EXPECT_EQ(this->normalise(problem), "");
  EXPECT_EQ(rowsText(this->lattice.Ag), "[ 1 1 ]");
  this->lattice.params.verb = 2;
  EXPECT_EQ(this->normaliseAgain(false, false),
            "|-> el_dep_rows: use_exact_arithmetic = 0, dep_row_idx = 2\n"
            "|-> Linear dependencies detected and removed\n");
  this->lattice.params.verb = 0;
}

// The inequation x + y >= 10 with x, y <= 5 leaves one value.
TYPED_TEST(NormalFormOver, InequationTightenedToOneValueBecomesAnEquation) {
  EXPECT_EQ(
      this->normalise("[ ] [ ] [ [ 1 -1 ] ] [ 0 ] [ ] [ [ 1 1 ] [ 1 0 ] ] [ 10 1 ] [ 50 inf ] "
                      "[ 0 0 ] [ 0 0 ] [ 5 5 ]"),
      "|-> Fake inequation detected and transfered\n");
  EXPECT_EQ(rowsText(this->lattice.Ag), "[ 1 -1 0 ] [ 1 1 0 ] [ 1 0 -1 ]");
  EXPECT_EQ(textOf(this->lattice.bg), "[ 0 10 1 ]");
  EXPECT_EQ(this->lattice.Au.rowCount(), 0);
}

TYPED_TEST(NormalFormOver, LaterCallsRepeatTheReportsAtTheHighestLevelOnly) {
  const std::string reports = this->normalise(
      "[ ] [ ] [ [ 1 -1 1 ] ] [ 0 ] [ ] [ [ 1 1 0 ] ] [ 10 ] [ 50 ] [ 0 0 0 ] [ 0 0 -inf ] "
      "[ 5 5 2 ]");
  EXPECT_EQ(reports,
            "|-> Swapped half-free variable detected\n"
            "|-> Fake inequation detected and transfered\n");
  EXPECT_EQ(this->normaliseAgain(false, false), "");
  EXPECT_EQ(this->normaliseAgain(false, true), reports);
  this->lattice.params.verb = 2;
  EXPECT_EQ(this->normaliseAgain(false, false), reports);
  this->lattice.params.verb = 0;
}

TYPED_TEST(NormalFormOver, EquationsThatJoinLateMayMakeEquationsDependent) {
  this->normalise(
      "[ ] [ ] [ [ 2 2 ] ] [ 20 ] [ ] [ [ 1 1 ] ] [ 10 ] [ 50 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  EXPECT_EQ(rowsText(this->lattice.Ag), "[ 2 2 ]");
  EXPECT_EQ(textOf(this->lattice.bg), "[ 20 ]");
}

TYPED_TEST(NormalFormOver, CongruencesAreFreedOfDependentEquationsToo) {
  this->normalise(
      "[ ] [ ] [ [ 1 2 ] [ 1 1 ] [ 2 2 ] ] [ 3 4 8 ] [ 7 0 0 ] [ ] [ ] [ ] "
      "[ 0 0 ] [ 0 0 ] [ 5 5 ]");
  EXPECT_EQ(rowsText(this->lattice.Ag), "[ 1 2 7 ] [ 1 1 0 ]");
  EXPECT_EQ(textOf(this->lattice.qg), "[ 7 0 ]");
  EXPECT_EQ(textOf(this->lattice.shift), "[ 0 0 0 ]");
}

TYPED_TEST(NormalFormOver, EmptyMatricesHaveColumns) {
  this->normalise("[ ] [ ] [ ] [ ] [ ] [ [ 1 1 ] ] [ 0 ] [ 7 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  EXPECT_EQ(this->lattice.Ag.columnCount(), 2);
  EXPECT_EQ(this->lattice.At.columnCount(), 2);
  EXPECT_EQ(textOf(this->lattice.atu), "[ 0 0 ]");
}

TYPED_TEST(NormalFormOver, VariableWithOneValueAfterRoundingIsFixed) {
  this->normalise("[ ] [ ] [ ] [ ] [ ] [ [ 1 1 ] ] [ 0 ] [ 7 ] [ 0 0 ] [ 0.5 0 ] [ 1.5 5 ]");
  ASSERT_EQ(this->lattice.fixedVars.dimension(), 1);
  EXPECT_EQ(this->lattice.fixedVars[1].right, TypeParam(1));
  EXPECT_EQ(rowsText(this->lattice.Au), "[ 1 ]");
}

TYPED_TEST(NormalFormOver, ImpossibleProblemsEndTheRun) {
  const std::string variables = " [ 0 ] [ 0 ] [ 5 ]";
  EXPECT_FAILS_WITH(this->normalise("[ ] [ ] [ ] [ ] [ ] [ [ 1 ] ] [ inf ] [ inf ]" + variables),
                    "Unfulfillable infinite inequation detected --> NO SOLUTIONS!");
  EXPECT_EXIT(this->normalise("[ ] [ ] [ ] [ ] [ ] [ [ 1 ] ] [ 6 ] [ 7 ]" + variables),
              testing::ExitedWithCode(1),
              testing::StrEq(": Inequality #1, this->lu = 6, this->ru = 5\n" +
                             failureText("Unfulfillable inequality detected --> NO SOLUTIONS!")));
  EXPECT_EXIT(this->normalise("[ ] [ ] [ [ 1 ] ] [ 6 ] [ ] [ ] [ ] [ ]" + variables),
              testing::ExitedWithCode(1),
              testing::StrEq(": Equality #1, lg = 0, this->bg = 6, rg = 5\n" +
                             failureText("Unfulfillable equality detected --> NO SOLUTIONS!")));
  EXPECT_FAILS_WITH(
      this->normalise("[ ] [ ] [ [ 1 ] ] [ 1 ] [ ] [ ] [ ] [ ] [ 0 ] [ 0.1 ] [ 0.9 ]"),
      "sol bounds error");
}

TYPED_TEST(NormalFormOver, AssignmentTakesTheNormalFormAlong) {
  this->normalise(mixed);
  Lattice<QQ, long double> copy;
  copy.assignFrom(this->lattice, Settings::copy);
  EXPECT_EQ(textOf(copy.slackUnit), "[ 1 1 1 10 1 1 ]");
  EXPECT_EQ(textOf(copy.shift), "[ 1 -20 0 0 0 0 ]");
  EXPECT_EQ(rowsText(copy.file.problem().At), "[ 0 0 1 0 ] [ 1 0 0 0 ]");
  copy.release();
  EXPECT_EQ(copy.file.problem().At.rowCount(), 0);
}

// x is a constant between two steps, y has none of its own.
TYPED_TEST(NormalFormOver, ConstantOffTheGridKeepsItsValue) {
  this->normalise("[ ] [ ] [ [ 2 1 ] ] [ 3 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0.5 0 ] [ 0.5 5 ]");
  EXPECT_EQ(this->lattice.fixedVars[1].right, problemFrom<TypeParam>("[ 0.5 ] [ [ 1 ] ] [ ] [ ] "
                                                                     "[ ] [ ] [ ] [ ] [ 0 ] [ 0 ] "
                                                                     "[ 1 ]")
                                                  .dt[1]);
  EXPECT_EQ(textOf(this->lattice.bg), "[ 2 ]");
}

TEST(NormalForm, BoundsAreTightenedBeforeTheProblemIsLifted) {
  Lattice<QQ, long double> lattice;
  lattice.setProblem(problemFrom("[ ] [ ] [ ] [ ] [ ] [ [ 1 ] ] [ 2 ] [ 3 ] [ 0 ] [ 0 ] [ 100 ]"));
  lattice.tightenBounds();
  lattice.normalise(TargetRange::find, From::lifted);
  EXPECT_EQ(lattice.rx[1], QQ(1));
  // Stars are judged by what was read.
  EXPECT_EQ(lattice.file.problem().rx[1], QQ(100));
  EXPECT_FAILS_WITH(lattice.tightenBounds(), "tightenBounds: the problem is normalised");
}

TEST(NormalForm, StepThatThrowsLeavesTheProblemAsRead) {
  Lattice<long double, long double> lattice;
  lattice.setProblem(problemFrom<long double>(
      "[ inf inf ] [ [ 600000000 ] [ 600000000 ] ] [ ] [ ] [ ] [ [ 1 ] ] [ 1 ] [ inf ] "
      "[ 0 ] [ 0 ] [ 9 ]"));
  const std::string before = test::fieldsText(lattice.file.problem());
  EXPECT_THROW(lattice.normalise(TargetRange::find, From::lifted), PrecisionException);
  EXPECT_FALSE(lattice.optOriginal.rx.isSet());
  EXPECT_EQ(test::fieldsText(lattice.file.problem()), before);
}

}  // namespace
}  // namespace starsift
