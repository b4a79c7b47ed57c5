#include "search/decide/ProblemCoset.h"

#include <algorithm>
#include <utility>

#include "search/decide/FormRange.h"
#include "search/decide/Relaxation.h"

namespace starsift {

namespace {

/// The range that replaces an infinite one where only its size matters.
const ZZ& assumedWidth() {
  static const ZZ width(1L << 20);
  return width;
}

/// The whole space, with a box that only says how wide the variables are.
BoxCoset wholeSpace(const std::vector<IntegerRange>& box) {
  const std::size_t n = box.size();
  BoxCoset coset;
  coset.basis.assign(n, std::vector<ZZ>(n));
  coset.point.resize(n);
  for (std::size_t k = 0; k < n; ++k) {
    coset.basis[k][k] = ZZ::one();
    const ZZ lower = box[k].lower   ? *box[k].lower
                     : box[k].upper ? *box[k].upper - assumedWidth()
                                    : -assumedWidth();
    coset.upper.push_back(box[k].upper ? *box[k].upper : lower + assumedWidth());
    coset.lower.push_back(lower);
  }
  return coset;
}

/// Equations, and inequations whose two bounds are equal.
std::vector<IntegerEquation> allEquations(const IntegerProblem& problem) {
  std::vector<IntegerEquation> equations = problem.equations;
  for (const RangedForm& row : problem.ranges) {
    if (!row.range.isFinite() || *row.range.lower != *row.range.upper) continue;
    IntegerForm form = row.form;
    form.constant = -*row.range.lower;
    equations.push_back({std::move(form), ZZ()});
  }
  return equations;
}

bool hasEmptyRange(const IntegerProblem& problem) {
  return std::any_of(problem.box.begin(), problem.box.end(),
                     [](const IntegerRange& range) { return range.isEmpty(); }) ||
         std::any_of(problem.ranges.begin(), problem.ranges.end(),
                     [](const RangedForm& row) { return row.range.isEmpty(); });
}

IntegerForm variableForm(std::size_t n, std::size_t k) {
  IntegerForm form{std::vector<ZZ>(n), ZZ()};
  form.coefficients[k] = ZZ::one();
  return form;
}

ZZ stepOf(const Coordinate& coordinate) {
  ZZ step;
  for (const ZZ& entry : coordinate.steps) step = gcd(step, abs(entry));
  return step;
}

/// Rounds the range inwards to the values of the coordinate.
void roundInwards(Coordinate& coordinate) {
  const ZZ step = stepOf(coordinate);
  ZZ remainder;
  IntegerRange& range = coordinate.range;
  mpz_fdiv_r(remainder.get(), ZZ(coordinate.start - *range.lower).get(), step.get());
  *range.lower += remainder;
  mpz_fdiv_r(remainder.get(), ZZ(*range.upper - coordinate.start).get(), step.get());
  *range.upper -= remainder;
}

void raiseTo(std::optional<ZZ>& least, const std::optional<ZZ>& value) {
  if (value && (!least || *least < *value)) least = value;
}

/// Makes the coordinates of the solutions of the equations within the bounds of a problem.
class Maker {
 public:
  Maker(const IntegerProblem& problem, const CosetSettings& settings, const BoxCoset& space)
      : problem_(problem), settings_(settings), space_(space) {}

  CosetResult make() {
    result_.variables = space_.point;
    if (!addVariables() || !addRows() || !addObjective())
      return isStopped_ ? CosetResult(CosetStopped{}) : CosetResult(NoSolution{});
    switch (closeRanges(space_.basis.size(), coordinates_, settings_.mayGoOn)) {
      case Closing::infeasible:
        return NoSolution{};
      case Closing::stopped:
        return CosetStopped{};
      case Closing::open:
        return openBox();
      case Closing::closed:
        break;
    }
    return finish() ? CosetResult(std::move(result_)) : CosetResult(NoSolution{});
  }

 private:
  /// The values of a form; without steps if the equations fix it.
  Coordinate coordinateOf(const IntegerForm& form, IntegerRange range) const {
    Coordinate coordinate{form.along(space_.basis), form.at(space_.point), std::move(range)};
    if (stepOf(coordinate).isZero()) coordinate.steps.clear();
    return coordinate;
  }

  /// False if the coordinate is fixed outside of its range, or the computation is ended.
  bool add(Coordinate coordinate) {
    isStopped_ = !settings_.mayGoOn();
    if (isStopped_) return false;
    if (coordinate.steps.empty()) return coordinate.range.contains(coordinate.start);
    coordinates_.push_back(std::move(coordinate));
    return true;
  }

  bool addVariables() {
    const std::size_t n = problem_.variableCount();
    for (std::size_t k = 0; k < n; ++k) {
      Coordinate coordinate = coordinateOf(variableForm(n, k), problem_.box[k]);
      if (!coordinate.steps.empty()) result_.coordinateVariables.push_back(k);
      if (!add(std::move(coordinate))) return false;
    }
    return true;
  }

