#include "search/decide/ProblemCoset.h"

#include <algorithm>
#include <utility>

namespace starsift {

namespace {

/// Deviations whose sum has a coordinate for every choice of their signs.
constexpr std::size_t deviationsTogether = 3;

/// The range that replaces an infinite one where only its size matters.
const ZZ& assumedWidth() {
  static const ZZ width(1L << 20);
  return width;
}

/// Extends `end`, one end of the values of a sum, by coefficient * bound.
void extend(std::optional<ZZ>& end, const ZZ& coefficient, const std::optional<ZZ>& bound) {
  if (!end) return;
  if (bound)
    mpz_addmul(end->get(), coefficient.get(), bound->get());
  else
    end.reset();
}

/// The values of the form without its constant over a box.
IntegerRange valuesOver(const std::vector<IntegerRange>& box, const IntegerForm& form) {
  IntegerRange values{ZZ(), ZZ()};
  for (std::size_t k = 0; k < box.size(); ++k) {
    const ZZ& a = form.coefficients[k];
    if (a.isZero()) continue;
    extend(values.lower, a, a.sign() ? box[k].lower : box[k].upper);
    extend(values.upper, a, a.sign() ? box[k].upper : box[k].lower);
  }
  return values;
}

/// The common part of two ranges.
IntegerRange common(IntegerRange a, const IntegerRange& b) {
  if (b.lower && (!a.lower || *a.lower < *b.lower)) a.lower = b.lower;
  if (b.upper && (!a.upper || *a.upper > *b.upper)) a.upper = b.upper;
  return a;
}

bool isWithin(const IntegerRange& inner, const IntegerRange& outer) {
  return (!outer.lower || (inner.lower && *inner.lower >= *outer.lower)) &&
         (!outer.upper || (inner.upper && *inner.upper <= *outer.upper));
}

IntegerForm sum(IntegerForm a, const IntegerForm& b, int sign) {
  const ZZ factor(sign);
  for (std::size_t k = 0; k < a.coefficients.size(); ++k)
    mpz_addmul(a.coefficients[k].get(), factor.get(), b.coefficients[k].get());
  mpz_addmul(a.constant.get(), factor.get(), b.constant.get());
  return a;
}

/// A candidate for a coordinate of the coset: `form` without its constant.
struct Coordinate {
  IntegerForm form;
  IntegerRange range;
};

/// A lower bound of the objective: factor * coordinate + constant, and the mirrored one.
struct Bound {
  Coordinate coordinate;
  ObjectiveCoordinate objective;
};

Bound boundOf(const IntegerProblem& problem, IntegerForm form, std::optional<ZZ> mirrored) {
  ZZ factor;
  for (const ZZ& entry : form.coefficients) factor = gcd(factor, abs(entry));
  if (factor.isZero()) factor = ZZ::one();
  for (ZZ& entry : form.coefficients) entry = exactQuotient(entry, factor);
  ObjectiveCoordinate objective{0, std::move(factor), std::move(form.constant),
                                std::move(mirrored)};
  form.constant = ZZ();
  IntegerRange range = valuesOver(problem.box, form);
  return {{std::move(form), std::move(range)}, std::move(objective)};
}

/// Lower bounds of the objective by deviations first ... last - 1, one for every choice of their
/// signs; a choice and its opposite share one if there is no linear part.
std::vector<Bound> boundsOfGroup(const IntegerProblem& problem, std::size_t first,
                                 std::size_t last) {
  const IntegerObjective& objective = *problem.objective;
  const std::size_t count = last - first;
  const bool isMirrored = count > 0 && objective.linear.isConstant();
  const std::size_t choices = (std::size_t{1} << count) >> (isMirrored ? 1 : 0);
  std::vector<Bound> bounds;
  for (std::size_t choice = 0; choice < choices; ++choice) {
    IntegerForm form = objective.linear;
    for (std::size_t k = 0; k < count; ++k)
      form = sum(std::move(form), objective.deviations[first + k],
                 ((choice >> k) & 1U) != 0 ? -1 : 1);
    std::optional<ZZ> mirrored;
    if (isMirrored)
      mirrored = objective.linear.constant + objective.linear.constant - form.constant;
    bounds.push_back(boundOf(problem, std::move(form), std::move(mirrored)));
  }
  return bounds;
}

std::vector<Bound> objectiveBounds(const IntegerProblem& problem) {
  const std::size_t deviations = problem.objective->deviations.size();
  if (deviations == 0) return boundsOfGroup(problem, 0, 0);
  std::vector<Bound> bounds;
  for (std::size_t first = 0; first < deviations; first += deviationsTogether)
    for (Bound& bound :
         boundsOfGroup(problem, first, std::min(first + deviationsTogether, deviations)))
      bounds.push_back(std::move(bound));
  return bounds;
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

/// Builds the coordinates of a coset from forms over all its variables.
class CoordinateMaker {
 public:
  CoordinateMaker(const BoxCoset& space, ProblemCoset& result) : space_(space), result_(result) {
    result_.coset.basis.resize(space.basis.size());
  }

  /// Adds the value of the form as a coordinate, if it isn't fixed. Returns its range; empty if no
  /// value is left.
  std::optional<IntegerRange> add(const Coordinate& coordinate) {
    IntegerRange range = coordinate.range;
    const ZZ start = coordinate.form.at(space_.point);
    std::vector<ZZ> steps;
    ZZ common;
    for (const std::vector<ZZ>& row : space_.basis) {
      steps.push_back(coordinate.form.at(row));
      common = gcd(common, abs(steps.back()));
    }
    isAdded_ = !common.isZero();
    if (!isAdded_)
      return range.contains(start) ? std::optional(IntegerRange{start, start}) : std::nullopt;
    roundInwards(range, start, common);
    if (range.isEmpty()) return std::nullopt;
    BoxCoset& coset = result_.coset;
    coset.point.push_back(start);
    for (std::size_t i = 0; i < steps.size(); ++i) coset.basis[i].push_back(std::move(steps[i]));
    hasFiniteBox_ = hasFiniteBox_ && range.isFinite();
    coset.lower.push_back(range.lower.value_or(ZZ()));
    coset.upper.push_back(range.upper.value_or(ZZ()));
    return range;
  }

  /// The last form became a coordinate.
  bool isAdded() const { return isAdded_; }
  /// All coordinates so far have finite ranges.
  bool hasFiniteBox() const { return hasFiniteBox_; }
  std::size_t count() const { return result_.coset.point.size(); }

 private:
  /// The coordinate takes the values start + k * step.
  static void roundInwards(IntegerRange& range, const ZZ& start, const ZZ& step) {
    ZZ remainder;
    if (range.lower) {
      mpz_fdiv_r(remainder.get(), ZZ(start - *range.lower).get(), step.get());
      *range.lower += remainder;
    }
    if (range.upper) {
      mpz_fdiv_r(remainder.get(), ZZ(*range.upper - start).get(), step.get());
      *range.upper -= remainder;
    }
  }

  const BoxCoset& space_;
  ProblemCoset& result_;
  bool isAdded_ = false;
  bool hasFiniteBox_ = true;
};

IntegerForm variableForm(std::size_t n, std::size_t k) {
  IntegerForm form{std::vector<ZZ>(n), ZZ()};
  form.coefficients[k] = ZZ::one();
  return form;
}

/// The least objective that a bound allows while its coordinate lies in a finite range.
ZZ leastOf(const ObjectiveCoordinate& bound, const IntegerRange& range) {
  ZZ least = bound.factor * *range.lower + bound.constant;
  if (!bound.mirrored) return least;
  // The two bounds cross: the larger one is at least half of their sum.
  ZZ half;
  mpz_cdiv_q_2exp(half.get(), ZZ(bound.constant + *bound.mirrored).get(), 1);
  return std::max({least, half, *bound.mirrored - bound.factor * *range.upper});
}

void raiseTo(std::optional<ZZ>& least, ZZ value) {
  if (!least || *least < value) least = std::move(value);
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
  const auto isEmpty = [](const IntegerRange& range) { return range.isEmpty(); };
  return std::any_of(problem.box.begin(), problem.box.end(), isEmpty) ||
         std::any_of(problem.ranges.begin(), problem.ranges.end(),
                     [](const RangedForm& row) { return row.range.isEmpty(); });
}

/// The solutions of the equations, `space`, within the bounds of the problem.
CosetResult boundedCoset(const IntegerProblem& problem, bool withObjective,
                         const BoxCoset& space) {
  ProblemCoset result;
  result.variables = space.point;
  CoordinateMaker maker(space, result);
  const std::size_t n = problem.variableCount();
  for (std::size_t k = 0; k < n; ++k) {
    if (!maker.add({variableForm(n, k), problem.box[k]})) return NoSolution{};
    if (!maker.hasFiniteBox()) return NoFiniteBox{k};
    if (maker.isAdded()) result.coordinateVariables.push_back(k);
  }
  for (const RangedForm& row : problem.ranges) {
    const IntegerRange values = valuesOver(problem.box, row.form);
    if (isWithin(values, row.range)) continue;
    if (!maker.add({row.form, common(row.range, values)})) return NoSolution{};
  }
  if (!withObjective || !problem.objective) return result;
  for (Bound& bound : objectiveBounds(problem)) {
    const std::optional<IntegerRange> range = maker.add(bound.coordinate);
    if (!range) return NoSolution{};
    raiseTo(result.leastObjective, leastOf(bound.objective, *range));
    if (!maker.isAdded()) continue;
    bound.objective.coordinate = maker.count() - 1;
    result.objective.push_back(std::move(bound.objective));
  }
  return result;
}

}  // namespace

IntegerRange rangeBelow(const ObjectiveCoordinate& bound, const ZZ& most) {
  IntegerRange range;
  ZZ end;
  mpz_fdiv_q(end.get(), ZZ(most - bound.constant).get(), bound.factor.get());
  range.upper = end;
  if (!bound.mirrored) return range;
  mpz_cdiv_q(end.get(), ZZ(*bound.mirrored - most).get(), bound.factor.get());
  range.lower = end;
  return range;
}

std::vector<ZZ> ProblemCoset::variablesAt(const std::vector<ZZ>& point) const {
  std::vector<ZZ> result = variables;
  for (std::size_t k = 0; k < coordinateVariables.size(); ++k)
    result[coordinateVariables[k]] = point[k];
  return result;
}

CosetResult problemCoset(const IntegerProblem& problem, bool withObjective,
                         const CosetReducer& reduce) {
  if (hasEmptyRange(problem)) return NoSolution{};
  BoxCoset space = wholeSpace(problem.box);
  switch (intersect(space, allEquations(problem), reduce)) {
    case CosetEnd::noPoint:
      return NoSolution{};
    case CosetEnd::stopped:
      return CosetStopped{};
    case CosetEnd::made:
      break;
  }
  return boundedCoset(problem, withObjective, space);
}

}  // namespace starsift
