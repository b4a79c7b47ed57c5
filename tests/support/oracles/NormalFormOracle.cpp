#include "support/oracles/NormalFormOracle.h"

#include <algorithm>

namespace starsift::oracle {

namespace {

bool isInteger(const mpq_class& value) {
  return value.get_den() == 1;
}

mpz_class floorOf(const mpq_class& value) {
  mpz_class result;
  mpz_fdiv_q(result.get_mpz_t(), value.get_num().get_mpz_t(), value.get_den().get_mpz_t());
  return result;
}

mpz_class ceilOf(const mpq_class& value) {
  return -floorOf(-value);
}

unsigned decimalsOf(const Problem& problem, std::size_t variable) {
  return problem.decimals.empty() ? 0 : problem.decimals[variable];
}

bool isConstant(const Problem& problem, std::size_t variable) {
  return problem.lower[variable].infinite == 0 &&
         problem.lower[variable] == problem.upper[variable];
}

bool inRange(const Range& range, const mpq_class& value) {
  if (range.empty) return false;
  if (range.least && value < *range.least) return false;
  if (range.greatest && value > *range.greatest) return false;
  return range.constant || isInteger(value / range.step);
}

bool holds(const Equation& equation, const Point& x) {
  const mpq_class difference = product(equation.row, x) - equation.value;
  if (equation.modulus == 0) return difference == 0;
  return isInteger(difference / equation.modulus);
}

/// The components that are left when fixed variables are gone; nothing where one has
/// another value.
std::optional<Point> withoutFixed(const PlainRecord& normal, const Point& x) {
  Point left;
  auto next = normal.fixed.begin();
  for (std::size_t j = 0; j < x.size(); ++j) {
    if (next == normal.fixed.end() || next->first != j) {
      left.push_back(x[j]);
    } else if ((next++)->second != x[j]) {
      return std::nullopt;
    }
  }
  return left;
}

/// What the first `count` components leave of the equation.
mpq_class excess(const Equation& row, const Point& z, std::size_t count) {
  mpq_class sum = -row.value;
  for (std::size_t j = 0; j < count; ++j)
    if (row.row[j] != 0) sum += row.row[j] * z[j];
  return sum;
}

bool addSlacks(const PlainRecord& normal, Point& z) {
  const std::size_t originals = z.size();
  const std::size_t first = normal.equations.size() - normal.liftedRows();
  z.resize(normal.variables());
  for (std::size_t k = 0; k < normal.liftedRows(); ++k) {
    const mpq_class value = excess(normal.equations[first + k], z, originals);
    if (k < normal.slacks) {
      if (value < 0) return false;
      z[originals + k] = value;
    } else {
      const std::size_t pair = originals + normal.slacks + 2 * (k - normal.slacks);
      z[value < 0 ? pair : pair + 1] = abs(value);
    }
  }
  return true;
}

bool addModuli(const PlainRecord& normal, Point& z) {
  const std::size_t variables = z.size();
  Point moduli;
  for (const Equation& row : normal.equations) {
    if (row.modulus == 0) continue;
    const mpq_class& modulus = row.row.at(variables + moduli.size());
    if (modulus == 0) return false;
    moduli.push_back(-excess(row, z, variables) / modulus);
    if (!isInteger(moduli.back())) return false;
  }
  z.insert(z.end(), moduli.begin(), moduli.end());
  return true;
}

std::vector<Range> rangesOf(const Problem& problem) {
  std::vector<Range> ranges;
  for (std::size_t j = 0; j < problem.lower.size(); ++j) ranges.push_back(rangeOf(problem, j));
  return ranges;
}

bool solves(const Problem& problem, const std::vector<Range>& ranges, const Point& x) {
  for (std::size_t j = 0; j < x.size(); ++j)
    if (!inRange(ranges[j], x[j])) return false;
  return std::all_of(problem.equations.begin(), problem.equations.end(),
                     [&](const Equation& row) { return holds(row, x); }) &&
         std::all_of(problem.inequations.begin(), problem.inequations.end(),
                     [&](const Inequation& row) {
                       return between(row.lower, product(row.row, x), row.upper);
                     });
}

}  // namespace

Range rangeOf(const Problem& problem, std::size_t variable) {
  const Bound& lower = problem.lower[variable];
  const Bound& upper = problem.upper[variable];
  const mpz_class scale = powerOfTen(decimalsOf(problem, variable));
  Range range;
  range.step = mpq_class(1) / scale;
  range.empty = lower.infinite > 0 || upper.infinite < 0;
  if (range.empty) return range;
  if (isConstant(problem, variable)) {
    range.least = range.greatest = lower.value;
    range.single = range.constant = true;
    return range;
  }
  if (lower.infinite == 0) range.least = range.step * ceilOf(lower.value * scale);
  if (upper.infinite == 0) range.greatest = range.step * floorOf(upper.value * scale);
  if (range.least && range.greatest) {
    range.empty = *range.least > *range.greatest;
    range.single = *range.least == *range.greatest;
  }
  return range;
}

bool solves(const Problem& problem, const Point& x) {
  return solves(problem, rangesOf(problem), x);
}

std::optional<Point> firstSolution(const Problem& problem, const std::vector<Point>& points) {
  const std::vector<Range> ranges = rangesOf(problem);
  for (const Point& x : points)
    if (solves(problem, ranges, x)) return x;
  return std::nullopt;
}

std::optional<Point> image(const PlainRecord& normal, const Point& x) {
  std::optional<Point> z = withoutFixed(normal, x);
  if (!z || z->size() != normal.originals()) return std::nullopt;
  for (std::size_t j = 0; j < z->size(); ++j)
    (*z)[j] *= powerOfTen(normal.decimals[j].get_num().get_ui());
  for (const std::size_t j : normal.swapped) (*z)[j] = -(*z)[j];
  for (std::size_t j = 0; j < z->size(); ++j) (*z)[j] -= normal.shift[j];
  if (!addSlacks(normal, *z) || !addModuli(normal, *z)) return std::nullopt;
  return z;
}

bool satisfies(const PlainRecord& normal, const Point& z) {
  if (!std::all_of(z.begin(), z.end(), isInteger)) return false;
  for (std::size_t j = 0; j < normal.variables(); ++j)
    if (!between(normal.lower[j], z[j], normal.upper[j])) return false;
  return std::all_of(normal.equations.begin(), normal.equations.end(),
                     [&](const Equation& row) { return product(row.row, z) == row.value; }) &&
         std::all_of(normal.inequations.begin(), normal.inequations.end(),
                     [&](const Inequation& row) {
                       return between(row.lower, product(row.row, z), row.upper);
                     });
}

std::optional<Point> firstDifference(const Problem& problem, const PlainRecord& normal,
                                     const std::vector<Point>& points) {
  const std::vector<Range> ranges = rangesOf(problem);
  for (const Point& x : points) {
    const std::optional<Point> z = image(normal, x);
    if (solves(problem, ranges, x) != (z && satisfies(normal, *z))) return x;
  }
  return std::nullopt;
}

}  // namespace starsift::oracle
