#include "support/generators/NormalFormGenerators.h"

#include <algorithm>

#include "numbers/VectorQQ.h"
#include "problem/OptReader.h"
#include "support/oracles/NormalFormOracle.h"
#include "text/TextCursor.h"

namespace starsift::test {

namespace {

using oracle::Bound;
using oracle::Point;
using oracle::Problem;

bool isUseless(const oracle::Inequation& row) {
  return row.lower.infinite < 0 && row.upper.infinite > 0;
}

mpq_class ratio(int numerator, int denominator) {
  mpq_class result(numerator, denominator);
  result.canonicalize();
  return result;
}

/// True in `percent` of all cases.
bool chance(int percent) {
  return *rc::gen::inRange(0, 100) < percent;
}

/// Makes one problem. All rows are built around one point, which solves it unless a
/// row is told to miss it.
class Builder {
 public:
  SmallProblem build() {
    denominators_ = *rc::gen::element(std::vector<int>{1}, std::vector<int>{1, 1, 10},
                                      std::vector<int>{1, 2, 10}, std::vector<int>{1, 2, 3, 10});
    large_ = chance(15);
    const int n = *rc::gen::element(1, 2, 2, 3, 3, 4);
    for (int j = 0; j < n; ++j) addVariable();
    for (int i = *rc::gen::inRange(0, 4); i > 0; --i) addEquation();
    for (int i = *rc::gen::inRange(0, 4); i > 0; --i) addInequation();
    addTargets(*rc::gen::inRange(0, 4));
    Problem& problem = result_.problem;
    if (problem.targets.empty() && problem.equations.empty() && problem.inequations.empty())
      addTargets(1);
    weighRows();
    result_.namesModuli =
        chance(30) || std::any_of(problem.equations.begin(), problem.equations.end(),
                                  [](const auto& row) { return row.modulus != 0; });
    return result_;
  }

 private:
  mpq_class number() { return ratio(*rc::gen::inRange(-3, 4), *rc::gen::elementOf(denominators_)); }

  mpq_class notNegative() { return abs(number()); }

  Point row() {
    Point row(anchor_.size());
    for (mpq_class& coefficient : row)
      if (chance(75)) coefficient = number();
    return row;
  }

  mpq_class atAnchor(const Point& row) const { return oracle::product(row, anchor_); }

  /// Mostly 0, else an integer of the size at which long double begins to fail.
  mpq_class farOff() {
    if (!large_ || chance(50)) return 0;
    const mpz_class power = oracle::powerOfTen(*rc::gen::element(6U, 9U, 12U, 17U, 18U, 21U));
    return *rc::gen::element(-1, 1) * power + *rc::gen::inRange(0, 10);
  }

  /// A positive number of that size or its reciprocal, else 1.
  mpq_class weight() {
    const mpq_class number = abs(farOff());
    if (number == 0) return 1;
    return chance(70) ? number : mpq_class(1 / number);
  }

  void addVariable() {
    const unsigned decimals = *rc::gen::element(0U, 0U, 0U, 0U, 1U, 2U);
    const mpq_class step = mpq_class(1) / oracle::powerOfTen(decimals);
    const mpq_class value = step * (farOff() + *rc::gen::inRange(-2, 3));
    // What rounding to the steps takes away again.
    const mpq_class below = step * *rc::gen::element(0, 0, 0, 1) / *rc::gen::element(2, 3, 10);
    const mpq_class above = step * *rc::gen::element(0, 0, 0, 1) / *rc::gen::element(2, 3, 10);
    Bound lower{0, value - step * *rc::gen::inRange(0, 3) - below};
    Bound upper{0, value + step * *rc::gen::inRange(0, 3) + above};
    mpq_class anchor = value;
    switch (*rc::gen::inRange(0, 12)) {
      case 0:
        lower = {-1, 0};
        break;
      case 1:
        upper = {1, 0};
        break;
      case 2:
        lower = {-1, 0};
        upper = {1, 0};
        break;
      case 3:
        lower = upper = {0, value};
        break;
      case 4:
        anchor = value + number();
        lower = upper = {0, anchor};
        break;
      default:
        break;
    }
    if (chance(1)) makeEmpty(lower, upper, step);
    result_.problem.lower.push_back(lower);
    result_.problem.upper.push_back(upper);
    result_.problem.decimals.push_back(decimals);
    anchor_.push_back(anchor);
  }

