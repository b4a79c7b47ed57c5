#include "algorithms/programs/DualSimplex.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <utility>

namespace starsift {

namespace {

using Bounds = LinearProgram::Bounds;

constexpr double endless = std::numeric_limits<double>::infinity();

/// A scaled value may be beyond its bound by this, relative to the bound.
constexpr double feasibility = 1e-9;
/// Reduced costs within this of 0, relative to the largest cost, are as good as 0.
constexpr double dualTolerance = 1e-11;
/// Tableau entries below this are rounding.
constexpr double entryTolerance = 1e-11;
/// No pivot may be smaller.
constexpr double pivotTolerance = 1e-7;
/// Replaces a bound that is missing where the cost falls towards it.
constexpr double farAway = 1e9;
constexpr std::size_t stepsPerLine = 40;
constexpr int scalingRounds = 3;

/// A power of two, so that scaling doesn't round.
double powerNear(double value) {
  return std::exp2(std::round(std::log2(value)));
}

/// Factors of rows and columns that bring the entries near 1: the roots of the products of least
/// and greatest magnitude, in turn.
class Scaling {
 public:
  explicit Scaling(const LinearProgram& program)
      : rows_(program.rows.size(), 1), columns_(program.columns.size(), 1) {
    for (int round = 0; round < scalingRounds; ++round) {
      scale(program, rows_, [](std::size_t i, std::size_t) { return i; });
      scale(program, columns_, [](std::size_t, std::size_t k) { return k; });
    }
    for (double& factor : rows_) factor = powerNear(factor);
    for (double& factor : columns_) factor = powerNear(factor);
  }

  double row(std::size_t i) const { return rows_[i]; }
  double column(std::size_t k) const { return columns_[k]; }
  double entry(std::size_t i, std::size_t k, double value) const {
    return value * rows_[i] * columns_[k];
  }

 private:
  template <class LineOf>
  void scale(const LinearProgram& program, std::vector<double>& factors, const LineOf& lineOf) {
    std::vector<double> least(factors.size(), endless);
    std::vector<double> greatest(factors.size(), 0);
    for (std::size_t i = 0; i < program.rows.size(); ++i)
      for (const auto& [k, value] : program.rows[i]) {
        const double size = std::fabs(entry(i, k, value));
        const std::size_t line = lineOf(i, k);
        least[line] = std::min(least[line], size);
        greatest[line] = std::max(greatest[line], size);
      }
    for (std::size_t line = 0; line < factors.size(); ++line)
      if (greatest[line] > 0) factors[line] /= std::sqrt(least[line]) * std::sqrt(greatest[line]);
  }

  std::vector<double> rows_;
  std::vector<double> columns_;
};

/// One program. Variables below n are the columns, those from there on the values of the rows.
class Tableau {
 public:
  explicit Tableau(const LinearProgram& program);

  ProgramEnd solve(const std::function<bool()>& mayGoOn);

 private:
  /// A basic variable beyond a bound.
  struct Violation {
    std::size_t row;
    /// What it lacks to the bound, with its sign, and what may be lacking.
    double change;
    double tolerance;
  };
  /// A reduced cost that becomes 0 on the way.
  struct Break {
    double ratio;
    std::size_t column;
    double size;
  };

  /// Where a nonbasic variable is. Its reduced cost isn't negative at the lower bound, not positive
  /// at the upper one, and 0 if it has no bounds.
  enum class Side { lower, upper, neither };

  double* line(std::size_t row) { return entries_.data() + row * columns_; }
  const double* line(std::size_t row) const { return entries_.data() + row * columns_; }
  /// Starts a column at the bound that its cost pushes it to.
  void placeColumn(std::size_t column);
  std::optional<Violation> violationOf(std::size_t row) const;
  std::optional<Violation> greatestViolation() const;
  /// The reduced costs that become 0, in their order.
  std::vector<Break> breaksOf(const Violation& violation) const;
  /// Computes the basic variables from the others, without what rounding has added to them.
  void refresh();
  /// The column that enters; flips those before it to their other bounds. None if the bounds of
  /// all columns leave the violation.
  std::optional<std::size_t> enteringColumn(const Violation& violation);
  void moveColumn(std::size_t column, double length);
  void flip(std::size_t column);
  /// Brings the basic variable of the row to its bound by a column, which takes its place.
  void enter(const Violation& violation, std::size_t column);
  void pivot(std::size_t row, std::size_t column);
  void addPivotRow(double* line, double factor) const;
  /// The end with the reduced costs as multipliers.
  ProgramEnd ended(ProgramEnd::Kind kind) const;
  /// A column is where the program has no bound.
  bool isBeyondBounds() const;
  /// The row lacks what columns could give if it weren't for bounds that the program doesn't have.
  bool restsOnAssumedBounds(const Violation& violation) const;
  /// The end with the row that can't be mended as multipliers.
  ProgramEnd infeasible(const Violation& violation) const;

