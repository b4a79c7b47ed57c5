#include "search/decide/RelaxedProblem.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

#include "algorithms/programs/DualSimplex.h"
#include "search/decide/FormRange.h"

namespace starsift {

namespace {

/// Entries of the tableau.
constexpr std::size_t mostEntries = 4'000'000;

/// Multipliers are rounded to so many bits of the largest one.
constexpr int multiplierBits = 96;

constexpr double endless = std::numeric_limits<double>::infinity();

struct Term {
  std::size_t column;
  ZZ factor;
};

/// A sum of terms within a range.
struct ProgramRow {
  std::vector<Term> terms;
  IntegerRange range;
};

/// A linear program in integers.
struct Program {
  std::vector<IntegerRange> columns;
  std::vector<ZZ> cost;
  std::vector<ProgramRow> rows;
};

std::vector<Term> termsOf(const IntegerForm& form) {
  std::vector<Term> terms;
  for (std::size_t k = 0; k < form.coefficients.size(); ++k)
    if (!form.coefficients[k].isZero()) terms.push_back({k, form.coefficients[k]});
  return terms;
}

/// A column that is at least the magnitude of the deviation, and its two rows.
void addDeviation(const IntegerProblem& problem, const IntegerForm& deviation, Program& program) {
  const std::size_t column = program.columns.size();
  IntegerRange values = valuesOver(problem.box, deviation);
  IntegerRange magnitude{ZZ(), std::nullopt};
  if (values.isFinite())
    magnitude.upper =
        std::max(abs(*values.lower + deviation.constant), abs(*values.upper + deviation.constant));
  program.columns.push_back(std::move(magnitude));
  program.cost.push_back(ZZ::one());
  std::vector<Term> terms = termsOf(deviation);
  terms.push_back({column, ZZ::one()});
  program.rows.push_back({terms, {-deviation.constant, std::nullopt}});
  terms.back().factor = ZZ(-1);
  program.rows.push_back({std::move(terms), {std::nullopt, -deviation.constant}});
}

Program programOf(const IntegerProblem& problem) {
  Program program{problem.box, std::vector<ZZ>(problem.variableCount()), {}};
  for (const IntegerEquation& equation : problem.equations)
    if (equation.modulus.isZero())
      program.rows.push_back(
          {termsOf(equation.form), {-equation.form.constant, -equation.form.constant}});
  for (const RangedForm& row : problem.ranges)
    program.rows.push_back({termsOf(row.form), row.range});
  if (!problem.objective) return program;
  program.cost = problem.objective->linear.coefficients;
  for (const IntegerForm& deviation : problem.objective->deviations)
    addDeviation(problem, deviation, program);
  return program;
}

double nearest(const ZZ& value) {
  return mpz_get_d(value.get());
}

LinearProgram::Bounds nearest(const IntegerRange& range) {
  return {range.lower ? nearest(*range.lower) : -endless,
          range.upper ? nearest(*range.upper) : endless};
}

LinearProgram floatingProgram(const Program& program) {
  LinearProgram result;
  for (const ZZ& cost : program.cost) result.cost.push_back(nearest(cost));
  for (const IntegerRange& range : program.columns) result.columns.push_back(nearest(range));
  for (const ProgramRow& row : program.rows) {
    result.rows.emplace_back();
    for (const Term& term : row.terms)
      result.rows.back().push_back({term.column, nearest(term.factor)});
    result.rowBounds.push_back(nearest(row.range));
  }
  return result;
}

/// All numbers are far inside the range of double.
bool isModest(const Program& program) {
  constexpr std::size_t mostBits = 400;
  const auto isShort = [](const ZZ& value) { return mpz_sizeinbase(value.get(), 2) <= mostBits; };
  const auto isShortRange = [&isShort](const IntegerRange& range) {
    return (!range.lower || isShort(*range.lower)) && (!range.upper || isShort(*range.upper));
  };
  const auto isShortRow = [&](const ProgramRow& row) {
    return isShortRange(row.range) &&
           std::all_of(row.terms.begin(), row.terms.end(),
                       [&isShort](const Term& term) { return isShort(term.factor); });
  };
  return std::all_of(program.columns.begin(), program.columns.end(), isShortRange) &&
         std::all_of(program.cost.begin(), program.cost.end(), isShort) &&
         std::all_of(program.rows.begin(), program.rows.end(), isShortRow);
}

/// value * 2^shift, rounded down.
ZZ shifted(double value, int shift) {
  constexpr int mantissaBits = 53;
  int exponent = 0;
  const double mantissa = std::frexp(value, &exponent);
  ZZ result(static_cast<long>(std::ldexp(mantissa, mantissaBits)));
  exponent += shift - mantissaBits;
  if (exponent >= 0)
    mpz_mul_2exp(result.get(), result.get(), static_cast<mp_bitcnt_t>(exponent));
  else
    mpz_fdiv_q_2exp(result.get(), result.get(), static_cast<mp_bitcnt_t>(-exponent));
  return result;
}

/// The least value of factor * v with v in a range; empty if there is none.
std::optional<ZZ> leastProduct(const ZZ& factor, const IntegerRange& range) {
  if (factor.isZero()) return ZZ();
  const std::optional<ZZ>& end = factor.sign() ? range.lower : range.upper;
  return end ? std::optional(factor * *end) : std::nullopt;
}

/// A cost that every point of the program has at least, rounded up, as
/// cost = (cost - sum of multiplier * row) * x + sum of multiplier * value of the row.
std::optional<ZZ> provenLeast(const Program& program, std::vector<ZZ> cost,
                              const std::vector<double>& multipliers) {
  double greatest = 1;
  for (const double multiplier : multipliers) greatest = std::max(greatest, std::fabs(multiplier));
  if (!std::isfinite(greatest)) return std::nullopt;
  const int shift = std::max(0, multiplierBits - std::ilogb(greatest));
  for (ZZ& entry : cost) mpz_mul_2exp(entry.get(), entry.get(), static_cast<mp_bitcnt_t>(shift));
  ZZ sum;
  const auto add = [&sum](const std::optional<ZZ>& least) {
    if (least) sum += *least;
    return least.has_value();
  };
  for (std::size_t i = 0; i < program.rows.size(); ++i) {
    if (multipliers[i] == 0) continue;
    const ZZ multiplier = shifted(multipliers[i], shift);
    for (const Term& term : program.rows[i].terms)
      mpz_submul(cost[term.column].get(), multiplier.get(), term.factor.get());
    if (!add(leastProduct(multiplier, program.rows[i].range))) return std::nullopt;
  }
  for (std::size_t k = 0; k < cost.size(); ++k)
    if (!add(leastProduct(cost[k], program.columns[k]))) return std::nullopt;
  mpz_cdiv_q_2exp(sum.get(), sum.get(), static_cast<mp_bitcnt_t>(shift));
  return sum;
}

/// The point rounded into the box, if it is a solution.
std::optional<std::vector<ZZ>> roundedSolution(const IntegerProblem& problem,
                                               const std::vector<double>& point) {
  std::vector<ZZ> rounded;
  for (std::size_t k = 0; k < problem.variableCount(); ++k) {
    if (!std::isfinite(point[k])) return std::nullopt;
    const IntegerRange& range = problem.box[k];
    ZZ value;
    mpz_set_d(value.get(), std::nearbyint(point[k]));
    if (range.lower && value < *range.lower) value = *range.lower;
    if (range.upper && value > *range.upper) value = *range.upper;
    rounded.push_back(std::move(value));
  }
  if (!isSolution(problem, rounded)) return std::nullopt;
  return rounded;
}

}  // namespace

RelaxedProblem relaxedProblem(const IntegerProblem& problem, const std::function<bool()>& mayGoOn) {
  const Program program = programOf(problem);
  RelaxedProblem result;
  if (program.rows.size() * program.columns.size() > mostEntries || !isModest(program))
    return result;
  const ProgramEnd end = solveProgram(floatingProgram(program), mayGoOn);
  if (end.kind == ProgramEnd::Kind::infeasible) {
    const std::optional<ZZ> least =
        provenLeast(program, std::vector<ZZ>(program.columns.size()), end.multipliers);
    result.isInfeasible = least && *least > ZZ::zero();
    return result;
  }
  if (!problem.objective) return result;
  result.leastObjective = provenLeast(program, program.cost, end.multipliers);
  if (result.leastObjective) *result.leastObjective += problem.objective->linear.constant;
  if (end.kind == ProgramEnd::Kind::least) result.solution = roundedSolution(problem, end.point);
  return result;
}

}  // namespace starsift