  /// No value between the bounds.
  static void makeEmpty(Bound& lower, Bound& upper, const mpq_class& step) {
    const int sign = *rc::gen::element(-1, 0, 1);
    lower = sign != 0 ? Bound{sign, 0} : Bound{0, step / 3};
    upper = sign != 0 ? Bound{sign, 0} : Bound{0, step / 2};
  }

  void addEquation() {
    auto& equations = result_.problem.equations;
    oracle::Equation equation{row(), 0, 0};
    equation.value = atAnchor(equation.row);
    const std::size_t known = equations.size();
    if (known > 0 && chance(45)) equation = dependentEquation();
    if (chance(8)) {
      equation = {Point(anchor_.size()), 0, 0};
    } else if (equations.size() == known && chance(30)) {
      equation.modulus = number();
      equation.value += equation.modulus * *rc::gen::inRange(-2, 3);
    }
    if (chance(8)) equation.value += number();
    equations.push_back(equation);
  }

  const oracle::Equation& earlierEquation() const {
    const auto& equations = result_.problem.equations;
    return equations[*rc::gen::inRange<std::size_t>(0, equations.size())];
  }

  /// A copy, a multiple or a sum of earlier ones.
  oracle::Equation dependentEquation() {
    oracle::Equation sum{Point(anchor_.size()), 0, 0};
    for (int count = *rc::gen::inRange(1, 3); count > 0; --count) {
      const oracle::Equation& part = earlierEquation();
      const mpq_class factor = *rc::gen::element(-2, -1, 1, 1, 2);
      for (std::size_t j = 0; j < sum.row.size(); ++j) sum.row[j] += factor * part.row[j];
      sum.value += factor * part.value;
      // A congruence keeps its modulus in a copy.
      sum.modulus = part.modulus;
    }
    return sum;
  }

  void addInequation() {
    oracle::Inequation inequation{row(), {}, {}};
    if (!result_.problem.equations.empty() && chance(10)) inequation.row = earlierEquation().row;
    const mpq_class value = atAnchor(inequation.row);
    inequation.lower.value = value - notNegative();
    inequation.upper.value = value + notNegative();
    switch (*rc::gen::inRange(0, 12)) {
      case 0:
      case 1:
        inequation.lower = {-1, 0};
        break;
      case 2:
      case 3:
        inequation.upper = {1, 0};
        break;
      case 4:
        inequation.lower = inequation.upper = {0, value};
        break;
      case 5:
        inequation.lower = {-1, 0};
        inequation.upper = {1, 0};
        break;
      case 6:
        touchCorner(inequation);
        break;
      default:
        break;
    }
    if (chance(1)) {
      const int sign = *rc::gen::element(-1, 1);
      inequation.lower = inequation.upper = {sign, 0};
    } else if (chance(12) && inequation.lower.infinite == 0 && inequation.upper.infinite == 0) {
      const mpq_class moved = number();
      inequation.lower.value += moved;
      inequation.upper.value += moved;
    }
    result_.problem.inequations.push_back(inequation);
  }

  /// The greatest value that the row has in the box is all that is allowed, where the
  /// box is closed.
  void touchCorner(oracle::Inequation& inequation) const {
    mpq_class greatest = 0;
    for (std::size_t j = 0; j < anchor_.size(); ++j) {
      const oracle::Range range = oracle::rangeOf(result_.problem, j);
      const auto& end = inequation.row[j] > 0 ? range.greatest : range.least;
      if (inequation.row[j] == 0) continue;
      if (!end) return;
      greatest += inequation.row[j] * *end;
    }
    inequation.lower = {0, greatest};
    inequation.upper = {0, greatest + 2};
  }

