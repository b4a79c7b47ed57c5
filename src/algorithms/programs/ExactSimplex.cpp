#include "algorithms/programs/ExactSimplex.h"

#include <algorithm>
#include <utility>

namespace starsift {

namespace {

/// Steps of one program; its numbers become long, and Bland's rule may take many.
constexpr std::size_t mostSteps = 20'000;

/// -1, 0, 1.
int signOf(const QQ& value) {
  if (value.isZero()) return 0;
  return value.sign() ? 1 : -1;
}

}  // namespace

ExactSimplex::ExactSimplex(std::size_t variables, const std::vector<Row>& rows, MayGoOn mayGoOn)
    : variables_(variables),
      mayGoOn_(std::move(mayGoOn)),
      lower_(variables),
      upper_(variables),
      values_(variables + rows.size()) {
  for (std::size_t k = 0; k < variables; ++k) nonbasic_.push_back(k);
  for (const Row& row : rows) {
    basic_.push_back(variables + tableau_.size());
    tableau_.push_back(row.coefficients);
    lower_.push_back(row.lower);
    upper_.push_back(row.upper);
  }
}

bool ExactSimplex::step() {
  return ++steps_ <= mostSteps && mayGoOn_();
}

bool ExactSimplex::canRise(std::size_t variable) const {
  return !upper_[variable] || values_[variable] < *upper_[variable];
}

bool ExactSimplex::canFall(std::size_t variable) const {
  return !lower_[variable] || values_[variable] > *lower_[variable];
}

std::optional<std::size_t> ExactSimplex::violatedRow() const {
  std::optional<std::size_t> found;
  for (std::size_t i = 0; i < basic_.size(); ++i) {
    const std::size_t variable = basic_[i];
    const bool isBelow = lower_[variable] && values_[variable] < *lower_[variable];
    const bool isAbove = upper_[variable] && values_[variable] > *upper_[variable];
    if ((isBelow || isAbove) && (!found || variable < basic_[*found])) found = i;
  }
  return found;
}

std::optional<std::size_t> ExactSimplex::columnThatRaises(const std::vector<QQ>& row,
                                                          int sign) const {
  std::optional<std::size_t> found;
  for (std::size_t k = 0; k < nonbasic_.size(); ++k) {
    const int effect = sign * signOf(row[k]);
    const bool fits =
        (effect > 0 && canRise(nonbasic_[k])) || (effect < 0 && canFall(nonbasic_[k]));
    if (fits && (!found || nonbasic_[k] < nonbasic_[*found])) found = k;
  }
  return found;
}

SimplexEnd ExactSimplex::makeFeasible() {
  while (const std::optional<std::size_t> row = violatedRow()) {
    if (!step()) return SimplexEnd::stopped;
    const std::size_t variable = basic_[*row];
    const bool rises = lower_[variable] && values_[variable] < *lower_[variable];
    const QQ& bound = rises ? *lower_[variable] : *upper_[variable];
    const auto column = columnThatRaises(tableau_[*row], rises ? 1 : -1);
    if (!column) return SimplexEnd::infeasible;
    move(*column, (bound - values_[variable]) / entry(*row, *column));
    pivot(*row, *column);
  }
  return SimplexEnd::reached;
}

std::vector<QQ> ExactSimplex::costs(std::size_t variable) const {
  const auto basic = std::find(basic_.begin(), basic_.end(), variable);
  if (basic != basic_.end()) return tableau_[static_cast<std::size_t>(basic - basic_.begin())];
  std::vector<QQ> unit(nonbasic_.size());
  const auto nonbasic = std::find(nonbasic_.begin(), nonbasic_.end(), variable);
  unit[static_cast<std::size_t>(nonbasic - nonbasic_.begin())] = QQ(1);
  return unit;
}

SimplexEnd ExactSimplex::minimise(std::size_t row, int sign) {
  steps_ = 0;
  while (true) {
    const std::vector<QQ> cost = costs(variables_ + row);
    const auto column = columnThatRaises(cost, -sign);
    if (!column) return SimplexEnd::reached;
    if (!step()) return SimplexEnd::stopped;
    const int direction = -sign * signOf(cost[*column]);
    const Block block = blockOf(*column, direction);
    if (!block.length) {
      storeRay(*column, direction);
      return SimplexEnd::unbounded;
    }
    move(*column, direction > 0 ? *block.length : -*block.length);
    if (block.row) pivot(*block.row, *column);
  }
}

ExactSimplex::Block ExactSimplex::blockOf(std::size_t column, int direction) const {
  Block block;
  const std::size_t own = nonbasic_[column];
  const std::optional<QQ>& end = direction > 0 ? upper_[own] : lower_[own];
  if (end) block.length = abs(*end - values_[own]);
  for (std::size_t i = 0; i < basic_.size(); ++i) {
    const int effect = direction * signOf(entry(i, column));
    if (effect == 0) continue;
    const std::size_t variable = basic_[i];
    const std::optional<QQ>& bound = effect > 0 ? upper_[variable] : lower_[variable];
    if (!bound) continue;
    const QQ length = abs((*bound - values_[variable]) / entry(i, column));
    const bool isShorter = !block.length || length < *block.length;
    const bool isFirst =
        block.length && length == *block.length && block.row && variable < basic_[*block.row];
    if (isShorter || isFirst) block = {length, i};
  }
  return block;
}

void ExactSimplex::move(std::size_t column, const QQ& length) {
  values_[nonbasic_[column]] += length;
  for (std::size_t i = 0; i < basic_.size(); ++i)
    addProduct(values_[basic_[i]], entry(i, column), length);
}

void ExactSimplex::pivot(std::size_t row, std::size_t column) {
  std::vector<QQ>& pivotRow = tableau_[row];
  const QQ inverse = QQ(1) / pivotRow[column];
  for (std::size_t k = 0; k < pivotRow.size(); ++k)
    if (k != column && !pivotRow[k].isZero()) pivotRow[k] *= -inverse;
  pivotRow[column] = inverse;
  for (std::size_t i = 0; i < tableau_.size(); ++i) {
    if (i == row || tableau_[i][column].isZero()) continue;
    const QQ factor = std::exchange(tableau_[i][column], QQ());
    for (std::size_t k = 0; k < pivotRow.size(); ++k)
      if (!pivotRow[k].isZero()) addProduct(tableau_[i][k], factor, pivotRow[k]);
  }
  std::swap(basic_[row], nonbasic_[column]);
}

void ExactSimplex::storeRay(std::size_t column, int direction) {
  ray_.assign(values_.size() - variables_, QQ());
  const auto store = [this](std::size_t variable, const QQ& change) {
    if (variable >= variables_) ray_[variable - variables_] = change;
  };
  store(nonbasic_[column], QQ(direction));
  for (std::size_t i = 0; i < basic_.size(); ++i)
    store(basic_[i], QQ(direction) * entry(i, column));
}

}  // namespace starsift
