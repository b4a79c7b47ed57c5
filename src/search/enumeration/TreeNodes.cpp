#include "search/enumeration/TreeNodes.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "search/enumeration/TreeKernels.h"

namespace starsift {

namespace {

/// Intervals wider than this are worth a linear program.
constexpr double wideInterval = 12;

/// In small dimensions, narrower intervals are worth some programs as well: a tree that needs more
/// of them, some hundredths of a second, isn't small.
constexpr double eagerInterval = 0.5;
constexpr std::size_t eagerDimension = 20;
constexpr std::size_t eagerPrograms = 1024;

}  // namespace

template <class Real>
TreeNodes<Real>::TreeNodes(const TreeGeometry<Real>& geometry)
    : geometry_(geometry),
      lower_(1, geometry.coordinates),
      upper_(geometry.halfRanges),
      radii_(geometry.dimension + 1),
      vectors_(geometry.dimension + 1, geometry.coordinates),
      points_(geometry.dimension + 1, geometry.coordinates),
      levels_(geometry.dimension),
      greatest_(geometry.dimension),
      smallest_(geometry.dimension) {
  for (std::size_t j = 0; j < geometry.coordinates; ++j) lower_.at(0, j) = -upper_.at(0, j);
  std::copy_n(geometry.rest[0], vectors_.blocksPerRow(), vectors_[geometry.dimension]);
  std::copy_n(geometry.start[0], points_.blocksPerRow(), points_[geometry.dimension]);
  updateRadius();
}

template <class Real>
void TreeNodes<Real>::setBounds(std::size_t j, Real lower, Real upper) {
  lower_.at(0, j) = lower;
  upper_.at(0, j) = upper;
  isWholeBox_ = false;
  updateRadius();
}

template <class Real>
void TreeNodes<Real>::setPruning(const std::optional<double>& pruning) {
  pruning_ = pruning;
  hasPruned_ = false;
  updateRadius();
}

template <class Real>
void TreeNodes<Real>::updateRadius() {
  Real radius = 0;
  for (std::size_t j = 0; j < geometry_.coordinates; ++j) {
    const Real side = std::max(std::fabs(lower_.at(0, j)), std::fabs(upper_.at(0, j)));
    radius += geometry_.weights[j] * side * side;
  }
  fullRadius_ = radius + geometry_.slacks.length;
  const std::size_t d = geometry_.dimension;
  for (std::size_t k = 0; k <= d; ++k) {
    radii_[k] = fullRadius_;
    if (!pruning_ || k == d) continue;
    const double share = static_cast<double>(d - k) / static_cast<double>(d);
    const double factor =
        std::min(1.0, share + 2 * *pruning_ * share * (1 - share) + *pruning_ / 10);
    radii_[k] =
        geometry_.restLength + static_cast<Real>(factor) * (fullRadius_ - geometry_.restLength);
  }
}

template <class Real>
Real TreeNodes<Real>::support(std::size_t row) {
  Block<Real>* const vector = vectors_[row];
  return stepInBox(vector, vector, vector, 0, lower_[0], upper_[0], vectors_.blocksPerRow());
}

template <class Real>
Real TreeNodes<Real>::step(std::size_t k, Real factor) {
  Block<Real>* const to = vectors_[k];
  const Block<Real>* const from = vectors_[k + 1];
  const Block<Real>* const row = geometry_.directions[k];
  const std::size_t blocks = vectors_.blocksPerRow();
  return isWholeBox_ ? stepInCube(to, from, row, factor, upper_[0], blocks)
                     : stepInBox(to, from, row, factor, lower_[0], upper_[0], blocks);
}

template <class Real>
bool TreeNodes<Real>::isRootCut() {
  const std::size_t d = geometry_.dimension;
  for (std::size_t j = 0; j < geometry_.coordinates; ++j)
    if (lower_.at(0, j) > upper_.at(0, j)) return true;
  for (const std::size_t j : geometry_.constants)
    if (points_.at(d, j) < lower_.at(0, j) || points_.at(d, j) > upper_.at(0, j)) return true;
  const Real length = geometry_.restLength;
  if (length > radii_[d] || length > support(d) + geometry_.slacks.hoelder) return true;
  if (d == 0) return false;
  const std::size_t blocks = points_.blocksPerRow();
  Level& top = levels_[d - 1];
  top.length = length;
  top.offset = moveAndProject(points_[d], points_[d], geometry_.rows[d - 1], 0,
                              geometry_.centres[d - 1], blocks);
  return false;
}

template <class Real>
void TreeNodes<Real>::applyFinals(std::size_t k, Real& least, Real& most) const {
  for (const FinalCoordinate<Real>& final : geometry_.finals[k]) {
    const Real at = points_.at(k + 1, final.coordinate);
    const Real low = (lower_.at(0, final.coordinate) - at) / final.step;
    const Real high = (upper_.at(0, final.coordinate) - at) / final.step;
    least = std::max(least, std::ceil(std::min(low, high)));
    most = std::min(most, std::floor(std::max(low, high)));
    if (least > most) return;
  }
}

template <class Real>
bool TreeNodes<Real>::isEager() const {
  return geometry_.dimension <= eagerDimension && programs_ < eagerPrograms;
}

template <class Real>
bool TreeNodes<Real>::isWide(std::size_t k, const Level& level) const {
  const Real room = std::max(Real(0), radii_[k] - level.length);
  const Real half = std::sqrt(room / geometry_.squaredLengths[k]);
  const Real low = std::max(level.least, -level.offset - half);
  const Real high = std::min(level.most, half - level.offset);
  return high - low > (isEager() ? eagerInterval : wideInterval);
}

template <class Real>
void TreeNodes<Real>::applyProgram(std::size_t k, Level& level) {
  using Program = CoefficientProgram<Real>;
  ++programs_;
  if (greatest_[k] == nullptr) {
    greatest_[k] = std::make_unique<Program>(geometry_, k, Program::Sense::greatest);
    smallest_[k] = std::make_unique<Program>(geometry_, k, Program::Sense::least);
  }
  const Block<Real>* const point = points_[k + 1];
  level.most =
      std::floor(greatest_[k]->bound(lower_[0], upper_[0], point, level.most, level.least));
  if (level.most < level.least) return;
  level.least =
      -std::floor(smallest_[k]->bound(lower_[0], upper_[0], point, -level.least, -level.most));
}

template <class Real>
void TreeNodes<Real>::start(Level& level) const {
  const Real nearest = std::ceil(-level.offset);
  level.up = std::max(level.least, nearest);
  level.down = std::min(level.most, nearest - 1);
}

template <class Real>
void TreeNodes<Real>::enter(std::size_t k) {
  Level& level = levels_[k];
  level.least = geometry_.least[k];
  level.most = geometry_.most[k];
  applyFinals(k, level.least, level.most);
  if (k > 0 && isWide(k, level)) applyProgram(k, level);
  start(level);
}

template <class Real>
bool TreeNodes<Real>::pick(Level& level, Real& coefficient, bool& isUp) const {
  const bool hasUp = level.up <= level.most;
  const bool hasDown = level.down >= level.least;
  if (!hasUp && !hasDown) return false;
  isUp = hasUp && (!hasDown || level.up + level.offset <= -(level.down + level.offset));
  coefficient = isUp ? level.up++ : level.down--;
  return true;
}

template <class Real>
bool TreeNodes<Real>::advance(std::size_t k) {
  Level& level = levels_[k];
  Real coefficient = 0;
  bool isUp = false;
  while (pick(level, coefficient, isUp)) {
    const Real factor = coefficient + level.offset;
    const Real length = level.length + factor * factor * geometry_.squaredLengths[k];
    if (length > radii_[k]) {
      // The other side is as far away or done.
      if (length <= fullRadius_) hasPruned_ = true;
      break;
    }
    if (length <= step(k, factor) + geometry_.slacks.hoelder) {
      ++nodes_;
      level.chosen = coefficient;
      levels_[k - 1].length = length;
      return true;
    }
    (isUp ? level.up : level.down) = isUp ? level.most + 1 : level.least - 1;
  }
  level.up = level.most + 1;
  level.down = level.least - 1;
  return false;
}

template <class Real>
void TreeNodes<Real>::descend(std::size_t k) {
  levels_[k - 1].offset =
      moveAndProject(points_[k], points_[k + 1], geometry_.rows[k], levels_[k].chosen,
                     geometry_.centres[k - 1], points_.blocksPerRow());
}

template <class Real>
void TreeNodes<Real>::enterChild(std::size_t k) {
  const std::size_t programsBefore = programs_;
  const bool wasEager = isEager();
  descend(k);
  enter(k - 1);
  const Level& level = levels_[k - 1];
  if (wasEager && programs_ > programsBefore && level.least > level.most) --nodes_;
}

template <class Real>
void TreeNodes<Real>::choose(std::size_t k, Real coefficient) {
  Level& level = levels_[k];
  const Real factor = coefficient + level.offset;
  level.chosen = coefficient;
  levels_[k - 1].length = level.length + factor * factor * geometry_.squaredLengths[k];
  step(k, factor);
}

template <class Real>
void TreeNodes<Real>::startBelow(const std::vector<Real>& path) {
  std::size_t k = geometry_.dimension - 1;
  for (const Real coefficient : path) {
    Level& level = levels_[k];
    level.least = level.most = coefficient;
    level.up = coefficient + 1;
    level.down = coefficient - 1;
    choose(k, coefficient);
    descend(k--);
  }
}

template <class Real>
void TreeNodes<Real>::enterBetween(std::size_t k, Real least, Real most) {
  levels_[k].least = least;
  levels_[k].most = most;
  start(levels_[k]);
}

template <class Real>
std::pair<Real, Real> TreeNodes<Real>::handOver(std::size_t k, bool isUp, double first) {
  Level& level = levels_[k];
  // Large relative numbers are rounded.
  const Real from = level.chosen + static_cast<Real>(first);
  if (isUp) {
    const Real least = std::max(from, level.up);
    return {least, std::exchange(level.most, std::min(level.most, least - 1))};
  }
  const Real most = std::min(from, level.down);
  return {std::exchange(level.least, std::max(level.least, most + 1)), most};
}

template <class Real>
void TreeNodes<Real>::narrowTo(const TreeNodes& other) {
  for (std::size_t j = 0; j < geometry_.coordinates; ++j)
    if (other.lower(j) > lower(j) || other.upper(j) < upper(j))
      setBounds(j, other.lower(j), other.upper(j));
}

template <class Real>
std::size_t TreeNodes<Real>::recheck(std::size_t k) {
  const std::size_t d = geometry_.dimension;
  if (isRootCut()) return d;
  for (std::size_t i = d; i-- > k;) {
    Level& level = levels_[i];
    applyFinals(i, level.least, level.most);
    const Real length = levels_[i - 1].length;
    if (level.chosen < level.least || level.chosen > level.most || length > radii_[i] ||
        length > support(i) + geometry_.slacks.hoelder)
      return i;
  }
  return k - 1;
}

template <class Real>
LevelChoices TreeNodes<Real>::choicesAt(std::size_t k) const {
  const Level& level = levels_[k];
  const Real room = std::max(radii_[k] - level.length, std::numeric_limits<Real>::min());
  const auto relative = [&level](Real c) { return static_cast<double>(c - level.chosen); };
  return {k,
          static_cast<double>(geometry_.squaredLengths[k] / room),
          static_cast<double>(level.chosen + level.offset),
          relative(level.least),
          relative(level.most),
          relative(level.down),
          relative(level.up)};
}

template class TreeNodes<double>;
template class TreeNodes<long double>;

}  // namespace starsift