  bool addRows() {
    return std::all_of(problem_.ranges.begin(), problem_.ranges.end(), [this](const auto& row) {
      const IntegerRange values = valuesOver(problem_.box, row.form);
      return isWithin(values, row.range) || add(coordinateOf(row.form, common(row.range, values)));
    });
  }

  bool addObjective() {
    if (!settings_.withObjective || !problem_.objective) return true;
    result_.leastObjective = settings_.least;
    for (ObjectiveBound& bound : objectiveBounds(*problem_.objective)) {
      IntegerRange range = valuesOver(problem_.box, bound.form);
      if (settings_.most) range = common(std::move(range), bound.rangeBelow(*settings_.most));
      Coordinate coordinate = coordinateOf(bound.form, std::move(range));
      const bool isFixed = coordinate.steps.empty();
      if (isFixed)
        raiseTo(result_.leastObjective, bound.leastOver({coordinate.start, coordinate.start}));
      if (!add(std::move(coordinate))) return false;
      if (!isFixed) result_.objective.push_back({std::move(bound), coordinates_.size() - 1});
    }
    return true;
  }

  /// False if a range is empty.
  bool finish() {
    BoxCoset& coset = result_.coset;
    coset.basis.resize(space_.basis.size());
    for (Coordinate& coordinate : coordinates_) {
      if (coordinate.range.isEmpty()) return false;
      roundInwards(coordinate);
      if (coordinate.range.isEmpty()) return false;
      coset.point.push_back(coordinate.start);
      coset.lower.push_back(*coordinate.range.lower);
      coset.upper.push_back(*coordinate.range.upper);
      for (std::size_t i = 0; i < coordinate.steps.size(); ++i)
        coset.basis[i].push_back(std::move(coordinate.steps[i]));
    }
    for (const ObjectiveCoordinate& objective : result_.objective)
      raiseTo(result_.leastObjective,
              objective.bound.leastOver(coordinates_[objective.coordinate].range));
    return true;
  }

  CosetResult openBox() const {
    NoFiniteBox result;
    // The variables come first, and rows are bounded if all variables are.
    const auto open = std::find_if(coordinates_.begin(), coordinates_.end(),
                                   [](const auto& one) { return !one.range.isFinite(); });
    result.variable =
        result_.coordinateVariables[static_cast<std::size_t>(open - coordinates_.begin())];
    if (result_.objective.size() == 1 && problem_.objective->deviations.empty())
      result.direction = fallingDirection();
    return result;
  }

  /// A direction along which the only coordinate of the objective decreases without end.
  std::vector<ZZ> fallingDirection() const {
    Relaxation relaxation(space_.basis.size(), coordinates_, settings_.mayGoOn);
    if (relaxation.makeFeasible() != SimplexEnd::reached ||
        relaxation.least(result_.objective.front().coordinate).end != SimplexEnd::unbounded)
      return {};
    const std::vector<ZZ> direction = relaxation.direction();
    // Congruences hold along a common multiple of their moduli.
    ZZ factor = ZZ::one();
    for (const IntegerEquation& equation : problem_.equations)
      if (!equation.modulus.isZero()) factor = lcm(factor, equation.modulus);
    std::vector<ZZ> result(problem_.variableCount());
    for (std::size_t k = 0; k < result_.coordinateVariables.size(); ++k)
      result[result_.coordinateVariables[k]] = factor * direction[k];
    return result;
  }

  const IntegerProblem& problem_;
  const CosetSettings& settings_;
  const BoxCoset& space_;
  ProblemCoset result_;
  std::vector<Coordinate> coordinates_;
  bool isStopped_ = false;
};

}  // namespace

std::vector<ZZ> ProblemCoset::variablesAt(const std::vector<ZZ>& point) const {
  std::vector<ZZ> result = variables;
  for (std::size_t k = 0; k < coordinateVariables.size(); ++k)
    result[coordinateVariables[k]] = point[k];
  return result;
}

CosetResult problemCoset(const IntegerProblem& problem, const CosetSettings& settings) {
  if (hasEmptyRange(problem)) return NoSolution{};
  BoxCoset space = wholeSpace(problem.box);
  switch (intersect(space, allEquations(problem), settings.reduce, settings.mayGoOn)) {
    case CosetEnd::noPoint:
      return NoSolution{};
    case CosetEnd::stopped:
      return CosetStopped{};
    case CosetEnd::made:
      break;
  }
  return Maker(problem, settings, space).make();
}

bool raiseObjective(ProblemCoset& coset, const std::function<bool()>& mayGoOn) {
  Relaxation relaxation(coset.coset.basis.size(), coordinatesOf(coset.coset), mayGoOn);
  if (relaxation.makeFeasible() != SimplexEnd::reached) return false;
  for (const ObjectiveCoordinate& objective : coset.objective) {
    const Relaxation::End least = relaxation.least(objective.coordinate);
    if (least.end != SimplexEnd::reached) return false;
    ZZ& lower = coset.coset.lower[objective.coordinate];
    lower = std::max(lower, least.value);
    raiseTo(coset.leastObjective,
            objective.bound.leastOver({lower, coset.coset.upper[objective.coordinate]}));
  }
  return true;
}

}  // namespace starsift
