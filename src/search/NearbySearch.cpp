#include "search/NearbySearch.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <random>
#include <utility>

#include "algorithms/exact/LastCoordinate.h"
#include "algorithms/reduction/SizeReduce.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "search/Candidate.h"

namespace starsift {

namespace nearbysearch {

/// The most rounds over the steps that one walk makes.
constexpr Index maxRounds = 20;

/// The greatest dimension for which sums and differences of basis vectors are steps too.
constexpr Index maxPaired = 16;

/// Walks after restarts begin up to 2, 4, 8 ... steps away, with this many distances in turn.
constexpr Index distances = 6;

/// An integer from -farthest to farthest.
template <class T>
T randomFactor(std::mt19937_64& random, Index farthest) {
  const auto count = static_cast<std::uint64_t>(2 * farthest + 1);
  return T(static_cast<long>(random() % count) - static_cast<long>(farthest));
}

}  // namespace nearbysearch

template <class T, class R>
void NearbySearch<T, R>::run() {
  if (!isSearched(lattice_)) return;
  checkNearMisses();
  walk();
}

template <class T, class R>
void NearbySearch<T, R>::checkNearMisses() {
  const auto checkInside = [this](const Vector<T>& vector) {
    const std::optional<Vector<T>> inside = movedInside(vector);
    if (inside) lattice_.checkSolution(*inside, Space::raw, 0, Announce::full);
  };
  if (lattice_.found.bestVector.isSet() && !lattice_.stopped())
    checkInside(lattice_.found.bestVector);
  for (Index k = 1; k <= lattice_.basis.n && !lattice_.stopped(); ++k)
    if (!lattice_.isHopeless(lattice_.basis.B()[k]))
      checkInside(lattice_.oriented(lattice_.basis.B()[k], Space::working));
}

template <class T, class R>
std::optional<Vector<T>> NearbySearch<T, R>::movedInside(const Vector<T>& vector) const {
  Vector<T> inside(vector);
  const CoordinateBlock variables = lattice_.blocks().variables;
  for (Index j = variables.first; j < variables.at(1) + lattice_.originalCount(); ++j)
    inside[j] = std::min(std::max(inside[j], lattice_.frame.l[j]), lattice_.frame.r[j]);
  try {
    const std::optional<Star<T>> x = lattice_.starOf(inside);
    if (!x) return std::nullopt;
    // Slacks and deviations follow from the variables.
    lattice_.opt2lat(*x, inside, Space::raw, T(1));
    Vector<T> coordinates;
    // The check of stars has a tolerance for equations, the lattice has none.
    if (!lattice_.frame.liesInBox(lattice_, inside) ||
        !lattice_.coordinatesOf(inside, coordinates, Over::saved))
      return std::nullopt;
  } catch (const ModuloException&) {
    return std::nullopt;
  } catch (const PrecisionException&) {
    // T could hold the vector itself, and a candidate next to it is optional.
    return std::nullopt;
  }
  return inside;
}

template <class T, class R>
void NearbySearch<T, R>::walk() {
  collectSteps();
  if (!hasSolution() && start_ != 0) walkIntoBox(start());
  if (!hasSolution() && lattice_.found.bestVector.isSet()) walkIntoBox(lattice_.found.bestVector);
  if (lattice_.found.bestTarget.isSet()) climb(lattice_.found.bestTarget);
  // Without targets every neighbour is equally good: continue only if several solutions were
  // asked for.
  if (hasSolution() && !lattice_.found.bestTarget.isSet()) {
    if (!wantsSeveral()) return;
    walkOn();
  }
  if (lattice_.params.variate && lattice_.run.restarts > 0 && start_ != 0) walkFromAnywhere();
}

template <class T, class R>
void NearbySearch<T, R>::collectSteps() {
  steps_ = lattice_.basis.untransformed();
  start_ = inhomogeneousRow(steps_, steps_.rowCount());
  // One inhomogeneous vector is the start; subtracting it makes the others homogeneous.
  if (start_ != 0) reduceLast(steps_, start_);
  if (lattice_.basis.n <= nearbysearch::maxPaired) appendPairs();
}

template <class T, class R>
void NearbySearch<T, R>::appendPairs() {
  const Index n = steps_.rowCount();
  steps_.resize(n * n, steps_.columnCount(), false);
  Index last = n;
  for (Index i = 2; i <= n; ++i)
    for (Index j = 1; j < i; ++j) {
      steps_[++last] = steps_[i] + steps_[j];
      steps_[++last] = steps_[i] - steps_[j];
    }
}

template <class T, class R>
bool NearbySearch<T, R>::hasSolution() const {
  return lattice_.found.bestTarget.isSet() || lattice_.found.solutions.isSet();
}

template <class T, class R>
bool NearbySearch<T, R>::wantsSeveral() const {
  const auto& params = lattice_.params;
  return params.sol > 1 || (params.sol <= 0 && params.hasPassOrTimeLimit());
}

template <class T, class R>
Vector<T> NearbySearch<T, R>::start() const {
  return lattice_.oriented(steps_[start_], Space::raw);
}

template <class T, class R>
void NearbySearch<T, R>::walkFromAnywhere() {
  std::mt19937_64 random(lattice_.run.seed + static_cast<std::uint64_t>(lattice_.run.restarts));
  const Index farthest = Index{2} << (lattice_.run.restarts % nearbysearch::distances);
  Vector<T> from = start();
  for (Index k = 1; k <= lattice_.basis.n; ++k)
    if (k != start_)
      subtractMultiple(from, steps_[k], nearbysearch::randomFactor<T>(random, farthest));
  from = walkIntoBox(withLeastDeviations(std::move(from)));
  if (lattice_.At.rowCount() > 0 && lattice_.frame.liesInBox(lattice_, from)) climb(from);
}

template <class T, class R>
void NearbySearch<T, R>::climb(const Vector<T>& from) {
  R value = commonTarget(from);
  // If nothing bounds a target, longer steps would lead further and further away.
  follow(from, Stride::single, [&](const Vector<T>& next) {
    const R nextValue = commonTarget(next);
    if (!(nextValue > value) || !lattice_.frame.liesInBox(lattice_, next)) return false;
    value = nextValue;
    checkArrival(next);
    return true;
  });
}

template <class T, class R>
Vector<T> NearbySearch<T, R>::walkIntoBox(const Vector<T>& from) {
  if (!lattice_.frame.hasLastInBox(from[lattice_.basis.m])) return from;
  R distance = distanceFromBox(from);
  if (distance == R()) checkArrival(from);
  Vector<T> end = follow(from, Stride::growing, [&](const Vector<T>& next) {
    const R nextDistance = distanceFromBox(next);
    if (!(nextDistance < distance)) return false;
    distance = nextDistance;
    if (distance == R()) checkArrival(next);
    return true;
  });
  lattice_.found.shortVectors.offer(end);
  return end;
}

template <class T, class R>
void NearbySearch<T, R>::walkOn() {
  const auto& solutions = lattice_.found.solutions;
  const Vector<T>& filed = solutions[solutions.dimension()];
  const Vector<T> last(filed);
  follow(last, Stride::single, [&](const Vector<T>& next) {
    if (!lattice_.frame.liesInBox(lattice_, next)) return false;
    return (lattice_.checkSolution(next, Space::raw, 0, Announce::full) & CHECK_STORED) != 0;
  });
}

template <class T, class R>
void NearbySearch<T, R>::checkArrival(const Vector<T>& vector) {
  if (lattice_.stopped()) return;
  const auto& best = lattice_.found.bestTarget;
  const bool isBetter = !best.isSet() || commonTarget(vector) > commonTarget(best);
  if (isBetter) lattice_.checkSolution(vector, Space::raw, 0, Announce::full);
}

template <class T, class R>
template <class Move>
Vector<T> NearbySearch<T, R>::follow(Vector<T> at, Stride stride, Move move) {
  bool moved = true;
  for (Index round = 1; moved && round <= nearbysearch::maxRounds; ++round) {
    moved = false;
    const Index most = stride == Stride::growing ? round : 1;
    for (const Vector<T>& step : steps_) {
      if (!(step[lattice_.basis.m] == T()) || supNorm(step) == T()) continue;
      for (const Vector<T>& way : {step, Vector<T>(lattice_.basis.m) - step}) {
        moved = advance(at, way, most, move) || moved;
        if (lattice_.stopped()) return at;
      }
    }
  }
  return at;
}

template <class T, class R>
template <class Move>
bool NearbySearch<T, R>::advance(Vector<T>& at, Vector<T> step, Index most, Move move) {
  Index moves = 0;
  for (; moves < most && notifyStep(lattice_); ++moves) {
    if (moves > 0) step = step + step;
    Vector<T> next = withLeastDeviations(at + step);
    if (!move(next)) break;
    at = std::move(next);
  }
  return moves > 0;
}

template <class T, class R>
R NearbySearch<T, R>::commonTarget(const Vector<T>& vector) const {
  const CoordinateBlock variables = lattice_.blocks().variables;
  R sum = R();
  for (Index i = 1; i <= lattice_.atu.dimension(); ++i) {
    if (lattice_.atu[i] == T()) continue;
    const Index j = variables.at(i);
    sum += NumberConversion<R, T>::nearest(lattice_.atu[i]) *
           (NumberConversion<R, T>::nearest(vector[j]) /
            NumberConversion<R, T>::nearest(lattice_.frame.c[j]));
  }
  return sum;
}

template <class T, class R>
R NearbySearch<T, R>::distanceFromBox(const Vector<T>& vector) const {
  R sum = R();
  for (Index i = lattice_.frame.firstChecked(lattice_); i < lattice_.basis.m; ++i)
    sum += NumberConversion<R, T>::nearest(lattice_.frame.distanceFromBox(vector, i));
  return sum;
}

template <class T, class R>
Vector<T> NearbySearch<T, R>::withLeastDeviations(Vector<T> vector) const {
  const CoordinateBlock deviations = lattice_.blocks().deviations;
  for (Index i = deviations.first; i < deviations.last(); i += 2) {
    const T common = std::min(vector[i], vector[i + 1]) + lattice_.frame.rangeMultiple;
    vector[i] -= common;
    vector[i + 1] -= common;
  }
  return vector;
}

template class NearbySearch<long double, long double>;
template class NearbySearch<QQ, long double>;

}  // namespace starsift
