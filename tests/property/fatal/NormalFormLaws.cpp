// The normal form of a problem against all points of its box, in exact arithmetic of
// another make.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <sstream>

#include "SmallProblems.h"
#include "lattice/YLattice.h"
#include "numbers/Conversion.h"
#include "support/generators/NormalFormFeatures.h"
#include "support/oracles/NormalFormOracle.h"

namespace starsift {
namespace {

using oracle::PlainRecord;
using oracle::Point;
using oracle::Problem;
using test::checkOverProblems;
using test::failWith;
using test::normalised;
using test::Outcome;
using test::plain;
using test::problemCount;
using test::Silence;
using test::SmallProblem;
using Standard = Lattice<long double, long double>;
using Exact = Lattice<QQ, long double>;

// The reports of a problem without solutions.
constexpr const char* infiniteRow = "Unfulfillable infinite inequation detected --> NO SOLUTIONS!";
constexpr const char* emptyRange = "sol bounds error";
constexpr const char* emptyInequation = "Unfulfillable inequality detected --> NO SOLUTIONS!";
constexpr const char* emptyEquation = "Unfulfillable equality detected --> NO SOLUTIONS!";

Outcome normalForm(const SmallProblem& problem) {
  Exact lattice;
  lattice.setProblem(problem.record());
  return normalised(lattice, true, false);
}

/// The same law over the problems that have a normal form.
template <class Law>
void checkOverNormalForms(const Law& law) {
  checkOverProblems([&law](const SmallProblem& small) {
    const Outcome outcome = normalForm(small);
    if (outcome.normal) law(small.problem, *outcome.normal);
  });
}

TEST(NormalForm, HasExactlyTheSolutionsOfTheProblem) {
  checkOverNormalForms([](const Problem& problem, const PlainRecord& normal) {
    const std::optional<Point> x =
        oracle::firstDifference(problem, normal, test::pointsAround(problem));
    if (x) failWith("another verdict on " + oracle::pointText(*x), normal);
  });
}

TEST(NormalForm, IsRefusedOnlyWithoutSolutions) {
  checkOverProblems([](const SmallProblem& small) {
    const Outcome outcome = normalForm(small);
    if (outcome.normal) return;
    const std::optional<Point> x =
        oracle::firstSolution(small.problem, test::pointsAround(small.problem));
    if (x) RC_FAIL(outcome.report + " in spite of " + oracle::pointText(*x));
  });
}

TEST(NormalForm, IsRefusedForTheFirstReason) {
  checkOverProblems([](const SmallProblem& small) {
    const Problem& problem = small.problem;
    const std::string report = normalForm(small).report;
    const bool infinite = std::any_of(
        problem.inequations.begin(), problem.inequations.end(),
        [](const auto& row) { return row.lower.infinite != 0 && row.lower == row.upper; });
    bool empty = false;
    for (std::size_t j = 0; j < problem.lower.size(); ++j)
      empty = empty || oracle::rangeOf(problem, j).empty;
    if (infinite)
      RC_ASSERT(report == infiniteRow);
    else if (empty)
      RC_ASSERT(report == emptyRange);
    else
      RC_ASSERT(report.empty() || report == emptyInequation || report == emptyEquation);
  });
}

TEST(NormalForm, IsRefusedForAnEquationThatNoVariableIsLeftOf) {
  const Problem problem = {{}, {{{0}, 1, 0}}, {{{1}, {0, 0}, {0, 1}}}, {{0, 0}}, {{0, 0}}};
  EXPECT_EQ(normalForm({problem, false}).report, emptyEquation);
}

TEST(NormalForm, HasItsForm) {
  checkOverNormalForms([](const Problem& problem, const PlainRecord& normal) {
    const std::string faults = oracle::formFaults(problem, normal);
    if (!faults.empty()) failWith(faults, normal);
  });
}

TEST(NormalForm, KeepsTheValuesOfTheTargets) {
  checkOverNormalForms([](const Problem& problem, const PlainRecord& normal) {
    const std::vector<Point> points = test::pointsAround(problem);
    const std::string faults = oracle::targetFaults(problem, normal, points);
    if (!faults.empty()) failWith(faults, normal);
  });
}

TEST(NormalForm, KeepsTheRangeOfTheTargets) {
  checkOverNormalForms([](const Problem& problem, const PlainRecord& normal) {
    const std::vector<Point> points = test::pointsAround(problem);
    const std::string faults = oracle::rangeFaults(problem, normal, points);
    if (!faults.empty()) failWith(faults, normal);
  });
}

TEST(NormalForm, CountsSlacksAndDeviationsInTheirUnits) {
  checkOverNormalForms([](const Problem& problem, const PlainRecord& normal) {
    const std::vector<Point> points = test::pointsAround(problem);
    const std::string faults = oracle::unitFaults(problem, normal, points);
    if (!faults.empty()) failWith(faults, normal);
  });
}

TEST(NormalForm, IsTriedOnEverythingThatItRemoves) {
  std::map<std::string, int> counts;
  int solvable = 0;
  checkOverProblems([&](const SmallProblem& small) {
    for (const std::string& feature : test::featuresOf(small)) ++counts[feature];
    const Outcome outcome = normalForm(small);
    if (outcome.normal)
      for (const std::string& feature : test::featuresOf(small.problem, *outcome.normal))
        ++counts[feature];
    else
      ++counts[outcome.report];
    const std::vector<Point> points = test::pointsAround(small.problem);
    if (oracle::firstSolution(small.problem, points)) ++solvable;
  });
  EXPECT_GE(solvable, problemCount / 3);
  std::set<std::string> wanted = {infiniteRow, emptyRange, emptyInequation, emptyEquation};
  wanted.merge(std::set<std::string>(test::problemFeatures()));
  wanted.merge(std::set<std::string>(test::formFeatures()));
  for (const std::string& feature : wanted)
    EXPECT_GE(counts[feature], problemCount / 400) << feature;
}

/// A congruence of this kind holds for all integers, whatever its value.
bool isModuloOne(const oracle::Equation& row, std::size_t variables) {
  return row.modulus != 0 &&
         std::any_of(row.row.begin() + static_cast<std::ptrdiff_t>(variables), row.row.end(),
                     [](const mpq_class& entry) { return abs(entry) == 1; });
}

/// The first equation whose right-hand side may be one more without any word of the
/// oracle about solutions or slacks.
std::optional<std::size_t> firstLooseEquation(const Problem& problem, const PlainRecord& normal,
                                              const std::vector<Point>& points) {
  for (std::size_t i = 0; i < normal.equations.size(); ++i) {
    if (isModuloOne(normal.equations[i], normal.variables())) continue;
    PlainRecord damaged = normal;
    damaged.equations[i].value += 1;
    if (!oracle::firstDifference(problem, damaged, points) &&
        oracle::unitFaults(problem, damaged, points).empty())
      return i;
  }
  return std::nullopt;
}

TEST(NormalForm, IsToldFromOneWithAnotherRightHandSide) {
  checkOverNormalForms([](const Problem& problem, const PlainRecord& normal) {
    const std::vector<Point> points = test::pointsAround(problem);
    if (!oracle::firstSolution(problem, points)) return;
    if (const auto i = firstLooseEquation(problem, normal, points))
      failWith("equation " + std::to_string(*i) + " says nothing", normal);
  });
}

TEST(NormalForm, ComesBackUnchanged) {
  checkOverProblems([](const SmallProblem& small) {
    Exact lattice;
    lattice.setProblem(small.record());
    const PlainRecord asRead = oracle::plainRecord(lattice.file.problem());
    const Outcome first = normalised(lattice, true, false);
    if (!first.normal) return;
    RC_ASSERT(oracle::plainRecord(lattice.file.problem()) == asRead);
    const PlainRecord lifted = oracle::plainRecord(lattice.optOriginal);
    RC_ASSERT(normalised(lattice, false, false).normal == first.normal);
    RC_ASSERT(oracle::plainRecord(lattice.optOriginal) == lifted);
    RC_ASSERT(normalised(lattice, true, true).normal == first.normal);
    RC_ASSERT(oracle::plainRecord(lattice.optOriginal) == lifted);
    RC_ASSERT(oracle::plainRecord(lattice.file.problem()) == asRead);
  });
}

/// The normal form in long double; nothing where that can't hold it.
std::optional<Outcome> standardForm(const SmallProblem& small) {
  Standard lattice;
  try {
    lattice.file.editProblem().convertFrom(small.record());
    return normalised(lattice, true, false);
  } catch (const PrecisionException&) {
    return std::nullopt;
  }
}

TEST(NormalForm, IsTheSameInLongDouble) {
  int carried = 0;
  int refused = 0;
  checkOverProblems([&](const SmallProblem& small) {
    const std::optional<Outcome> standard = standardForm(small);
    ++(standard ? carried : refused);
    if (!standard) return;
    const Outcome exact = normalForm(small);
    RC_ASSERT(standard->report == exact.report);
    if (standard->normal != exact.normal) failWith("another one", *standard->normal);
  });
  EXPECT_GE(carried, problemCount / 2);
  EXPECT_GE(refused, problemCount / 400);
}

bool hasNegativeZero(const Vector<long double>& vector) {
  return std::any_of(vector.begin(), vector.end(),
                     [](long double entry) { return entry == 0 && std::signbit(entry); });
}

bool hasNegativeZero(const Matrix<long double>& matrix) {
  return std::any_of(matrix.begin(), matrix.end(),
                     [](const Vector<long double>& row) { return hasNegativeZero(row); });
}

TEST(NormalForm, HasNoNegativeZeroInLongDouble) {
  checkOverProblems([](const SmallProblem& small) {
    Standard lattice;
    try {
      lattice.file.editProblem().convertFrom(small.record());
      if (!normalised(lattice, true, false).normal) return;
    } catch (const PrecisionException&) {
      return;
    }
    for (const auto* matrix : {&lattice.At, &lattice.Ag, &lattice.Au})
      RC_ASSERT(!hasNegativeZero(*matrix));
    for (const auto* vector : {&lattice.bg, &lattice.qg, &lattice.lu, &lattice.ru, &lattice.lx,
                               &lattice.rx, &lattice.atu, &lattice.shift})
      RC_ASSERT(!hasNegativeZero(*vector));
    RC_ASSERT(!(lattice.ltu == 0 && std::signbit(lattice.ltu)));
    RC_ASSERT(!(lattice.rtu == 0 && std::signbit(lattice.rtu)));
  });
}

/// What normalise(generate, false) of the lattice of two precisions comes to.
Outcome normalised(YLattice<long double>& lattice, bool generate) {
  const Silence silence;
  try {
    lattice.normalise(generate ? TargetRange::find : TargetRange::omit, From::lifted);
  } catch (const FatalReport& report) {
    return {std::nullopt, report.what()};
  }
  return {lattice.withLive([](const auto& live) { return plain(live); }), ""};
}

TEST(NormalForm, IsTheSameInTheLatticeOfTwoPrecisions) {
  checkOverProblems([](const SmallProblem& small) {
    YLattice<long double> lattice;
    lattice.useExtendedPrecision();
    lattice.exact().setProblem(small.record());
    const PlainRecord asRead = oracle::plainRecord(lattice.exact().file.problem());
    lattice.tryStandardPrecision();
    const Outcome outcome = normalised(lattice, true);
    const Outcome exact = normalForm(small);
    RC_ASSERT(outcome.report == exact.report);
    if (outcome.normal != exact.normal) failWith("another one", *outcome.normal);
    if (!outcome.normal) return;
    RC_ASSERT(normalised(lattice, false).normal == exact.normal);
    RC_ASSERT(lattice.withLive([](const auto& live) { return plain(live.file.problem()); }) ==
              asRead);
  });
}

}  // namespace
}  // namespace starsift
