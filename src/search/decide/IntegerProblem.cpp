#include "search/decide/IntegerProblem.h"

#include <algorithm>
#include <utility>

#include "numbers/VectorQQ.h"
#include "problem/DecimalSteps.h"
#include "search/decide/ParallelRows.h"

namespace starsift {

namespace {

/// A form over the variables in steps, with rational coefficients.
struct RationalForm {
  std::vector<QQ> coefficients;
  QQ constant;
};

/// The least common multiple of `multiple` and the denominators of the coefficients.
ZZ coefficientScale(const RationalForm& form, ZZ multiple) {
  for (const QQ& entry : form.coefficients) multiple = lcm(multiple, entry.nenner());
  return multiple;
}

/// `scale` makes all numbers of the form integers.
IntegerForm scaled(const RationalForm& form, const ZZ& scale) {
  const QQ factor(scale);
  IntegerForm result;
  result.coefficients.reserve(form.coefficients.size());
  for (const QQ& entry : form.coefficients)
    result.coefficients.push_back((entry * factor).numerator());
  result.constant = (form.constant * factor).numerator();
  return result;
}

ZZ commonFactor(const IntegerForm& form) {
  ZZ factor;
  for (const ZZ& entry : form.coefficients) factor = gcd(factor, abs(entry));
  return factor;
}

/// Rows of the problem as read as forms over its variables in steps.
class Forms {
 public:
  Forms(const IntegerProblem& integers) : integers_(integers) {}

  RationalForm of(const Vector<QQ>& row, const QQ& minus) const {
    RationalForm form{{}, -minus};
    for (Index j = 1; j <= integers_.constants.dimension(); ++j)
      addProduct(form.constant, row[j], integers_.constants[j]);
    for (std::size_t k = 0; k < integers_.original.size(); ++k)
      form.coefficients.push_back(row[integers_.original[k]] / integers_.stepsPerUnit[k]);
    return form;
  }

