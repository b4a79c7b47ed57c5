#include "search/decide/Relaxation.h"

#include <algorithm>
#include <utility>

namespace starsift {

namespace {

std::optional<QQ> bound(const std::optional<ZZ>& end, const ZZ& start) {
  return end ? std::optional(QQ(*end - start)) : std::nullopt;
}

std::vector<ExactSimplex::Row> rowsOf(const std::vector<Coordinate>& coordinates) {
  std::vector<ExactSimplex::Row> rows;
  for (const Coordinate& coordinate : coordinates) {
    ExactSimplex::Row row;
    for (const ZZ& step : coordinate.steps) row.coefficients.emplace_back(step);
    row.lower = bound(coordinate.range.lower, coordinate.start);
    row.upper = bound(coordinate.range.upper, coordinate.start);
    rows.push_back(std::move(row));
  }
  return rows;
}

/// Stores the end of a range that was missing.
Closing store(std::optional<ZZ>& end, Relaxation::End found) {
  if (found.end == SimplexEnd::stopped) return Closing::stopped;
  if (found.end == SimplexEnd::unbounded) return Closing::open;
  end = std::move(found.value);
  return Closing::closed;
}

}  // namespace

std::vector<Coordinate> coordinatesOf(const BoxCoset& coset) {
  std::vector<Coordinate> coordinates;
  for (std::size_t j = 0; j < coset.point.size(); ++j) {
    Coordinate coordinate{{}, coset.point[j], {coset.lower[j], coset.upper[j]}};
    for (const std::vector<ZZ>& row : coset.basis) coordinate.steps.push_back(row[j]);
    coordinates.push_back(std::move(coordinate));
  }
  return coordinates;
}

Relaxation::Relaxation(std::size_t rank, const std::vector<Coordinate>& coordinates,
                       ExactSimplex::MayGoOn mayGoOn)
    : simplex_(rank, rowsOf(coordinates), std::move(mayGoOn)) {
  for (const Coordinate& coordinate : coordinates) starts_.push_back(coordinate.start);
}

Relaxation::End Relaxation::least(std::size_t j) {
  return extreme(j, 1);
}

Relaxation::End Relaxation::greatest(std::size_t j) {
  return extreme(j, -1);
}

Relaxation::End Relaxation::extreme(std::size_t j, int sign) {
  const SimplexEnd end = simplex_.minimise(j, sign);
  if (end != SimplexEnd::reached) return {end, ZZ()};
  const QQ& value = simplex_.value(j);
  return {end, starts_[j] + (sign > 0 ? ceil(value) : floor(value)).numerator()};
}

std::vector<ZZ> Relaxation::direction() const {
  ZZ scale = ZZ::one();
  for (const QQ& change : simplex_.ray()) scale = lcm(scale, change.nenner());
  std::vector<ZZ> direction;
  ZZ common;
  for (const QQ& change : simplex_.ray()) {
    direction.push_back((change * QQ(scale)).numerator());
    common = gcd(common, abs(direction.back()));
  }
  if (common.isZero()) return direction;
  for (ZZ& change : direction) change = exactQuotient(change, common);
  return direction;
}

Closing closeRanges(std::size_t rank, std::vector<Coordinate>& coordinates,
                    const ExactSimplex::MayGoOn& mayGoOn) {
  const auto isFinite = [](const Coordinate& coordinate) { return coordinate.range.isFinite(); };
  if (std::all_of(coordinates.begin(), coordinates.end(), isFinite)) return Closing::closed;
  Relaxation relaxation(rank, coordinates, mayGoOn);
  const SimplexEnd feasible = relaxation.makeFeasible();
  if (feasible == SimplexEnd::infeasible) return Closing::infeasible;
  if (feasible == SimplexEnd::stopped) return Closing::stopped;
  Closing result = Closing::closed;
  for (std::size_t j = 0; j < coordinates.size(); ++j) {
    IntegerRange& range = coordinates[j].range;
    Closing lower = Closing::closed;
    Closing upper = Closing::closed;
    if (!range.lower) lower = store(range.lower, relaxation.least(j));
    if (!range.upper) upper = store(range.upper, relaxation.greatest(j));
    if (lower == Closing::stopped || upper == Closing::stopped) return Closing::stopped;
    if (lower == Closing::open || upper == Closing::open) result = Closing::open;
  }
  return result;
}

}  // namespace starsift
