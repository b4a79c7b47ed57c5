#include "support/generators/NormalFormFeatures.h"

#include <algorithm>
#include <functional>
#include <map>

#include "support/oracles/NormalFormOracle.h"

namespace starsift::test {

namespace {

using oracle::Equation;
using oracle::Inequation;
using oracle::PlainRecord;
using oracle::Problem;
using oracle::Range;
using oracle::Target;

using ProblemFeature = std::function<bool(const SmallProblem&)>;
using FormFeature = std::function<bool(const Problem&, const PlainRecord&)>;

template <class Has>
ProblemFeature anyTarget(Has has) {
  return [has](const SmallProblem& small) {
    return std::any_of(small.problem.targets.begin(), small.problem.targets.end(), has);
  };
}

template <class Has>
ProblemFeature anyThreshold(Has has) {
  return [has](const SmallProblem& small) {
    return std::any_of(small.problem.thresholds.begin(), small.problem.thresholds.end(), has);
  };
}

template <class Has>
ProblemFeature anyEquation(Has has) {
  return [has](const SmallProblem& small) {
    return std::any_of(small.problem.equations.begin(), small.problem.equations.end(),
                       [&](const Equation& row) { return has(small, row); });
  };
}

/// By the signs of the infinite bounds, 0 for a finite one.
ProblemFeature anyInequation(int lower, int upper) {
  return [lower, upper](const SmallProblem& small) {
    return std::any_of(small.problem.inequations.begin(), small.problem.inequations.end(),
                       [&](const Inequation& row) {
                         return row.lower.infinite == lower && row.upper.infinite == upper &&
                                row.lower != row.upper;
                       });
  };
}

template <class Has>
ProblemFeature anyVariable(Has has) {
  return [has](const SmallProblem& small) {
    for (std::size_t j = 0; j < small.problem.lower.size(); ++j) {
      const Range range = oracle::rangeOf(small.problem, j);
      if (!range.empty && has(range)) return true;
    }
    return false;
  };
}

template <class Has>
std::size_t countInequations(const Problem& problem, Has has) {
  return static_cast<std::size_t>(
      std::count_if(problem.inequations.begin(), problem.inequations.end(), has));
}

std::size_t equalities(const Problem& problem) {
  return countInequations(problem, [](const Inequation& row) { return row.lower == row.upper; });
}

/// Inequations with two bounds that the normal form has as equations.
std::size_t lateEqualities(const Problem& problem, const PlainRecord& normal) {
  return countInequations(problem,
                          [](const Inequation& row) {
                            return row.lower.infinite == 0 && row.upper.infinite == 0 &&
                                   row.lower != row.upper;
                          }) -
         normal.inequations.size();
}

const std::map<std::string, ProblemFeature>& problemTable() {
  static const std::map<std::string, ProblemFeature> table = {
      {"no targets", [](const SmallProblem& small) { return small.problem.targets.empty(); }},
      {"no equations", [](const SmallProblem& small) { return small.problem.equations.empty(); }},
      {"no inequations",
       [](const SmallProblem& small) { return small.problem.inequations.empty(); }},
      {"maximised", anyTarget([](const Target& target) { return target.goal.infinite > 0; })},
      {"minimised", anyTarget([](const Target& target) { return target.goal.infinite < 0; })},
      {"to reach", anyTarget([](const Target& target) { return target.goal.infinite == 0; })},
      {"threshold", anyThreshold([](const oracle::Bound& bound) { return bound.infinite == 0; })},
      {"infinite threshold",
       anyThreshold([](const oracle::Bound& bound) { return bound.infinite != 0; })},
      {"congruence",
       anyEquation([](const SmallProblem&, const Equation& row) { return row.modulus != 0; })},
      {"modulus of 0", anyEquation([](const SmallProblem& small, const Equation& row) {
         return small.namesModuli && row.modulus == 0;
       })},
      {"equality", [](const SmallProblem& small) { return equalities(small.problem) != 0; }},
      {"upper bound alone", anyInequation(-1, 0)},
      {"lower bound alone", anyInequation(0, 1)},
      {"no bound", anyInequation(-1, 1)},
      {"two bounds", anyInequation(0, 0)},
      {"tenths", anyVariable([](const Range& range) { return range.step == mpq_class(1, 10); })},
      {"hundredths",
       anyVariable([](const Range& range) { return range.step == mpq_class(1, 100); })},
      {"constant", anyVariable([](const Range& range) { return range.constant; })},
      {"constant between steps", anyVariable([](const Range& range) {
         return range.constant && mpq_class(*range.least / range.step).get_den() != 1;
       })},
      {"one value left",
       anyVariable([](const Range& range) { return range.single && !range.constant; })},
      {"free", anyVariable([](const Range& range) { return !range.least && !range.greatest; })},
      {"free below",
       anyVariable([](const Range& range) { return !range.least && range.greatest; })},
      {"free above",
       anyVariable([](const Range& range) { return range.least && !range.greatest; })},
  };
  return table;
}

const std::map<std::string, FormFeature>& formTable() {
  static const std::map<std::string, FormFeature> table = {
      {"late equality",
       [](const Problem& problem, const PlainRecord& normal) {
         return lateEqualities(problem, normal) != 0;
       }},
      {"dependent equation",
       [](const Problem& problem, const PlainRecord& normal) {
         return normal.equations.size() < problem.equations.size() + equalities(problem) +
                                              lateEqualities(problem, normal) + normal.liftedRows();
       }},
      {"unit",
       [](const Problem&, const PlainRecord& normal) {
         return std::any_of(normal.units.begin(), normal.units.end(),
                            [](const mpq_class& unit) { return unit != 1; });
       }},
      {"range of targets",
       [](const Problem&, const PlainRecord& normal) { return normal.hasTargetRange; }},
      {"no variable left",
       [](const Problem&, const PlainRecord& normal) { return normal.variables() == 0; }},
      {"all kinds of columns",
       [](const Problem&, const PlainRecord& normal) {
         return normal.originals() != 0 && normal.slacks != 0 && normal.deviations != 0 &&
                normal.shift.size() > normal.variables();
       }},
  };
  return table;
}

template <class Table>
std::set<std::string> namesOf(const Table& table) {
  std::set<std::string> names;
  for (const auto& [name, has] : table) names.insert(name);
  return names;
}

}  // namespace

std::set<std::string> featuresOf(const SmallProblem& small) {
  std::set<std::string> features;
  for (const auto& [name, has] : problemTable())
    if (has(small)) features.insert(name);
  return features;
}

std::set<std::string> featuresOf(const Problem& problem, const PlainRecord& normal) {
  std::set<std::string> features;
  for (const auto& [name, has] : formTable())
    if (has(problem, normal)) features.insert(name);
  return features;
}

const std::set<std::string>& problemFeatures() {
  static const std::set<std::string> names = namesOf(problemTable());
  return names;
}

const std::set<std::string>& formFeatures() {
  static const std::set<std::string> names = namesOf(formTable());
  return names;
}

}  // namespace starsift::test
