// Linear programs in floating point against those in rationals.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include "algorithms/programs/DualSimplex.h"
#include "algorithms/programs/ExactSimplex.h"
#include "numbers/Conversion.h"

namespace starsift {
namespace {

struct Range {
  std::optional<int> lower;
  std::optional<int> upper;
};

/// A program with small integers, mostly with points and mostly with bounds.
struct SmallProgram {
  std::vector<int> cost;
  std::vector<Range> columns;
  std::vector<std::vector<int>> rows;
  std::vector<Range> rowRanges;
};

Range arbitraryRange(bool isOpen) {
  const int lower = *rc::gen::inRange(-9, 10);
  const int upper = lower + *rc::gen::inRange(0, 9);
  const int open = isOpen ? *rc::gen::inRange(0, 8) : 0;
  return {open & 1 ? std::nullopt : std::optional(lower),
          open & 2 ? std::nullopt : std::optional(upper)};
}

SmallProgram arbitraryProgram(bool hasOpenColumns) {
  const auto columns = *rc::gen::inRange<std::size_t>(1, 8);
  const auto rows = *rc::gen::inRange<std::size_t>(0, 7);
  const auto line = rc::gen::container<std::vector<int>>(columns, rc::gen::inRange(-6, 7));
  SmallProgram program;
  program.cost = *line;
  for (std::size_t k = 0; k < columns; ++k)
    program.columns.push_back(arbitraryRange(hasOpenColumns));
  for (std::size_t i = 0; i < rows; ++i) {
    program.rows.push_back(*line);
    program.rowRanges.push_back(arbitraryRange(true));
  }
  return program;
}

LinearProgram::Bounds floatingBounds(const Range& range) {
  constexpr double endless = std::numeric_limits<double>::infinity();
  return {range.lower ? *range.lower : -endless, range.upper ? *range.upper : endless};
}

/// In the units of columns and rows, powers of `base`.
LinearProgram floating(const SmallProgram& small, double base) {
  LinearProgram program;
  const auto unit = [base](std::size_t k) { return std::pow(base, static_cast<double>(k % 5)); };
  for (std::size_t k = 0; k < small.columns.size(); ++k) {
    program.cost.push_back(small.cost[k] * unit(k));
    const auto [lower, upper] = floatingBounds(small.columns[k]);
    program.columns.push_back({lower / unit(k), upper / unit(k)});
  }
  for (std::size_t i = 0; i < small.rows.size(); ++i) {
    program.rows.emplace_back();
    for (std::size_t k = 0; k < small.columns.size(); ++k)
      if (small.rows[i][k] != 0)
        program.rows[i].push_back({k, small.rows[i][k] * unit(k) * unit(i)});
    const auto [lower, upper] = floatingBounds(small.rowRanges[i]);
    program.rowBounds.push_back({lower * unit(i), upper * unit(i)});
  }
  return program;
}

ExactSimplex::Row exactRow(const std::vector<int>& coefficients, const Range& range) {
  ExactSimplex::Row row;
  for (const int entry : coefficients) row.coefficients.emplace_back(entry);
  if (range.lower) row.lower = QQ(*range.lower);
  if (range.upper) row.upper = QQ(*range.upper);
  return row;
}

/// The rows are the columns, then the rows, then the cost.
ExactSimplex exact(const SmallProgram& small) {
  std::vector<ExactSimplex::Row> rows;
  for (std::size_t k = 0; k < small.columns.size(); ++k) {
    std::vector<int> unit(small.columns.size());
    unit[k] = 1;
    rows.push_back(exactRow(unit, small.columns[k]));
  }
  for (std::size_t i = 0; i < small.rows.size(); ++i)
    rows.push_back(exactRow(small.rows[i], small.rowRanges[i]));
  rows.push_back(exactRow(small.cost, {}));
  return {small.columns.size(), rows, [] { return true; }};
}

bool always() {
  return true;
}

double costAt(const LinearProgram& program, const std::vector<double>& point) {
  double sum = 0;
  for (std::size_t k = 0; k < point.size(); ++k) sum += program.cost[k] * point[k];
  return sum;
}

/// The bound that multipliers prove, in floating point; endless if none.
double boundOf(const LinearProgram& program, std::vector<double> cost,
               const std::vector<double>& multipliers) {
  constexpr double asGoodAsZero = 1e-9;
  const auto least = [](double factor, const LinearProgram::Bounds& bounds) {
    if (std::fabs(factor) < asGoodAsZero) return 0.0;
    return factor * (factor > 0 ? bounds.lower : bounds.upper);
  };
  double sum = 0;
  for (std::size_t i = 0; i < program.rows.size(); ++i) {
    for (const auto& [k, value] : program.rows[i]) cost[k] -= multipliers[i] * value;
    sum += least(multipliers[i], program.rowBounds[i]);
  }
  for (std::size_t k = 0; k < cost.size(); ++k) sum += least(cost[k], program.columns[k]);
  return sum;
}

/// `base` is that of the units. With columns that have bounds nothing may be left open.
void checkProgram(const SmallProgram& small, double base, bool mayStop) {
  const LinearProgram program = floating(small, base);
  const ProgramEnd end = solveProgram(program, &always);
  if (end.kind == ProgramEnd::Kind::stopped) {
    RC_ASSERT(mayStop);
    return;
  }
  ExactSimplex simplex = exact(small);
  const bool isFeasible = simplex.makeFeasible() == SimplexEnd::reached;
  RC_ASSERT((end.kind == ProgramEnd::Kind::least) == isFeasible);
  if (!isFeasible) return;
  const std::size_t cost = small.columns.size() + small.rows.size();
  RC_ASSERT(simplex.minimise(cost, 1) == SimplexEnd::reached);
  const double expected = static_cast<double>(toDbl(simplex.value(cost), false));
  const double tolerance = 1e-6 * (1 + std::fabs(expected));
  RC_ASSERT(std::fabs(costAt(program, end.point) - expected) < tolerance);
  // With other units there are no coefficients that are clearly 0.
  if (base != 1) return;
  RC_ASSERT(std::fabs(boundOf(program, program.cost, end.multipliers) - expected) < tolerance);
}

RC_GTEST_PROP(DualSimplex, FindsTheLeastPointOfABox, ()) {
  checkProgram(arbitraryProgram(false), 1, false);
}

RC_GTEST_PROP(DualSimplex, FindsTheLeastPointWhereSidesAreOpen, ()) {
  checkProgram(arbitraryProgram(true), 1, true);
}

RC_GTEST_PROP(DualSimplex, DoesNotDependOnUnits, ()) {
  checkProgram(arbitraryProgram(false), 10, false);
}

}  // namespace
}  // namespace starsift
