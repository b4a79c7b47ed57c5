#include "search/jump/JumpWalk.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <utility>

namespace starsift {

namespace {

/// A gain below this is rounding.
constexpr double leastGain = 1e-9;

/// Coordinates that are compared for a step.
constexpr std::size_t mostCompared = 3;

/// Coordinates whose steps are computed anew where no step is a gain.
constexpr std::size_t mostRenewed = 100;

/// A coordinate that was moved rests for this many steps, and up to as many more.
constexpr std::uint64_t leastRest = 3;
constexpr std::uint64_t furtherRest = 8;

/// No coordinate goes beyond this in magnitude, so that sums stay exact.
constexpr double farthest = 4503599627370496.0;

double nearest(const NumberRange& range, double value) {
  return std::min(std::max(value, range.lower), range.upper);
}

}  // namespace

void JumpWalk::IndexSet::put(std::size_t index, bool isMember) {
  const std::uint32_t place = places_[index];
  if (isMember == (place != none)) return;
  if (isMember) {
    places_[index] = static_cast<std::uint32_t>(members_.size());
    members_.push_back(static_cast<std::uint32_t>(index));
    return;
  }
  members_[place] = members_.back();
  places_[members_[place]] = place;
  members_.pop_back();
  places_[index] = none;
}

JumpWalk::JumpWalk(JumpProblem problem, std::uint64_t seed)
    : problem_(std::move(problem)),
      random_(seed),
      y_(problem_.box.size()),
      activity_(problem_.rows.size()),
      unit_(problem_.rows.size(), 1),
      target_(problem_.box.size()),
      gain_(problem_.box.size()),
      restsUntil_(problem_.box.size()),
      violated_(problem_.rows.size()),
      gaining_(problem_.box.size()) {
  for (std::size_t i = 0; i < unit_.size(); ++i) {
    double greatest = 0;
    for (const SparseEntry& entry : problem_.rows[i])
      greatest = std::max(greatest, std::fabs(entry.value));
    if (greatest > 0) unit_[i] = 1 / greatest;
  }
  std::vector<double> start(problem_.box.size());
  for (std::size_t j = 0; j < start.size(); ++j) start[j] = nearest(problem_.box[j], 0);
  restart(std::move(start));
}

void JumpWalk::restart(std::vector<double> point) {
  y_ = std::move(point);
  weight_ = unit_;
  std::fill(restsUntil_.begin(), restsUntil_.end(), 0);
  computeActivities();
  for (std::size_t j = 0; j < y_.size(); ++j) computeJump(j);
}

void JumpWalk::computeActivities() {
  for (std::size_t i = 0; i < activity_.size(); ++i) {
    activity_[i] = 0;
    for (const SparseEntry& entry : problem_.rows[i]) activity_[i] += entry.value * y_[entry.index];
    violated_.put(i, violation(i, 0) > 0);
  }
  effort_ += problem_.rows.entryCount();
}

std::vector<double> JumpWalk::kicked(std::vector<double> point, std::size_t count) {
  for (std::size_t k = 0; k < count; ++k) {
    const std::size_t j = random_() % point.size();
    const double change = random_() % 2 == 0 ? 1 : -1;
    const NumberRange& range = problem_.box[j];
    const double value = nearest(range, point[j] + change);
    point[j] = value == point[j] ? nearest(range, point[j] - change) : value;
  }
  return point;
}

void JumpWalk::setMostObjective(double most) {
  const std::size_t i = *problem_.objectiveRow;
  addGains(i, -1, y_.size());
  problem_.rowRanges[i].upper = most;
  addGains(i, 1, y_.size());
  violated_.put(i, violation(i, 0) > 0);
}

bool JumpWalk::isBinary(std::size_t j) const {
  return problem_.box[j].upper - problem_.box[j].lower == 1;
}

void JumpWalk::computeJump(std::size_t j) {
  target_[j] = bestValue(j);
  setGain(j, gainAt(j, target_[j]));
}

double JumpWalk::bestValue(std::size_t j) {
  const NumberRange& range = problem_.box[j];
  if (isBinary(j)) return range.lower + range.upper - y_[j];
  const double best = leastViolated(j);
  if (best != y_[j]) return best;
  const double change = random_() % 2 == 0 ? 1 : -1;
  const double next = nearest(range, y_[j] + change);
  return next == y_[j] ? nearest(range, y_[j] - change) : next;
}

void JumpWalk::addBreakpoints(std::size_t j, const SparseEntry& entry) {
  const std::size_t i = entry.index;
  const double without = activity_[i] - entry.value * y_[j];
  const double growth = weight_[i] * std::fabs(entry.value);
  for (const double end : {problem_.rowRanges[i].lower, problem_.rowRanges[i].upper}) {
    const double value = (end - without) / entry.value;
    if (std::fabs(value) < farthest) breakpoints_.push_back({value, growth});
  }
}

/// The weighted violation is convex in one coordinate, and its slope far to the left is minus the
/// sum of the growths of those breakpoints below which a row is violated.
double JumpWalk::leastViolated(std::size_t j) {
  breakpoints_.clear();
  double slope = 0;
  for (const SparseEntry& entry : problem_.columns[j]) {
    addBreakpoints(j, entry);
    const NumberRange& range = problem_.rowRanges[entry.index];
    const double firstEnd = entry.value > 0 ? range.lower : range.upper;
    if (std::isfinite(firstEnd)) slope -= weight_[entry.index] * std::fabs(entry.value);
  }
  effort_ += problem_.columns[j].size();
  std::sort(breakpoints_.begin(), breakpoints_.end(),
            [](const Breakpoint& a, const Breakpoint& b) { return a.value < b.value; });
  // The least values are from `first` to `last`.
  double first = -farthest;
  double last = farthest;
  for (const Breakpoint& point : breakpoints_) {
    if (slope < -leastGain) first = point.value;
    slope += point.growth;
    if (slope > leastGain) {
      last = point.value;
      break;
    }
  }
  const NumberRange& range = problem_.box[j];
  const double wanted = nearest({first, std::max(first, last)}, y_[j]);
  const double below = nearest(range, std::floor(wanted));
  const double above = nearest(range, std::ceil(wanted));
  return below == above || gainAt(j, below) >= gainAt(j, above) ? below : above;
}

double JumpWalk::gainAt(std::size_t j, double value) {
  const double step = value - y_[j];
  double gain = 0;
  for (const SparseEntry& entry : problem_.columns[j])
    gain += weight_[entry.index] *
            (violation(entry.index, 0) - violation(entry.index, entry.value * step));
  effort_ += problem_.columns[j].size();
  return gain;
}

void JumpWalk::setGain(std::size_t j, double gain) {
  gain_[j] = gain;
  gaining_.put(j, gain > leastGain);
}

void JumpWalk::addGains(std::size_t i, double sign, std::size_t except) {
  const double now = violation(i, 0);
  for (const SparseEntry& entry : problem_.rows[i]) {
    const std::size_t k = entry.index;
    if (k == except) continue;
    const double gain = weight_[i] * (now - violation(i, entry.value * (target_[k] - y_[k])));
    setGain(k, gain_[k] + sign * gain);
  }
  effort_ += problem_.rows[i].size();
}

std::optional<std::size_t> JumpWalk::bestJump() {
  const std::vector<std::uint32_t>& candidates = gaining_.members();
  std::optional<std::size_t> best;
  const std::size_t count = std::min(candidates.size(), mostCompared);
  for (std::size_t k = 0; k < count; ++k) {
    const bool isAll = count == candidates.size();
    const std::size_t j = candidates[isAll ? k : random_() % candidates.size()];
    if (restsUntil_[j] > steps_) continue;
    if (!best || gain_[j] > gain_[*best]) best = j;
  }
  return best;
}

void JumpWalk::step() {
  ++steps_;
  ++effort_;
  const std::optional<std::size_t> best = bestJump();
  if (best) return jump(*best);
  raiseWeights();
  renewJumps();
}

void JumpWalk::jump(std::size_t j) {
  if (!isBinary(j)) target_[j] = bestValue(j);
  const double step = target_[j] - y_[j];
  for (const SparseEntry& entry : problem_.columns[j]) {
    addGains(entry.index, -1, j);
    activity_[entry.index] += entry.value * step;
    violated_.put(entry.index, violation(entry.index, 0) > 0);
    addGains(entry.index, 1, j);
  }
  y_[j] = target_[j];
  restsUntil_[j] = steps_ + leastRest + random_() % furtherRest;
  computeJump(j);
}

void JumpWalk::raiseWeights() {
  for (const std::uint32_t i : violated_.members()) {
    addGains(i, -1, y_.size());
    weight_[i] += unit_[i];
    addGains(i, 1, y_.size());
  }
}

/// The best step of a coordinate changes with the values of its rows, which binary ones, with one
/// step each, needn't know.
void JumpWalk::renewJumps() {
  const std::vector<std::uint32_t>& rows = violated_.members();
  const std::span<const SparseEntry> row = problem_.rows[rows[random_() % rows.size()]];
  if (row.empty()) return;
  std::size_t at = random_() % row.size();
  for (std::size_t k = 0; k < std::min(row.size(), mostRenewed); ++k) {
    if (!isBinary(row[at].index)) computeJump(row[at].index);
    at = at + 1 < row.size() ? at + 1 : 0;
  }
}

}  // namespace starsift