  Scaling scaling_;
  std::size_t columns_;
  std::size_t rows_;
  /// Scaled bounds of all variables.
  std::vector<Bounds> bounds_;
  /// Row i: basic_[i] = sum over k of entries * nonbasic_[k].
  std::vector<double> entries_;
  std::vector<std::size_t> basic_;
  std::vector<std::size_t> nonbasic_;
  /// Of all variables.
  std::vector<double> values_;
  std::vector<Side> sides_;
  /// Of the columns: one bound isn't that of the program.
  std::vector<bool> isAssumed_;
  /// Reduced costs of the nonbasic variables, and what they are divided by.
  std::vector<double> costs_;
  double costScale_ = 1;
  /// No step was made since refresh().
  bool isFresh_ = false;
  /// 1 + squared length of each row.
  std::vector<double> lengths_;
  /// Columns of the pivot row that aren't 0, and that row.
  std::vector<std::size_t> pivotColumns_;
  std::vector<double> pivotRow_;
};

Tableau::Tableau(const LinearProgram& program)
    : scaling_(program),
      columns_(program.columns.size()),
      rows_(program.rows.size()),
      entries_(rows_ * columns_),
      values_(columns_ + rows_),
      sides_(columns_ + rows_, Side::neither),
      isAssumed_(columns_),
      costs_(columns_),
      lengths_(rows_, 1),
      pivotRow_(columns_) {
  double greatest = 0;
  for (std::size_t k = 0; k < columns_; ++k) {
    const double factor = scaling_.column(k);
    bounds_.push_back({program.columns[k].lower / factor, program.columns[k].upper / factor});
    costs_[k] = program.cost[k] * factor;
    greatest = std::max(greatest, std::fabs(costs_[k]));
    nonbasic_.push_back(k);
  }
  if (greatest > 0) costScale_ = powerNear(greatest);
  for (double& cost : costs_) cost /= costScale_;
  for (std::size_t i = 0; i < rows_; ++i) {
    const double factor = scaling_.row(i);
    bounds_.push_back({program.rowBounds[i].lower * factor, program.rowBounds[i].upper * factor});
    basic_.push_back(columns_ + i);
    for (const auto& [k, value] : program.rows[i]) {
      line(i)[k] += scaling_.entry(i, k, value);
      lengths_[i] += line(i)[k] * line(i)[k];
    }
  }
  for (std::size_t k = 0; k < columns_; ++k) placeColumn(k);
}

void Tableau::placeColumn(std::size_t column) {
  Bounds& bounds = bounds_[column];
  const double cost = costs_[column];
  isAssumed_[column] =
      (cost > 0 && bounds.lower == -endless) || (cost < 0 && bounds.upper == endless);
  if (isAssumed_[column])
    (cost > 0 ? bounds.lower : bounds.upper) =
        cost > 0 ? std::min(bounds.upper, 0.0) - farAway : std::max(bounds.lower, 0.0) + farAway;
  if (cost >= 0 && bounds.lower != -endless) {
    sides_[column] = Side::lower;
    moveColumn(column, bounds.lower);
  } else if (bounds.upper != endless) {
    sides_[column] = Side::upper;
    moveColumn(column, bounds.upper);
  }
}

std::optional<Tableau::Violation> Tableau::violationOf(std::size_t row) const {
  const double value = values_[basic_[row]];
  const Bounds& bounds = bounds_[basic_[row]];
  const double bound = value < bounds.lower ? bounds.lower : bounds.upper;
  const Violation violation{row, bound - value, feasibility * (1 + std::fabs(bound))};
  const bool isBeyond = value < bounds.lower || value > bounds.upper;
  if (!isBeyond || std::fabs(violation.change) <= violation.tolerance) return std::nullopt;
  return violation;
}

/// By the distance to the bound in the space of the nonbasic variables.
std::optional<Tableau::Violation> Tableau::greatestViolation() const {
  std::optional<Violation> greatest;
  double most = 0;
  for (std::size_t i = 0; i < rows_; ++i) {
    const std::optional<Violation> violation = violationOf(i);
    if (!violation) continue;
    const double square = violation->change * violation->change / lengths_[i];
    if (square > most) {
      most = square;
      greatest = violation;
    }
  }
  return greatest;
}

std::vector<Tableau::Break> Tableau::breaksOf(const Violation& violation) const {
  std::vector<Break> breaks;
  const double* const row = line(violation.row);
  for (std::size_t k = 0; k < columns_; ++k) {
    const std::size_t variable = nonbasic_[k];
    const double size = std::fabs(row[k]);
    if (size <= entryTolerance || bounds_[variable].lower == bounds_[variable].upper) continue;
    const bool mustRise = (violation.change > 0) == (row[k] > 0);
    if (sides_[variable] == (mustRise ? Side::upper : Side::lower)) continue;
    const double cost = mustRise ? costs_[k] : -costs_[k];
    breaks.push_back({std::max(cost, 0.0) / size, k, size});
  }
  std::sort(breaks.begin(), breaks.end(),
            [](const Break& a, const Break& b) { return a.ratio < b.ratio; });
  return breaks;
}

std::optional<std::size_t> Tableau::enteringColumn(const Violation& violation) {
  const std::vector<Break> breaks = breaksOf(violation);
  double slope = std::fabs(violation.change);
  std::size_t last = 0;
  for (; last < breaks.size(); ++last) {
    const Bounds& bounds = bounds_[nonbasic_[breaks[last].column]];
    slope -= breaks[last].size * (bounds.upper - bounds.lower);
    if (slope <= violation.tolerance) break;
  }
  if (last == breaks.size()) return std::nullopt;
  // Of those as good the one with the largest pivot.
  std::size_t chosen = last;
  while (last > 0 && breaks[last - 1].ratio >= breaks[chosen].ratio - dualTolerance) --last;
  for (std::size_t i = last; i < breaks.size(); ++i) {
    if (breaks[i].ratio > breaks[chosen].ratio + dualTolerance) break;
    if (breaks[i].size > breaks[chosen].size) chosen = i;
  }
  for (std::size_t i = 0; i < last; ++i) flip(breaks[i].column);
  return breaks[chosen].column;
}

void Tableau::moveColumn(std::size_t column, double length) {
  if (length == 0) return;
  values_[nonbasic_[column]] += length;
  for (std::size_t i = 0; i < rows_; ++i)
    if (const double entry = line(i)[column]; entry != 0) values_[basic_[i]] += entry * length;
}

void Tableau::flip(std::size_t column) {
  const std::size_t variable = nonbasic_[column];
  const Bounds& bounds = bounds_[variable];
  const bool isLower = sides_[variable] == Side::lower;
  moveColumn(column, isLower ? bounds.upper - bounds.lower : bounds.lower - bounds.upper);
  values_[variable] = isLower ? bounds.upper : bounds.lower;
  sides_[variable] = isLower ? Side::upper : Side::lower;
}

void Tableau::enter(const Violation& violation, std::size_t column) {
  const std::size_t leaving = basic_[violation.row];
  const bool isLower = violation.change > 0;
  const double bound = isLower ? bounds_[leaving].lower : bounds_[leaving].upper;
  moveColumn(column, (bound - values_[leaving]) / line(violation.row)[column]);
  values_[leaving] = bound;
  sides_[leaving] = isLower ? Side::lower : Side::upper;
  sides_[nonbasic_[column]] = Side::neither;
  pivot(violation.row, column);
  isFresh_ = false;
}

void Tableau::addPivotRow(double* line, double factor) const {
  for (const std::size_t k : pivotColumns_) {
    line[k] += factor * pivotRow_[k];
    if (std::fabs(line[k]) < entryTolerance) line[k] = 0;
  }
}

void Tableau::pivot(std::size_t row, std::size_t column) {
  double* const source = line(row);
  const double inverse = 1 / source[column];
  pivotColumns_.clear();
  for (std::size_t k = 0; k < columns_; ++k) {
    pivotRow_[k] = k == column ? inverse : -source[k] * inverse;
    if (pivotRow_[k] != 0) pivotColumns_.push_back(k);
  }
  for (std::size_t i = 0; i < rows_; ++i) {
    double* const target = line(i);
    const double factor = std::exchange(target[column], 0);
    if (i == row || factor == 0) continue;
    addPivotRow(target, factor);
    lengths_[i] = 1;
    for (std::size_t k = 0; k < columns_; ++k) lengths_[i] += target[k] * target[k];
  }
  const double cost = std::exchange(costs_[column], 0);
  if (cost != 0)
    for (const std::size_t k : pivotColumns_) costs_[k] += cost * pivotRow_[k];
  std::copy(pivotRow_.begin(), pivotRow_.end(), source);
  lengths_[row] = 1;
  for (const std::size_t k : pivotColumns_) lengths_[row] += source[k] * source[k];
  std::swap(basic_[row], nonbasic_[column]);
}

ProgramEnd Tableau::ended(ProgramEnd::Kind kind) const {
  ProgramEnd result{kind, std::vector<double>(columns_), std::vector<double>(rows_)};
  for (std::size_t k = 0; k < columns_; ++k) {
    result.point[k] = values_[k] * scaling_.column(k);
    if (nonbasic_[k] < columns_) continue;
    const std::size_t i = nonbasic_[k] - columns_;
    result.multipliers[i] = costs_[k] * costScale_ * scaling_.row(i);
  }
  return result;
}

bool Tableau::isBeyondBounds() const {
  for (std::size_t k = 0; k < columns_; ++k)
    if (isAssumed_[k] && std::fabs(values_[k]) > farAway / 2) return true;
  return false;
}

bool Tableau::restsOnAssumedBounds(const Violation& violation) const {
  for (std::size_t k = 0; k < columns_; ++k)
    if (nonbasic_[k] < columns_ && isAssumed_[nonbasic_[k]] &&
        std::fabs(line(violation.row)[k]) > entryTolerance)
      return true;
  return false;
}

ProgramEnd Tableau::infeasible(const Violation& violation) const {
  if (restsOnAssumedBounds(violation)) return ended(ProgramEnd::Kind::stopped);
  ProgramEnd result{ProgramEnd::Kind::infeasible, {}, std::vector<double>(rows_)};
  const double sign = violation.change > 0 ? 1 : -1;
  const auto add = [&](std::size_t variable, double value) {
    if (variable < columns_) return;
    const std::size_t i = variable - columns_;
    result.multipliers[i] = sign * value * scaling_.row(i);
  };
  add(basic_[violation.row], 1);
  for (std::size_t k = 0; k < columns_; ++k) add(nonbasic_[k], -line(violation.row)[k]);
  return result;
}

void Tableau::refresh() {
  for (std::size_t i = 0; i < rows_; ++i) {
    double sum = 0;
    for (std::size_t k = 0; k < columns_; ++k) sum += line(i)[k] * values_[nonbasic_[k]];
    values_[basic_[i]] = sum;
  }
  isFresh_ = true;
}

ProgramEnd Tableau::solve(const std::function<bool()>& mayGoOn) {
  const std::size_t most = stepsPerLine * (rows_ + columns_ + 1);
  for (std::size_t step = 0; step < most && mayGoOn(); ++step) {
    const std::optional<Violation> violation = greatestViolation();
    const std::optional<std::size_t> column = violation ? enteringColumn(*violation) : std::nullopt;
    if (column) {
      if (std::fabs(line(violation->row)[*column]) < pivotTolerance) break;
      enter(*violation, *column);
    } else if (!isFresh_) {
      refresh();
    } else if (violation) {
      return infeasible(*violation);
    } else {
      return ended(isBeyondBounds() ? ProgramEnd::Kind::stopped : ProgramEnd::Kind::least);
    }
  }
  return ended(ProgramEnd::Kind::stopped);
}

}  // namespace

ProgramEnd solveProgram(const LinearProgram& program, const std::function<bool()>& mayGoOn) {
  return Tableau(program).solve(mayGoOn);
}

}  // namespace starsift
