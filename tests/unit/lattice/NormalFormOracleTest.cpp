// A normal form worked out by hand: the lattice comes to it, the oracle of normal forms
// accepts it and nothing beside it.
#include <gtest/gtest.h>

#include <functional>
#include <ostream>

#include "lattice/Lattice.h"
#include "support/generators/NormalFormGenerators.h"
#include "support/oracles/NormalFormOracle.h"

namespace starsift {
namespace {

using oracle::Bound;
using oracle::Equation;
using oracle::PlainRecord;
using oracle::Point;
using oracle::Problem;

const Bound plusInfinity{1, 0};
const Bound minusInfinity{-1, 0};

mpq_class fraction(int numerator, int denominator) {
  return {numerator, denominator};
}

/// Four variables: 1..4, tenths in 1/20..2/5, the constant 1/2, up to 2.
Problem exampleProblem() {
  Problem problem;
  problem.targets = {{{0, 1}, {fraction(1, 2), 0, 0, -1}},
                     {plusInfinity, {1, fraction(1, 2), 0, 0}}};
  problem.equations = {{{1, 0, 0, 1}, 0, 2}, {{1, 10, 0, 0}, 5, 0}};
  problem.inequations = {{{fraction(1, 2), 0, 0, -1}, {0, fraction(1, 2)}, plusInfinity},
                         {{1, 0, 1, 0}, {0, 0}, {0, 3}}};
  problem.lower = {{0, 1}, {0, fraction(1, 20)}, {0, fraction(1, 2)}, minusInfinity};
  problem.upper = {{0, 4}, {0, fraction(2, 5)}, {0, fraction(1, 2)}, {0, 2}};
  problem.decimals = {0, 1, 0, 0};
  return problem;
}

/// Its normal form over x0 - 1, 10 x1 - 1, 2 - x3, a slack and two deviations in halves,
/// and the column of the modulus.
PlainRecord exampleForm() {
  PlainRecord form;
  form.targets = {{plusInfinity, {20, 1, 0, 0, 0, 0}}, {minusInfinity, {0, 0, 0, 0, 10, 10}}};
  form.thresholds = {plusInfinity, minusInfinity};
  form.aggregate = {20, 1, 0, 0, -10, -10};
  form.equations = {{{1, 0, -1, 0, 0, 0, 2}, -3, 2},
                    {{1, 1, 0, 0, 0, 0, 0}, 3, 0},
                    {{1, 0, 2, -1, 0, 0, 0}, 4, 0},
                    {{1, 0, 2, 0, 1, -1, 0}, 5, 0}};
  form.inequations = {{{1, 0, 0, 0, 0, 0, 0}, {0, 0}, {0, 1}}};
  form.decimals = {0, 1, 0, 0, 0, 0};
  form.lower = std::vector<Bound>(6, {0, 0});
  form.upper = {{0, 3}, {0, 3}, plusInfinity, plusInfinity, plusInfinity, plusInfinity};
  form.kinds = {FreedomDegree::bounded,   FreedomDegree::bounded,   FreedomDegree::rightFree,
                FreedomDegree::rightFree, FreedomDegree::rightFree, FreedomDegree::rightFree};
  form.shift = {1, 1, -2, 0, 0, 0, 0};
  form.units = {1, 1, 1, 2, 2, 2};
  form.fixed = {{2, fraction(1, 2)}};
  form.swapped = {2};
  form.slacks = 1;
  form.deviations = 2;
  form.lifted = true;
  form.targetColumns = 6;
  form.equationColumns = 7;
  form.inequationColumns = 7;
  return form;
}

/// One target to maximise with a threshold, one variable of 0..3.
Problem rangedProblem() {
  Problem problem;
  problem.targets = {{plusInfinity, {fraction(1, 2)}}};
  problem.thresholds = {{0, fraction(1, 3)}};
  problem.lower = {{0, 0}};
  problem.upper = {{0, 3}};
  return problem;
}

/// Its normal form: everything times 6.
PlainRecord rangedForm() {
  PlainRecord form;
  form.targets = {{plusInfinity, {3}}};
  form.thresholds = {{0, 2}};
  form.hasTargetRange = true;
  form.least = 2;
  form.greatest = 9;
  form.aggregate = {3};
  form.decimals = {0};
  form.lower = {{0, 0}};
  form.upper = {{0, 3}};
  form.kinds = {FreedomDegree::bounded};
  form.shift = {0};
  form.units = {1};
  form.lifted = true;
  form.targetColumns = form.equationColumns = form.inequationColumns = 1;
  return form;
}

/// The normal form that the lattice comes to.
PlainRecord latticeForm(const Problem& problem) {
  Lattice<QQ, long double> lattice;
  lattice.setProblem(test::SmallProblem{problem, true}.record());
  lattice.normalise(TargetRange::find, From::lifted);
  return oracle::plainRecord(lattice);
}

/// The example after `damage`.
PlainRecord damaged(const std::function<void(PlainRecord&)>& damage) {
  PlainRecord form = exampleForm();
  damage(form);
  return form;
}

bool hasOtherSolutions(const PlainRecord& form) {
  const Problem problem = exampleProblem();
  return oracle::firstDifference(problem, form, test::pointsAround(problem)).has_value();
}

std::string formFaults(const PlainRecord& form) {
  return oracle::formFaults(exampleProblem(), form);
}

std::string targetFaults(const PlainRecord& form) {
  const Problem problem = exampleProblem();
  return oracle::targetFaults(problem, form, test::pointsAround(problem));
}

std::string unitFaults(const PlainRecord& form) {
  const Problem problem = exampleProblem();
  return oracle::unitFaults(problem, form, test::pointsAround(problem));
}

std::string rangeFaults(const PlainRecord& form) {
  const Problem problem = rangedProblem();
  return oracle::rangeFaults(problem, form, test::pointsAround(problem));
}

TEST(NormalFormOracle, AcceptsTheFormWorkedOutByHand) {
  EXPECT_FALSE(hasOtherSolutions(exampleForm()));
  EXPECT_EQ(formFaults(exampleForm()), "");
  EXPECT_EQ(targetFaults(exampleForm()), "");
  EXPECT_EQ(unitFaults(exampleForm()), "");
}

TEST(NormalFormOracle, AcceptsTheRangeWorkedOutByHand) {
  EXPECT_EQ(oracle::formFaults(rangedProblem(), rangedForm()), "");
  EXPECT_EQ(rangeFaults(rangedForm()), "");
}

TEST(NormalFormOracle, AgreesWithTheLattice) {
  const PlainRecord form = latticeForm(exampleProblem());
  EXPECT_EQ(oracle::recordText(form), oracle::recordText(exampleForm()));
  EXPECT_TRUE(form == exampleForm());
}

TEST(NormalFormOracle, AgreesWithTheLatticeOnARange) {
  const PlainRecord form = latticeForm(rangedProblem());
  EXPECT_EQ(oracle::recordText(form), oracle::recordText(rangedForm()));
  EXPECT_TRUE(form == rangedForm());
}

TEST(NormalFormOracle, TellsSolutionsFromOtherPoints) {
  const Problem problem = exampleProblem();
  const mpq_class half(1, 2);
  EXPECT_TRUE(oracle::solves(problem, {1, fraction(2, 5), half, -1}));
  EXPECT_FALSE(oracle::solves(problem, {1, fraction(2, 5), half, 0})) << "the congruence";
  EXPECT_FALSE(oracle::solves(problem, {1, fraction(2, 5), half, 1})) << "the slack";
  EXPECT_FALSE(oracle::solves(problem, {2, fraction(2, 5), half, -2})) << "the equation";
  EXPECT_FALSE(oracle::solves(problem, {3, fraction(1, 5), half, -1})) << "the two bounds";
  EXPECT_FALSE(oracle::solves(problem, {1, fraction(2, 5), 1, -1})) << "the constant";
  EXPECT_FALSE(oracle::solves(problem, {0, half, half, -2})) << "the box";
  EXPECT_FALSE(oracle::solves(problem, {half, fraction(9, 20), half, -half})) << "the steps";
}

TEST(NormalFormOracle, FindsTheImageOfAPoint) {
  const Point x{1, fraction(2, 5), fraction(1, 2), -1};
  EXPECT_TRUE(oracle::image(exampleForm(), x) == Point({0, 3, 3, 2, 0, 1, 0}));
}

TEST(NormalFormOracle, FindsNoImageOfAnotherConstant) {
  EXPECT_FALSE(oracle::image(exampleForm(), {1, fraction(2, 5), 1, -1}));
}

TEST(NormalFormOracle, FindsNoImageWithANegativeSlack) {
  EXPECT_FALSE(oracle::image(exampleForm(), {1, fraction(2, 5), fraction(1, 2), 1}));
}

TEST(NormalFormOracle, FindsNoImageBesideTheCongruence) {
  EXPECT_FALSE(oracle::image(exampleForm(), {1, fraction(2, 5), fraction(1, 2), -2}));
}

TEST(NormalFormOracle, RefusesWhatIsNoInteger) {
  EXPECT_FALSE(oracle::satisfies(rangedForm(), {fraction(1, 2)}));
}

TEST(NormalFormOracle, NoticesAnotherRightHandSide) {
  EXPECT_TRUE(hasOtherSolutions(damaged([](auto& form) { form.equations[1].value += 1; })));
}

TEST(NormalFormOracle, NoticesAnotherRightHandSideOfACongruence) {
  EXPECT_TRUE(hasOtherSolutions(damaged([](auto& form) { form.equations[0].value += 1; })));
}

TEST(NormalFormOracle, NoticesAnotherCoefficient) {
  EXPECT_TRUE(hasOtherSolutions(damaged([](auto& form) { form.equations[1].row[1] += 1; })));
}

TEST(NormalFormOracle, NoticesAnotherModulus) {
  EXPECT_TRUE(hasOtherSolutions(damaged([](auto& form) { form.equations[0].row[6] = 3; })));
}

TEST(NormalFormOracle, NoticesAMissingEquation) {
  EXPECT_TRUE(hasOtherSolutions(
      damaged([](auto& form) { form.equations.erase(form.equations.begin() + 1); })));
}

TEST(NormalFormOracle, NoticesATighterInequation) {
  EXPECT_TRUE(hasOtherSolutions(damaged([](auto& form) { form.inequations[0].lower.value = 1; })));
}

TEST(NormalFormOracle, NoticesAWiderInequation) {
  EXPECT_TRUE(hasOtherSolutions(damaged([](auto& form) { form.inequations[0].upper.value = 2; })));
}

TEST(NormalFormOracle, NoticesATighterVariable) {
  EXPECT_TRUE(hasOtherSolutions(damaged([](auto& form) { form.upper[1].value = 2; })));
}

TEST(NormalFormOracle, NoticesAWiderVariable) {
  EXPECT_TRUE(hasOtherSolutions(damaged([](auto& form) {
    form.lower[0] = form.inequations[0].lower = {0, -1};
    form.upper[1].value = 4;
  })));
}

TEST(NormalFormOracle, NoticesAnotherSlack) {
  EXPECT_TRUE(hasOtherSolutions(damaged([](auto& form) { form.equations[2].value += 9; })));
}

TEST(NormalFormOracle, NoticesAnotherShift) {
  EXPECT_TRUE(hasOtherSolutions(damaged([](auto& form) { form.shift[2] -= 1; })));
}

TEST(NormalFormOracle, NoticesAForgottenSwap) {
  EXPECT_TRUE(hasOtherSolutions(damaged([](auto& form) { form.swapped.clear(); })));
}

TEST(NormalFormOracle, NoticesForgottenDecimals) {
  EXPECT_TRUE(hasOtherSolutions(damaged([](auto& form) { form.decimals[1] = 0; })));
}

TEST(NormalFormOracle, NoticesAnotherConstant) {
  EXPECT_TRUE(hasOtherSolutions(damaged([](auto& form) { form.fixed[0].second = 1; })));
}

TEST(NormalFormOracle, NoticesAnotherTarget) {
  EXPECT_NE(targetFaults(damaged([](auto& form) { form.targets[0].row[1] += 1; })), "");
}

TEST(NormalFormOracle, NoticesAnotherGoal) {
  EXPECT_NE(targetFaults(damaged([](auto& form) { form.equations[3].value += 1; })), "");
}

TEST(NormalFormOracle, NoticesAnotherWeightOfADeviation) {
  EXPECT_NE(targetFaults(damaged([](auto& form) { form.targets[1].row[5] = 20; })), "");
}

TEST(NormalFormOracle, NoticesAnotherUnitOfASlack) {
  EXPECT_NE(unitFaults(damaged([](auto& form) { form.units[3] = 1; })), "");
}

TEST(NormalFormOracle, NoticesAnotherUnitOfADeviation) {
  EXPECT_NE(unitFaults(damaged([](auto& form) { form.units[5] = 1; })), "");
}

TEST(NormalFormOracle, NoticesAnotherEndOfTheRange) {
  PlainRecord least = rangedForm();
  least.least += 1;
  EXPECT_NE(rangeFaults(least), "");
  PlainRecord greatest = rangedForm();
  greatest.greatest += 1;
  EXPECT_NE(rangeFaults(greatest), "");
}

TEST(NormalFormOracle, NoticesAMissingRange) {
  PlainRecord form = rangedForm();
  form.hasTargetRange = false;
  EXPECT_NE(rangeFaults(form), "");
}

/// A damage to the form, and the claim that is then not so.
struct Damage {
  std::string claim;
  std::function<void(PlainRecord&)> apply;
};

void PrintTo(const Damage& damage, std::ostream* stream) {
  *stream << damage.claim;
}

void addRow(PlainRecord& form, const Point& row, const mpq_class& value) {
  form.equations.insert(form.equations.begin() + 2, {row, value, 0});
}

class DamagedForm : public testing::TestWithParam<Damage> {};

TEST_P(DamagedForm, IsNoticed) {
  EXPECT_NE(formFaults(damaged(GetParam().apply)).find("not so: " + GetParam().claim + "\n"),
            std::string::npos)
      << formFaults(damaged(GetParam().apply));
}

INSTANTIATE_TEST_SUITE_P(
    NormalFormOracle, DamagedForm,
    testing::Values(
        Damage{"variables start at 0 or nowhere", [](auto& form) { form.lower[0].value = 1; }},
        Damage{"variables end at a positive integer or nowhere",
               [](auto& form) { form.upper[0].value = 0; }},
        Damage{"variables end at a positive integer or nowhere",
               [](auto& form) { form.lower[1] = minusInfinity; }},
        Damage{"the kind of a variable is that of its bounds",
               [](auto& form) { form.kinds[2] = FreedomDegree::leftFree; }},
        Damage{"shifts are integers", [](auto& form) { form.shift[0] /= 2; }},
        Damage{"there is a shift per column of an equation",
               [](auto& form) { form.shift.pop_back(); }},
        Damage{"slacks, deviations and moduli aren't shifted",
               [](auto& form) { form.shift[3] = 1; }},
        Damage{"variables with one value are removed with it",
               [](auto& form) { form.fixed[0].first = 1; }},
        Damage{"variables that are free below alone are swapped",
               [](auto& form) { form.swapped = {0}; }},
        Damage{"decimals stay with their variables", [](auto& form) { form.decimals[3] = 1; }},
        Damage{"targets are integer", [](auto& form) { form.targets[0].row[0] /= 3; }},
        Damage{"targets to reach are minimised, others stay",
               [](auto& form) { std::swap(form.targets[0], form.targets[1]); }},
        Damage{"thresholds have the factor of the targets",
               [](auto& form) {
                 form.thresholds[1] = {0, 0};
               }},
        Damage{"the aggregate is the sum of the targets with their signs",
               [](auto& form) { form.aggregate[4] = 10; }},
        Damage{"targets to reach have no range", [](auto& form) { form.hasTargetRange = true; }},
        Damage{"equations are integer", [](auto& form) { form.equations[1].row[0] /= 2; }},
        Damage{"equations are independent",
               [](auto& form) {
                 addRow(form, {3, 3, 0, 0, 0, 0, 0}, 9);
               }},
        Damage{"every congruence has its own column",
               [](auto& form) { form.equations[1].row[6] = 2; }},
        Damage{"equations and inequations have a column per variable and modulus",
               [](auto& form) { form.equations[1].row.pop_back(); }},
        Damage{"the equations know their columns", [](auto& form) { form.equationColumns = 6; }},
        Damage{"lifted rows are plain",
               [](auto& form) { std::swap(form.equations[0].modulus, form.equations[3].modulus); }},
        Damage{"slacks have -1, deviations 1 and -1 in their row alone, which comes last",
               [](auto& form) { std::swap(form.equations[2], form.equations[3]); }},
        Damage{"slacks have -1, deviations 1 and -1 in their row alone, which comes last",
               [](auto& form) { form.equations[2].row[3] = -2; }},
        Damage{"no equation is lost that says something new",
               [](auto& form) { form.equations.erase(form.equations.begin() + 1); }},
        Damage{"equations stay as and where they are",
               [](auto& form) { form.equations[1].row[0] = 2; }},
        Damage{"equations keep their value but for the shift",
               [](auto& form) { form.equations[1].value = 4; }},
        Damage{"congruences stay what they are",
               [](auto& form) { std::swap(form.equations[0], form.equations[1]); }},
        Damage{"a modulus is multiplied like its row",
               [](auto& form) { form.equations[0].row[6] = 4; }},
        Damage{"inequations have two integer bounds",
               [](auto& form) { form.inequations[0].upper = plusInfinity; }},
        Damage{"inequations are no equalities",
               [](auto& form) { form.inequations[0].upper.value = 0; }},
        Damage{"lower bounds are tight", [](auto& form) { form.inequations[0].lower.value = -1; }},
        Damage{"upper bounds are tight", [](auto& form) { form.inequations[0].upper.value = 4; }},
        Damage{"every inequation with one bound has a slack", [](auto& form) { form.slacks = 0; }},
        Damage{"every target to reach has two deviations", [](auto& form) { form.deviations = 0; }},
        Damage{"every variable has two bounds, decimals, a kind and a unit",
               [](auto& form) { form.units.pop_back(); }},
        Damage{"variables that aren't fixed are left", [](auto& form) { form.upper.pop_back(); }},
        Damage{"there are as many targets and thresholds as before",
               [](auto& form) { form.thresholds.pop_back(); }},
        Damage{"targets have a column per variable",
               [](auto& form) { form.targets[0].row.pop_back(); }},
        Damage{"lifted rows are all there", [](auto& form) { form.equations.resize(1); }}));

}  // namespace
}  // namespace starsift
