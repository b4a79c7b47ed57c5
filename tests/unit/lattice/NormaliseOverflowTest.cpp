// Numbers that leave the safe range of long double on the way to normal form: each is
// noticed where it arises, and the wrapper repeats the work over rationals.
#include <gtest/gtest.h>

#include "lattice/YLattice.h"
#include "problem/IntegerRows.h"
#include "support/fixtures/FreshConsole.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/ProblemFields.h"

namespace starsift {
namespace {

using test::fieldsText;
using test::problemFrom;

struct OverflowCase {
  /// The step and what overflows in it.
  const char* name;
  const char* message;
  const char* problem;
};

void PrintTo(const OverflowCase& overflow, std::ostream* stream) {
  *stream << overflow.message << " of " << overflow.problem;
}

class NormaliseOverflow : public test::FreshConsole,
                          public testing::WithParamInterface<OverflowCase> {};

/// The message of the PrecisionException that `step` throws.
template <class Step>
std::string lossOf(Step step) {
  try {
    step();
  } catch (const PrecisionException& exception) {
    return exception.message();
  }
  return "";
}

TEST_P(NormaliseOverflow, IsNoticedInLongDouble) {
  Lattice<long double, long double> lattice;
  lattice.setProblem(problemFrom<long double>(GetParam().problem));
  EXPECT_EQ(lossOf([&lattice] { lattice.normalise(TargetRange::find, From::lifted); }),
            GetParam().message);
}

TEST_P(NormaliseOverflow, IsRepeatedOverRationals) {
  Lattice<QQ, long double> exact;
  exact.setProblem(problemFrom<QQ>(GetParam().problem));
  consoleOf([&exact] { exact.normalise(TargetRange::find, From::lifted); });
  YLattice<long double> lattice;
  lattice.standard().setProblem(problemFrom<long double>(GetParam().problem));
  consoleOf([&lattice] { lattice.normalise(TargetRange::find, From::lifted); });
  lattice.withLive([&exact](const auto& live) {
    EXPECT_EQ(fieldsText(live), fieldsText(exact));
    EXPECT_EQ(fieldsText(live.optOriginal), fieldsText(exact.optOriginal));
    EXPECT_EQ(fieldsText(live.file.problem()), fieldsText(exact.file.problem()));
  });
}

INSTANTIATE_TEST_SUITE_P(
    AllSteps, NormaliseOverflow,
    testing::Values(
        OverflowCase{"FixedVariablesBg", "bg overflow",
                     "[ ] [ ] [ [ 100000 -1 ] ] [ 7 ] [ ] [ ] [ ] [ ] "
                     "[ 0 0 ] [ 100000 0 ] [ 100000 inf ]"},
        OverflowCase{"FixedVariablesLu", "lu overflow",
                     "[ ] [ ] [ ] [ ] [ ] [ [ 100000 -1 ] ] [ 0 ] [ 7 ] "
                     "[ 0 0 ] [ 100000 0 ] [ 100000 inf ]"},
        OverflowCase{"FixedVariablesRu", "ru overflow",
                     "[ ] [ ] [ ] [ ] [ ] [ [ 100000 1 ] ] [ 10000000000 ] [ 40000000000 ] "
                     "[ 0 0 ] [ 100000 0 ] [ 100000 inf ]"},
        OverflowCase{"FixedVariablesLtu", "ltu overflow",
                     "[ inf ] = [ 0 ] [ [ 100000 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] "
                     "[ 0 0 ] [ 100000 0 ] [ 100000 9 ]"},
        OverflowCase{"FixedVariablesRtu", "rtu overflow",
                     "[ inf ] = [ 10000000000 ] [ [ 100000 1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] "
                     "[ 0 0 ] [ 100000 0 ] [ 100000 30000000000 ]"},
        OverflowCase{"DecimalVariablesStepsOfBounds", "data overflow",
                     "[ ] [ ] [ [ 1 1 ] ] [ 7 ] [ ] [ ] [ ] [ ] [ 0 10 ] [ 0 0 ] [ 9 9 ]"},
        OverflowCase{"DecimalVariablesSteps", "data overflow",
                     "[ ] [ ] [ [ 1 1 ] ] [ 7 ] [ ] [ ] [ ] [ ] [ 0 10 ] [ 0 -inf ] [ 9 inf ]"},
        OverflowCase{"DecimalVariablesEntry", "data overflow",
                     "[ ] [ ] [ [ 1 20000000000 ] ] [ 7 ] [ ] [ ] [ ] [ ] "
                     "[ 0 1 ] [ 0 -inf ] [ 9 inf ]"},
        OverflowCase{"DecimalVariablesRx", "rx overflow",
                     "[ ] [ ] [ [ 1 1 ] ] [ 7 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 2000000000 ]"},
        OverflowCase{"DecimalVariablesRxInSteps", "rx overflow",
                     "[ ] [ ] [ [ 1 1 ] ] [ 7 ] [ ] [ ] [ ] [ ] [ 0 1 ] [ 0 0 ] [ 9 200000000 ]"},
        OverflowCase{"DecimalVariablesLx", "lx overflow",
                     "[ ] [ ] [ [ 1 1 ] ] [ 7 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 -2000000000 ] [ 9 9 ]"},
        OverflowCase{"TargetRowsFactor", "iMFFT overflow",
                     "[ inf ] [ [ 1 0.0000000001 ] ] [ ] [ ] [ ] [ ] [ ] [ ] "
                     "[ 0 0 ] [ 0 0 ] [ 9 9 ]"},
        OverflowCase{"TargetRowsFactorOfSeveral", "iMFFT overflow",
                     "[ inf inf ] [ [ 0.000000001 1 ] [ 1 0.0009765625 ] ] [ ] [ ] [ ] [ ] [ ] [ ] "
                     "[ 0 0 ] [ 0 0 ] [ 9 9 ]"},
        OverflowCase{"EquationRowsFactor", "iMF overflow2",
                     "[ ] [ ] [ [ 1 0.0000000001 ] ] [ 7 ] [ ] [ ] [ ] [ ] "
                     "[ 0 0 ] [ 0 0 ] [ 9 9 ]"},
        OverflowCase{"InequationRowsFactor", "iMF overflow3",
                     "[ ] [ ] [ ] [ ] [ ] [ [ 1 0.0000000001 ] ] [ 0 ] [ 7 ] "
                     "[ 0 0 ] [ 0 0 ] [ 9 9 ]"},
        OverflowCase{"EquationRowsEntry", "Ag iMF overflow",
                     "[ ] [ ] [ [ 500000000 0.1 ] ] [ 7 ] [ ] [ ] [ ] [ ] "
                     "[ 0 0 ] [ 0 0 ] [ 9 inf ]"},
        OverflowCase{"EquationRowsValue", "bg iMF overflow",
                     "[ ] [ ] [ [ 1 0.1 ] ] [ 500000000 ] [ ] [ ] [ ] [ ] "
                     "[ 0 0 ] [ 0 0 ] [ 9 inf ]"},
        OverflowCase{"InequationRowsEntry", "Au iMF overflow",
                     "[ ] [ ] [ ] [ ] [ ] [ [ 500000000 0.1 ] ] [ 0 ] [ 7 ] "
                     "[ 0 0 ] [ 0 0 ] [ 9 9 ]"},
        OverflowCase{"InequationRowsLower", "lu iMF overflow",
                     "[ ] [ ] [ ] [ ] [ ] [ [ 1 0.1 ] ] [ -500000000 ] [ 7 ] "
                     "[ 0 0 ] [ 0 0 ] [ 9 9 ]"},
        OverflowCase{"InequationRowsUpper", "ru iMF overflow",
                     "[ ] [ ] [ ] [ ] [ ] [ [ 1 0.1 ] ] [ 0 ] [ 500000000 ] "
                     "[ 0 0 ] [ 0 0 ] [ 9 9 ]"},
        OverflowCase{"TargetRowsEntry", "At iMFFT overflow",
                     "[ inf ] [ [ 500000000 0.1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] "
                     "[ 0 0 ] [ 0 0 ] [ 9 9 ]"},
        OverflowCase{"TargetRowsThreshold", "kt iMFFT overflow",
                     "[ inf ] = [ 500000000 ] [ [ 1 0.1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] "
                     "[ 0 0 ] [ 0 0 ] [ 9 9 ]"},
        OverflowCase{"TargetRowsLtu", "ltu iMFFT overflow",
                     "[ inf inf ] = [ 100000000 100000000 ] [ [ 1 0.1 ] [ 1 0 ] ] "
                     "[ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 900000000 9 ]"},
        OverflowCase{"TargetRowsRtu", "rtu iMFFT overflow",
                     "[ inf ] = [ 0 ] [ [ 1 0.1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] "
                     "[ 0 0 ] [ 0 0 ] [ 500000000 9 ]"},
        OverflowCase{"Aggregate", "atu overflow",
                     "[ inf inf ] [ [ 600000000 ] [ 600000000 ] ] [ ] [ ] [ ] [ ] [ ] [ ] "
                     "[ 0 ] [ 0 ] [ 9 ]"},
        OverflowCase{"RowsOfInequations", "llu overflow",
                     "[ ] [ ] [ ] [ ] [ ] [ [ 100000 100000 ] ] [ 0 ] [ 7 ] "
                     "[ 0 0 ] [ 0 0 ] [ 9 100000 ]"},
        OverflowCase{"RowsOfEquations", "llu overflow",
                     "[ ] [ ] [ [ 100000 100000 ] ] [ 700000 ] [ ] [ ] [ ] [ ] "
                     "[ 0 0 ] [ 0 0 ] [ 9 100000 ]"},
        OverflowCase{"ShiftBg", "bg overflow",
                     "[ ] [ ] [ [ 1 -100000 ] ] [ 7 ] [ ] [ ] [ ] [ ] "
                     "[ 0 0 ] [ 0 100000 ] [ inf inf ]"},
        OverflowCase{"ShiftLu", "lu overflow",
                     "[ ] [ ] [ ] [ ] [ ] [ [ 1 -100000 ] ] [ 0 ] [ 7 ] "
                     "[ 0 0 ] [ 0 100000 ] [ inf inf ]"},
        OverflowCase{"ShiftRu", "ru overflow",
                     "[ ] [ ] [ ] [ ] [ ] [ [ 1 -100000 ] ] [ -10000000000 ] [ 7 ] "
                     "[ 0 0 ] [ 0 100000 ] [ inf inf ]"},
        OverflowCase{"ShiftLtu", "ltu overflow",
                     "[ inf ] = [ -20000000000 ] [ [ -100000 ] ] [ ] [ ] [ ] [ ] [ ] [ ] "
                     "[ 0 ] [ 100000 ] [ 200000 ]"},
        OverflowCase{"ShiftRtu", "rtu overflow",
                     "[ inf ] = [ 0 ] [ [ 100000 ] ] [ ] [ ] [ ] [ ] [ ] [ ] "
                     "[ 0 ] [ -1 ] [ 100000 ]"},
        OverflowCase{"DependentRows", "row overflow",
                     "[ ] [ ] [ [ 2000000000 1 ] ] [ 7 ] [ ] [ ] [ ] [ ] "
                     "[ 0 0 ] [ 0 0 ] [ inf inf ]"},
        OverflowCase{"DependentRowsModulus", "row overflow",
                     "[ ] [ ] [ [ 1 1 ] ] [ 7 ] [ 2000000000 ] [ ] [ ] [ ] "
                     "[ 0 0 ] [ 0 0 ] [ inf inf ]"}),
    [](const testing::TestParamInfo<OverflowCase>& which) {
      return std::string(which.param.name);
    });

/// Integer rows of the problem as read, without lifting: finite goals are still there.
struct MakeIntegerRows {
  template <class SomeLattice>
  void operator()(SomeLattice& lattice) const {
    auto& problem = static_cast<std::remove_reference_t<decltype(lattice.optOriginal)>&>(lattice);
    problem = lattice.file.problem();
    toIntegerRows(problem);
  }
};

constexpr const char* longGoal =
    "[ 500000000 ] = [ 1 ] [ [ 1 0.1 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 9 ]";

TEST(NormaliseOverflowOfGoals, IsNoticedInLongDouble) {
  Lattice<long double, long double> lattice;
  lattice.setProblem(problemFrom<long double>(longGoal));
  EXPECT_EQ(lossOf([&lattice] { MakeIntegerRows()(lattice); }), "dt iMFFT overflow");
}

TEST(NormaliseOverflowOfGoals, IsRepeatedOverRationals) {
  YLattice<long double> lattice;
  lattice.standard().setProblem(problemFrom<long double>(longGoal));
  lattice.runStep(MakeIntegerRows());
  lattice.withLive([](const auto& live) {
    EXPECT_EQ(test::textOf(live.dt), "[ 5e+09 ]");
    EXPECT_EQ(test::rowsText(live.At), "[ 10 1 ]");
  });
}

// Products and quotients that long double would round, one for each step that meets
// fractions, are exact all the same.
class NormaliseExactly : public test::FreshConsole,
                         public testing::WithParamInterface<const char*> {};

TEST_P(NormaliseExactly, GivesTheNormalFormOfTheExactLattice) {
  Lattice<QQ, long double> exact;
  exact.setProblem(problemFrom<QQ>(GetParam()));
  consoleOf([&exact] { exact.normalise(TargetRange::find, From::lifted); });
  YLattice<long double> lattice;
  lattice.standard().setProblem(problemFrom<long double>(GetParam()));
  consoleOf([&lattice] { lattice.normalise(TargetRange::find, From::lifted); });
  lattice.withLive([&exact](const auto& live) { EXPECT_EQ(fieldsText(live), fieldsText(exact)); });
}

INSTANTIATE_TEST_SUITE_P(
    Decimals, NormaliseExactly,
    testing::Values("[ inf ] [ [ 0.7 0.3 ] ] [ [ 0.1 0.7 ] ] [ 0.8 ] [ ] [ ] [ ] [ ] "
                    "[ 2 2 ] [ 0.07 0.29 ] [ 8.07 8.29 ]",
                    "[ ] [ ] [ [ 0.1 0.7 1 ] ] [ 2.1 ] [ ] [ [ 0.3 0.6 1 ] ] [ 0.9 ] [ 1.8 ] "
                    "[ 0 0 0 ] [ 3 0.1 0 ] [ 3 0.1 9 ]",
                    "[ 0.3 inf ] [ [ 0.125 0.1 ] [ 0.7 0.7 ] ] [ ] [ ] [ ] [ [ 0.1 0.2 ] ] [ 0.3 ] "
                    "[ inf ] [ 1 0 ] [ 0 0 ] [ 1.1 9 ]",
                    // 1/3 is no decimal.
                    "[ inf ] [ [ 0.3 1 ] ] [ [ 3 1 ] ] [ 9 ] [ ] [ ] [ ] [ ] "
                    "[ 3 3 ] [ 0.333333333333333333 0 ] [ 7 9 ]"));

}  // namespace
}  // namespace starsift
