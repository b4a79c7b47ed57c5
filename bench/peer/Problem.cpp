#include "peer/Problem.h"

namespace peer {

namespace {

const mpq_class tolerance(1, 1000000000);

bool within(const mpq_class& value, const Bound& lower, const Bound& upper) {
  const bool above = lower.infinity == 0 ? value >= lower.value : lower.infinity < 0;
  const bool below = upper.infinity == 0 ? value <= upper.value : upper.infinity > 0;
  return above && below;
}

/// value - modulus * the truncated quotient
mpq_class remainder(const mpq_class& value, const mpq_class& modulus) {
  const mpq_class quotient = value / modulus;
  const mpz_class whole = quotient.get_num() / quotient.get_den();
  return value - modulus * whole;
}

}  // namespace

Problem::Problem(std::string_view text) {
  Reader reader(text);
  goals_ = reader.bounds();
  if (reader.take('=')) reader.bounds();  // thresholds have no part in the check
  targets_ = sparse(reader.matrix());
  equations_ = sparse(reader.matrix());
  rightSides_ = reader.vector();
  moduli_ = reader.vector();
  inequations_ = sparse(reader.matrix());
  rowLower_ = reader.bounds();
  rowUpper_ = reader.bounds();
  reader.vector();  // and neither have decimal places
  lower_ = reader.bounds();
  upper_ = reader.bounds();
}

std::vector<Problem::Row> Problem::sparse(const std::vector<std::vector<mpq_class>>& rows) {
  std::vector<Row> result;
  for (const std::vector<mpq_class>& row : rows) {
    Row& entries = result.emplace_back();
    for (std::size_t j = 0; j < row.size(); ++j)
      if (row[j] != 0) entries.emplace_back(j, row[j]);
  }
  return result;
}

mpq_class Problem::product(const Row& row, const std::vector<mpq_class>& x) {
  mpq_class sum;
  for (const auto& [column, entry] : row) sum += entry * x[column];
  return sum;
}

bool Problem::check(Star& star) const {
  if (star.x.size() != lower_.size()) return false;
  for (std::size_t j = 0; j < star.x.size(); ++j)
    if (!within(star.x[j], lower_[j], upper_[j])) return false;
  if (!equationsHold(star.x) || !inequationsHold(star.x)) return false;
  computeTargets(star);
  return true;
}

bool Problem::equationsHold(const std::vector<mpq_class>& x) const {
  for (std::size_t i = 0; i < equations_.size(); ++i) {
    mpq_class difference = product(equations_[i], x) - rightSides_[i];
    if (!moduli_.empty() && moduli_[i] != 0) difference = remainder(difference, moduli_[i]);
    if (abs(difference) > tolerance) return false;
  }
  return true;
}

bool Problem::inequationsHold(const std::vector<mpq_class>& x) const {
  for (std::size_t i = 0; i < inequations_.size(); ++i)
    if (!within(product(inequations_[i], x), rowLower_[i], rowUpper_[i])) return false;
  return true;
}

void Problem::computeTargets(Star& star) const {
  star.targetValues.clear();
  star.targetNorm = 0;
  star.slackNorm = 0;
  for (std::size_t i = 0; i < targets_.size(); ++i) {
    const mpq_class& value = star.targetValues.emplace_back(product(targets_[i], star.x));
    if (goals_[i].infinity != 0) {
      star.targetNorm -= goals_[i].infinity * value;
      continue;
    }
    const mpq_class distance = abs(value - goals_[i].value);
    star.targetNorm += distance;
    star.slackNorm += distance;
  }
}

}  // namespace peer