 private:
  const IntegerProblem& integers_;
};

IntegerEquation equationOf(const RationalForm& form, const QQ& modulus) {
  ZZ scale = lcm(coefficientScale(form, form.constant.nenner()), modulus.nenner());
  return {scaled(form, scale), (abs(modulus) * QQ(scale)).numerator()};
}

/// Divides the form by the common factor of its coefficients and rounds the bounds inwards.
RangedForm rangedOf(const RationalForm& row, const QQ& lower, const QQ& upper) {
  RationalForm free{row.coefficients, QQ()};
  const ZZ scale = coefficientScale(free, ZZ::one());
  RangedForm result{scaled(free, scale), {}};
  const ZZ common = commonFactor(result.form);
  QQ factor(scale);
  if (!common.isZero()) {
    factor = QQ(scale, common);
    for (ZZ& entry : result.form.coefficients) entry = exactQuotient(entry, common);
  }
  if (!lower.isInf()) result.range.lower = ceil((lower - row.constant) * factor).numerator();
  if (!upper.isInf()) result.range.upper = floor((upper - row.constant) * factor).numerator();
  return result;
}

/// No value lies in it.
RangedForm impossible(std::size_t variables) {
  return {{std::vector<ZZ>(variables), ZZ()}, {ZZ::one(), ZZ::zero()}};
}

void addVariables(const Vanu<QQ>& problem, const std::vector<QQ>& steps, IntegerProblem& result) {
  for (Index j = 1; j <= problem.rx.dimension(); ++j) {
    const QQ& lower = problem.lx[j];
    const QQ& upper = problem.rx[j];
    if (lower == upper) {
      result.constants[j] = lower;
      continue;
    }
    const QQ& unit = steps[static_cast<std::size_t>(j - 1)];
    IntegerRange range;
    if (!lower.isInf()) range.lower = ceil(lower * unit).numerator();
    if (!upper.isInf()) range.upper = floor(upper * unit).numerator();
    result.box.push_back(std::move(range));
    result.original.push_back(j);
    result.stepsPerUnit.push_back(unit);
  }
}

void addRows(const Vanu<QQ>& problem, const Forms& forms, IntegerProblem& result) {
  for (Index i = 1; i <= problem.bg.dimension(); ++i) {
    const QQ modulus = problem.qg.isSet() ? problem.qg[i] : QQ();
    result.equations.push_back(equationOf(forms.of(problem.Ag[i], problem.bg[i]), modulus));
    // Stars are checked by such a congruence as by an equation.
    if (modulus.isZero() || !NumberTraits<QQ>::isZero(modulus)) continue;
    const QQ& tolerance = NumberTraits<QQ>::tolerance();
    result.ranges.push_back(rangedOf(forms.of(problem.Ag[i], QQ()), problem.bg[i] - tolerance,
                                     problem.bg[i] + tolerance));
  }
  for (Index i = 1; i <= problem.lu.dimension(); ++i) {
    const QQ& lower = problem.lu[i];
    const QQ& upper = problem.ru[i];
    const bool isReachable = lower != QQ::infinity() && upper != -QQ::infinity();
    result.ranges.push_back(isReachable ? rangedOf(forms.of(problem.Au[i], QQ()), lower, upper)
                                        : impossible(result.box.size()));
  }
}

void addTargets(const Vanu<QQ>& problem, const Forms& forms, IntegerProblem& result) {
  if (!problem.dt.isSet()) return;
  RationalForm linear{std::vector<QQ>(result.box.size()), QQ()};
  std::vector<RationalForm> deviations;
  for (Index i = 1; i <= problem.dt.dimension(); ++i) {
    const QQ& goal = problem.dt[i];
    if (!goal.isInf()) {
      deviations.push_back(forms.of(problem.At[i], goal));
      continue;
    }
    const RationalForm target = forms.of(problem.At[i], QQ());
    const QQ sign(goal.sign() ? -1 : 1);
    for (std::size_t k = 0; k < linear.coefficients.size(); ++k)
      addProduct(linear.coefficients[k], sign, target.coefficients[k]);
    addProduct(linear.constant, sign, target.constant);
  }
  IntegerObjective objective;
  objective.scale = coefficientScale(linear, linear.constant.nenner());
  for (const RationalForm& deviation : deviations)
    objective.scale =
        coefficientScale(deviation, lcm(objective.scale, deviation.constant.nenner()));
  objective.linear = scaled(linear, objective.scale);
  for (const RationalForm& deviation : deviations)
    objective.deviations.push_back(scaled(deviation, objective.scale));
  result.objective = std::move(objective);
}

/// The value is 0 modulo `modulus`, or 0 if that is 0.
bool isFulfilled(const ZZ& value, const ZZ& modulus) {
  return mpz_divisible_p(value.get(), modulus.get()) != 0;
}

bool hasInfiniteConstant(const Vanu<QQ>& problem) {
  for (Index j = 1; j <= problem.rx.dimension(); ++j)
    if (problem.lx[j] == QQ::infinity() || problem.rx[j] == -QQ::infinity()) return true;
  return false;
}

}  // namespace

ZZ IntegerForm::at(const std::vector<ZZ>& y) const {
  ZZ value = constant;
  for (std::size_t k = 0; k < coefficients.size(); ++k)
    mpz_addmul(value.get(), coefficients[k].get(), y[k].get());
  return value;
}

std::vector<ZZ> IntegerForm::along(const std::vector<std::vector<ZZ>>& directions) const {
  // Of thousands of coefficients a few aren't 0.
  std::vector<std::size_t> support;
  for (std::size_t k = 0; k < coefficients.size(); ++k)
    if (!coefficients[k].isZero()) support.push_back(k);
  std::vector<ZZ> values(directions.size());
  for (std::size_t i = 0; i < directions.size(); ++i)
    for (const std::size_t k : support)
      mpz_addmul(values[i].get(), coefficients[k].get(), directions[i][k].get());
  return values;
}

bool IntegerForm::isConstant() const {
  return std::all_of(coefficients.begin(), coefficients.end(),
                     [](const ZZ& entry) { return entry.isZero(); });
}

ZZ IntegerObjective::at(const std::vector<ZZ>& y) const {
  ZZ value = linear.at(y);
  for (const IntegerForm& deviation : deviations) value += abs(deviation.at(y));
  return value;
}

ZZ IntegerObjective::mostBelow(const QQ& norm) const {
  return ceil(norm * QQ(scale)).numerator() - ZZ::one();
}

Vector<QQ> IntegerProblem::pointAsRead(const std::vector<ZZ>& y) const {
  Vector<QQ> x(constants);
  for (std::size_t k = 0; k < original.size(); ++k) x[original[k]] = QQ(y[k]) / stepsPerUnit[k];
  return x;
}

Vector<QQ> IntegerProblem::directionAsRead(const std::vector<ZZ>& direction) const {
  Vector<QQ> x(constants.dimension());
  for (std::size_t k = 0; k < original.size(); ++k)
    x[original[k]] = QQ(direction[k]) / stepsPerUnit[k];
  return x;
}

std::optional<IntegerProblem> integerProblem(const Vanu<QQ>& problem) {
  const auto steps = stepsPerUnit(problem.dx);
  if (!steps || hasInfiniteConstant(problem)) return std::nullopt;
  IntegerProblem result;
  result.constants.resize(problem.rx.dimension(), false);
  addVariables(problem, *steps, result);
  const Forms forms(result);
  addRows(problem, forms, result);
  mergeParallelRows(result.ranges);
  addTargets(problem, forms, result);
  return result;
}

bool isSolution(const IntegerProblem& problem, const std::vector<ZZ>& y) {
  for (std::size_t k = 0; k < y.size(); ++k)
    if (!problem.box[k].contains(y[k])) return false;
  const auto holds = [&y](const IntegerEquation& equation) {
    return isFulfilled(equation.form.at(y), equation.modulus);
  };
  const auto lies = [&y](const RangedForm& row) { return row.range.contains(row.form.at(y)); };
  return std::all_of(problem.equations.begin(), problem.equations.end(), holds) &&
         std::all_of(problem.ranges.begin(), problem.ranges.end(), lies);
}

bool lowersForEver(const IntegerProblem& problem, const std::vector<ZZ>& direction) {
  const auto change = [&direction](const IntegerForm& form) {
    return form.at(direction) - form.constant;
  };
  const auto isFree = [](const IntegerRange& range, const ZZ& step) {
    return step.isZero() || !(step.sign() ? range.upper : range.lower);
  };
  for (std::size_t k = 0; k < direction.size(); ++k)
    if (!isFree(problem.box[k], direction[k])) return false;
  const auto keeps = [&change](const IntegerEquation& equation) {
    return isFulfilled(change(equation.form), equation.modulus);
  };
  return problem.objective && problem.objective->deviations.empty() &&
         !change(problem.objective->linear).sign() &&
         std::all_of(problem.equations.begin(), problem.equations.end(), keeps) &&
         std::all_of(problem.ranges.begin(), problem.ranges.end(),
                     [&](const RangedForm& row) { return isFree(row.range, change(row.form)); });
}

}  // namespace starsift
