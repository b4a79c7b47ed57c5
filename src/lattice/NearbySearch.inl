// NearbySearch: bodies, for the files that instantiate Lattice.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <random>
#include <utility>

#include "algorithms/exact/LastCoordinate.h"
#include "algorithms/reduction/SizeReduce.h"
#include "lattice/NearbySearch.h"
#include "params/SearchLimits.h"

namespace starsift {

namespace nearbysearch {

/// Rounds over the basis of one walk at most.
constexpr Index mostRounds = 20;

/// Vectors of a basis at most whose sums and differences are steps too.
constexpr Index mostPaired = 16;

/// Restarts walk from up to 2, 4, 8 ... steps away, so many numbers in turn.
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
  if (lattice_.latticeKind != LatticeKind::full || lattice_.originalCount() == 0) return;
  checkNearMisses();
  walk();
}

template <class T, class R>
void NearbySearch<T, R>::checkNearMisses() {
  const auto checkInside = [this](const Vector<T>& vector) {
    const std::optional<Vector<T>> inside = movedInside(vector);
    if (inside) lattice_.checkSolution(*inside, false, 0, false);
  };
  if (lattice_.bestVector.isSet() && !lattice_.stopped()) checkInside(lattice_.bestVector);
  for (Index k = 1; k <= lattice_.n && !lattice_.stopped(); ++k)
    if (!lattice_.isHopeless(lattice_.B[k])) checkInside(lattice_.oriented(lattice_.B[k], true));
}

template <class T, class R>
std::optional<Vector<T>> NearbySearch<T, R>::movedInside(const Vector<T>& vector) const {
  Vector<T> inside(vector);
  const Index before = lattice_.columnsBeforeVariables();
  for (Index j = before + 1; j <= before + lattice_.originalCount(); ++j)
    inside[j] = std::min(std::max(inside[j], lattice_.l[j]), lattice_.r[j]);
  try {
    const std::optional<Star<T>> x = lattice_.starOf(inside);
    if (!x) return std::nullopt;
    // Slacks and deviations follow from the variables.
    lattice_.opt2lat(*x, inside, false, T(1));
    Vector<T> coordinates;
    // The check of stars has a tolerance for equations, the lattice has none.
    if (!lattice_.liesInBox(inside) || !lattice_.coordinatesOf(inside, coordinates, true))
      return std::nullopt;
  } catch (const ModuloException&) {
    return std::nullopt;
  } catch (const PrecisionException&) {
    // The vector itself was good enough for T, and nothing asks for this one.
    return std::nullopt;
  }
  return inside;
}

template <class T, class R>
void NearbySearch<T, R>::walk() {
  collectSteps();
  if (!hasSolution() && start_ != 0) walkIntoBox(start());
  if (!hasSolution() && lattice_.bestVector.isSet()) walkIntoBox(lattice_.bestVector);
  if (lattice_.bestTarget.isSet()) climb(lattice_.bestTarget);
  // Neighbours without end are no news: without targets somebody must have asked for more.
  if (hasSolution() && !lattice_.bestTarget.isSet()) {
    if (!wantsSeveral()) return;
    walkOn();
  }
  if (lattice_.params.variate && lattice_.restarts > 0 && start_ != 0) walkFromAnywhere();
}

template <class T, class R>
void NearbySearch<T, R>::collectSteps() {
  steps_ = lattice_.backMapAll(lattice_.B);
  start_ = 0;
  for (Index k = 1; k <= lattice_.n; ++k)
    if (lastIsLess(steps_, k, start_)) start_ = k;
  // One inhomogeneous vector is a start, and makes steps of the others.
  if (start_ != 0) reduceLast(steps_, start_);
  if (lattice_.n <= nearbysearch::mostPaired) appendPairs();
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
  return lattice_.bestTarget.isSet() || lattice_.solutions.isSet();
}

template <class T, class R>
bool NearbySearch<T, R>::wantsSeveral() const {
  const auto& params = lattice_.params;
  return params.sol > 1 || (params.sol <= 0 && hasPassOrTimeLimit(params));
}

template <class T, class R>
Vector<T> NearbySearch<T, R>::start() const {
  return lattice_.oriented(steps_[start_], false);
}

template <class T, class R>
void NearbySearch<T, R>::walkFromAnywhere() {
  std::mt19937_64 random(static_cast<std::uint64_t>(lattice_.restarts));
  const Index farthest = Index{2} << (lattice_.restarts % nearbysearch::distances);
  Vector<T> from = start();
  for (Index k = 1; k <= lattice_.n; ++k)
    if (k != start_)
      subtractMultiple(from, steps_[k], nearbysearch::randomFactor<T>(random, farthest));
  from = walkIntoBox(withLeastDeviations(std::move(from)));
  if (lattice_.At.rowCount() > 0 && lattice_.liesInBox(from)) climb(from);
}

template <class T, class R>
void NearbySearch<T, R>::climb(const Vector<T>& from) {
  R value = commonTarget(from);
  // Where nothing bounds a target, longer steps would lead ever further away.
  follow(from, Stride::single, [&](const Vector<T>& next) {
    const R nextValue = commonTarget(next);
    if (!(nextValue > value) || !lattice_.liesInBox(next)) return false;
    value = nextValue;
    checkArrival(next);
    return true;
  });
}

template <class T, class R>
Vector<T> NearbySearch<T, R>::walkIntoBox(const Vector<T>& from) {
  if (!lattice_.hasLastInBox(from[lattice_.m])) return from;
  R distance = distanceFromBox(from);
  if (distance == R()) checkArrival(from);
  return follow(from, Stride::growing, [&](const Vector<T>& next) {
    const R nextDistance = distanceFromBox(next);
    if (!(nextDistance < distance)) return false;
    distance = nextDistance;
    if (distance == R()) checkArrival(next);
    return true;
  });
}

template <class T, class R>
void NearbySearch<T, R>::walkOn() {
  const Vector<T> last = lattice_.solutions[lattice_.solutions.dimension()];
  follow(last, Stride::single, [&](const Vector<T>& next) {
    if (!lattice_.liesInBox(next)) return false;
    return (lattice_.checkSolution(next, false, 0, false) & CHECK_STORED) != 0;
  });
}

template <class T, class R>
void NearbySearch<T, R>::checkArrival(const Vector<T>& vector) {
  if (lattice_.stopped()) return;
  const auto& best = lattice_.bestTarget;
  const bool isBetter = !best.isSet() || commonTarget(vector) > commonTarget(best);
  if (isBetter) lattice_.checkSolution(vector, false, 0, false);
}

template <class T, class R>
template <class Move>
Vector<T> NearbySearch<T, R>::follow(Vector<T> at, Stride stride, Move move) {
  bool moved = true;
  for (Index round = 1; moved && round <= nearbysearch::mostRounds; ++round) {
    moved = false;
    const Index most = stride == Stride::growing ? round : 1;
    for (const Vector<T>& step : steps_) {
      if (!(step[lattice_.m] == T()) || supNorm(step) == T()) continue;
      for (const Vector<T>& way : {step, Vector<T>(lattice_.m) - step}) {
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
  for (; moves < most && mayGoOn(); ++moves) {
    if (moves > 0) step = step + step;
    Vector<T> next = withLeastDeviations(at + step);
    if (!move(next)) break;
    at = std::move(next);
  }
  return moves > 0;
}

template <class T, class R>
bool NearbySearch<T, R>::mayGoOn() {
  if (lattice_.observer != nullptr) lattice_.observer->onStep(lattice_.lastPass);
  return !lattice_.stopped();
}

template <class T, class R>
R NearbySearch<T, R>::commonTarget(const Vector<T>& vector) const {
  const Index before = lattice_.columnsBeforeVariables();
  R sum = R();
  for (Index i = 1; i <= lattice_.atu.dimension(); ++i)
    if (!(lattice_.atu[i] == T()))
      sum += NumberConversion<R, T>::nearest(lattice_.atu[i]) *
             (NumberConversion<R, T>::nearest(vector[before + i]) /
              NumberConversion<R, T>::nearest(lattice_.c[before + i]));
  return sum;
}

template <class T, class R>
R NearbySearch<T, R>::distanceFromBox(const Vector<T>& vector) const {
  R sum = R();
  for (Index i = lattice_.firstChecked(); i < lattice_.m; ++i) {
    if (vector[i] < lattice_.l[i])
      sum += NumberConversion<R, T>::nearest(T(lattice_.l[i] - vector[i]));
    if (vector[i] > lattice_.r[i])
      sum += NumberConversion<R, T>::nearest(T(vector[i] - lattice_.r[i]));
  }
  return sum;
}

template <class T, class R>
Vector<T> NearbySearch<T, R>::withLeastDeviations(Vector<T> vector) const {
  const Index last = lattice_.m - 1 - (lattice_.modsInLattice ? lattice_.modulusCount() : 0);
  for (Index i = last - lattice_.deviationCount + 1; i < last; i += 2) {
    const T common = std::min(vector[i], vector[i + 1]) + lattice_.rangeMultiple;
    vector[i] -= common;
    vector[i + 1] -= common;
  }
  return vector;
}

}  // namespace starsift
