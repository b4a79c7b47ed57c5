// What a normal form is worth at the image of a point: targets, their range, slacks and
// deviations.

#include <algorithm>

#include "support/oracles/NormalFormOracle.h"

namespace starsift::oracle {

namespace {

mpq_class lcmOf(const mpq_class& factor, const mpz_class& denominator) {
  mpz_class result;
  mpz_lcm(result.get_mpz_t(), factor.get_num().get_mpz_t(), denominator.get_mpz_t());
  return result;
}

int signOf(const Target& target) {
  return target.goal.infinite > 0 ? 1 : -1;
}

struct Pair {
  Point x;
  Point z;
};

/// The points that have an image, solutions or not.
std::vector<Pair> imagesOf(const PlainRecord& normal, const std::vector<Point>& points) {
  std::vector<Pair> images;
  for (const Point& x : points)
    if (const std::optional<Point> z = image(normal, x)) images.push_back({x, *z});
  return images;
}

/// The product with the first components of z.
mpq_class headProduct(const Point& row, const Point& z) {
  mpq_class sum = 0;
  for (std::size_t j = 0; j < row.size(); ++j)
    if (row[j] != 0) sum += row[j] * z[j];
  return sum;
}

/// The sum of the targets, those not to maximise taken off.
mpq_class aggregate(const Problem& problem, const Point& x) {
  mpq_class sum = 0;
  for (const Target& target : problem.targets) sum += signOf(target) * product(target.row, x);
  return sum;
}

/// What the slacks of the problem must be worth, in rising order.
Point slacksAt(const Problem& problem, const Point& x) {
  Point slacks;
  for (const Inequation& row : problem.inequations) {
    if ((row.lower.infinite != 0) == (row.upper.infinite != 0)) continue;
    const mpq_class value = product(row.row, x);
    slacks.push_back(row.lower.infinite != 0 ? row.upper.value - value : value - row.lower.value);
  }
  std::sort(slacks.begin(), slacks.end());
  return slacks;
}

/// The slacks as the image counts them, in rising order.
Point slacksIn(const PlainRecord& normal, const Point& z) {
  Point slacks;
  for (std::size_t j = normal.originals(); j < normal.originals() + normal.slacks; ++j)
    slacks.push_back(z[j] / normal.units[j]);
  std::sort(slacks.begin(), slacks.end());
  return slacks;
}

/// For every target to reach how far it is missed, upward positive.
Point deviationsAt(const Problem& problem, const Point& x) {
  Point deviations;
  for (const Target& target : problem.targets)
    if (target.goal.infinite == 0) deviations.push_back(product(target.row, x) - target.goal.value);
  return deviations;
}

Point deviationsIn(const PlainRecord& normal, const Point& z) {
  Point deviations;
  for (std::size_t j = normal.originals() + normal.slacks; j < normal.variables(); j += 2)
    deviations.push_back(z[j + 1] / normal.units[j + 1] - z[j] / normal.units[j]);
  return deviations;
}

}  // namespace

std::vector<std::size_t> targetOrder(const Problem& problem) {
  std::vector<std::size_t> order;
  for (const bool toReach : {false, true})
    for (std::size_t i = 0; i < problem.targets.size(); ++i)
      if ((problem.targets[i].goal.infinite == 0) == toReach) order.push_back(i);
  return order;
}

mpq_class targetFactor(const Problem& problem, const PlainRecord& normal) {
  mpq_class factor = 1;
  std::size_t deviation = normal.originals() + normal.slacks;
  for (const std::size_t i : targetOrder(problem)) {
    const Target& target = problem.targets[i];
    if (target.goal.infinite == 0) {
      factor = lcmOf(factor, normal.units[deviation].get_num());
      deviation += 2;
      continue;
    }
    if (!problem.thresholds.empty() && problem.thresholds[i].infinite == 0)
      factor = lcmOf(factor, problem.thresholds[i].value.get_den());
    for (std::size_t j = 0; j < target.row.size(); ++j) {
      const Range range = rangeOf(problem, j);
      if (!range.single) factor = lcmOf(factor, mpq_class(target.row[j] * range.step).get_den());
    }
  }
  return factor;
}

std::optional<TargetRange> targetRange(const Problem& problem) {
  if (problem.targets.empty() || problem.thresholds.empty()) return std::nullopt;
  TargetRange range;
  Point row(problem.lower.size());
  for (std::size_t i = 0; i < problem.targets.size(); ++i) {
    const Target& target = problem.targets[i];
    if (target.goal.infinite == 0 || problem.thresholds[i].infinite != 0) return std::nullopt;
    range.least += signOf(target) * problem.thresholds[i].value;
    for (std::size_t j = 0; j < row.size(); ++j) row[j] += signOf(target) * target.row[j];
  }
  for (std::size_t j = 0; j < row.size(); ++j) {
    if (row[j] == 0) continue;
    const Bound& bound = row[j] > 0 ? problem.upper[j] : problem.lower[j];
    if (bound.infinite != 0) return std::nullopt;
    range.greatest += row[j] * bound.value;
  }
  if (range.least > range.greatest) return std::nullopt;
  return range;
}

std::string targetFaults(const Problem& problem, const PlainRecord& normal,
                         const std::vector<Point>& points) {
  const mpq_class factor = targetFactor(problem, normal);
  const std::vector<std::size_t> order = targetOrder(problem);
  std::optional<Point> constants;
  for (const auto& [x, z] : imagesOf(normal, points)) {
    Point moved;
    for (std::size_t i = 0; i < order.size(); ++i) {
      const Target& target = problem.targets[order[i]];
      mpq_class value = product(target.row, x);
      if (target.goal.infinite == 0) value = abs(value - target.goal.value);
      moved.push_back(headProduct(normal.targets[i].row, z) - factor * value);
      if (target.goal.infinite == 0 && moved.back() != 0)
        return "another distance from a goal at " + pointText(x);
    }
    if (!constants) constants = moved;
    if (moved != *constants) return "another value of a target at " + pointText(x);
  }
  return "";
}

std::string rangeFaults(const Problem& problem, const PlainRecord& normal,
                        const std::vector<Point>& points) {
  const std::optional<TargetRange> range = targetRange(problem);
  if (normal.hasTargetRange != range.has_value()) return "a range of targets too many or missing";
  if (!range) return "";
  const mpq_class factor = targetFactor(problem, normal);
  for (const auto& [x, z] : imagesOf(normal, points)) {
    const mpq_class before = aggregate(problem, x);
    const mpq_class after = headProduct(normal.aggregate, z);
    if (after - normal.least != factor * (before - range->least) ||
        normal.greatest - after != factor * (range->greatest - before))
      return "another range of targets at " + pointText(x);
  }
  return "";
}

std::string unitFaults(const Problem& problem, const PlainRecord& normal,
                       const std::vector<Point>& points) {
  for (const auto& [x, z] : imagesOf(normal, points)) {
    if (slacksIn(normal, z) != slacksAt(problem, x)) return "other slacks at " + pointText(x);
    if (deviationsIn(normal, z) != deviationsAt(problem, x))
      return "other deviations at " + pointText(x);
  }
  return "";
}

}  // namespace starsift::oracle