  void addTargets(int count) {
    Problem& problem = result_.problem;
    const bool withThresholds = chance(60);
    const bool onlyFinite = chance(60);
    const bool withGoals = chance(50);
    for (; count > 0; --count) {
      oracle::Target target{{*rc::gen::element(-1, 1), 0}, row()};
      const mpq_class value = atAnchor(target.row);
      if (withGoals && chance(60)) target.goal = {0, value + number()};
      const int sign = target.goal.infinite > 0 ? 1 : -1;
      Bound threshold{0, value - sign * notNegative()};
      if (!onlyFinite && chance(50)) threshold = {*rc::gen::element(-1, 1), 0};
      problem.targets.push_back(target);
      if (withThresholds) problem.thresholds.push_back(threshold);
    }
  }

  /// Multiplies rows with all that belongs to them, in a problem of large numbers.
  void weighRows() {
    const auto multiply = [](Point& row, const std::vector<mpq_class*>& values,
                             const mpq_class& factor) {
      for (mpq_class& coefficient : row) coefficient *= factor;
      for (mpq_class* value : values) *value *= factor;
    };
    Problem& problem = result_.problem;
    for (oracle::Equation& row : problem.equations)
      multiply(row.row, {&row.value, &row.modulus}, weight());
    for (oracle::Inequation& row : problem.inequations)
      multiply(row.row, {&row.lower.value, &row.upper.value}, weight());
    for (std::size_t i = 0; i < problem.targets.size(); ++i) {
      oracle::Target& target = problem.targets[i];
      std::vector<mpq_class*> values = {&target.goal.value};
      if (!problem.thresholds.empty()) values.push_back(&problem.thresholds[i].value);
      multiply(target.row, values, weight());
    }
  }

  SmallProblem result_;
  /// Variables and rows of large numbers.
  bool large_ = false;
  /// The point that the rows are built around.
  Point anchor_;
  std::vector<int> denominators_;
};

std::vector<mpq_class> valuesAround(const oracle::Range& range) {
  constexpr int reach = 3;
  if (range.empty) return {};
  if (range.constant) return {*range.least};
  mpq_class first = -reach * range.step;
  mpq_class last = reach * range.step;
  if (range.least) first = *range.least - range.step;
  if (range.greatest) last = *range.greatest + range.step;
  if (range.least && !range.greatest) last = first + 2 * reach * range.step;
  if (range.greatest && !range.least) first = last - 2 * reach * range.step;
  std::vector<mpq_class> values;
  for (mpq_class value = first; value <= last; value += range.step) values.push_back(value);
  return values;
}

}  // namespace

Vanu<QQ> SmallProblem::record() const {
  Problem accepted = problem;
  for (oracle::Inequation& row : accepted.inequations)
    if (isUseless(row)) row.upper = {0, 0};
  const std::string text = oracle::problemText(accepted);
  TextCursor source(text);
  Vanu<QQ> record;
  parseOpt(source, record);
  record.updateFixedTargets();
  for (std::size_t i = 0; i < problem.inequations.size(); ++i)
    if (isUseless(problem.inequations[i])) record.ru[static_cast<Index>(i) + 1] = QQ::infinity();
  if (!namesModuli) record.qg.clear();
  return record;
}

rc::Gen<SmallProblem> arbitrarySmallProblem() {
  // A small size would draw the first choices alone.
  return rc::gen::resize(rc::kNominalSize, rc::gen::exec([] { return Builder().build(); }));
}

std::vector<Point> pointsAround(const Problem& problem) {
  std::vector<Point> points(1);
  for (std::size_t j = 0; j < problem.lower.size(); ++j) {
    const std::vector<mpq_class> values = valuesAround(oracle::rangeOf(problem, j));
    std::vector<Point> longer;
    for (const Point& point : points) {
      for (const mpq_class& value : values) {
        longer.push_back(point);
        longer.back().push_back(value);
      }
    }
    points = std::move(longer);
  }
  return points;
}

void showValue(const SmallProblem& problem, std::ostream& stream) {
  stream << "\n" << oracle::problemText(problem.problem);
  if (!problem.namesModuli) stream << "without moduli\n";
}

}  // namespace starsift::test
