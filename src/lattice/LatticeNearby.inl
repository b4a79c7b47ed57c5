// Lattice: vectors that a pass has not met, but come next to those that it has. Goals to reach
// and a box far from 0 keep a reduced basis away from solutions that are a step from it.
#pragma once

#include <algorithm>
#include <cstdint>
#include <optional>
#include <random>
#include <utility>

#include "algorithms/LastCoordinate.h"
#include "algorithms/SizeReduce.h"
#include "lattice/Lattice.h"

namespace starsift {

namespace latticenearby {

/// Rounds over the basis of one walk at most.
constexpr Index mostRounds = 20;

/// Vectors of a basis at most whose sums and differences are steps too.
constexpr Index mostPaired = 16;

/// The sums and the differences of any two rows behind them.
template <class T>
void appendPairs(Matrix<T>& rows) {
  const Index n = rows.rowCount();
  rows.resize(n * n, rows.columnCount(), false);
  Index last = n;
  for (Index i = 2; i <= n; ++i)
    for (Index j = 1; j < i; ++j) {
      rows[++last] = rows[i] + rows[j];
      rows[++last] = rows[i] - rows[j];
    }
}

/// Restarts walk from up to 2, 4, 8 ... steps away, so many numbers in turn.
constexpr Index distances = 6;

/// An integer from -farthest to farthest.
template <class T>
T randomFactor(std::mt19937_64& random, Index farthest) {
  const auto count = static_cast<std::uint64_t>(2 * farthest + 1);
  return T(static_cast<long>(random() % count) - static_cast<long>(farthest));
}

}  // namespace latticenearby

template <class T, class R>
void Lattice<T, R>::checkNearby() {
  if (latticeKind != LatticeKind::full || this->originalCount() == 0) return;
  checkNearMisses();
  walkNearby();
}

template <class T, class R>
void Lattice<T, R>::checkNearMisses() {
  const auto checkInside = [this](const Vector<T>& vector) {
    const std::optional<Vector<T>> inside = movedInside(vector);
    if (inside) checkSolution(*inside, false, 0, false);
  };
  if (bestVector.isSet() && !stopped()) checkInside(bestVector);
  for (Index k = 1; k <= n && !stopped(); ++k)
    if (!isHopeless(B[k])) checkInside(oriented(B[k], true));
}

template <class T, class R>
std::optional<Vector<T>> Lattice<T, R>::movedInside(const Vector<T>& vector) {
  Vector<T> inside(vector);
  const Index before = columnsBeforeVariables();
  for (Index j = before + 1; j <= before + this->originalCount(); ++j)
    inside[j] = std::min(std::max(inside[j], l[j]), r[j]);
  try {
    const std::optional<Star<T>> x = starOf(inside);
    if (!x) return std::nullopt;
    // Slacks and deviations follow from the variables.
    opt2lat(*x, inside, false, T(1));
    Vector<T> coordinates;
    // The check of stars has a tolerance for equations, the lattice has none.
    if (!liesInBox(inside) || !coordinatesOf(inside, coordinates, true)) return std::nullopt;
  } catch (const ModuloException&) {
    return std::nullopt;
  } catch (const PrecisionException&) {
    // The vector itself was good enough for T, and nothing asks for this one.
    return std::nullopt;
  }
  return inside;
}

template <class T, class R>
void Lattice<T, R>::walkNearby() {
  Matrix<T> steps = backMapAll(B);
  Index start = 0;
  for (Index k = 1; k <= n; ++k)
    if (lastIsLess(steps, k, start)) start = k;
  // One inhomogeneous vector is a start, and makes steps of the others.
  if (start != 0) reduceLast(steps, start);
  if (n <= latticenearby::mostPaired) latticenearby::appendPairs(steps);
  const auto hasSolution = [this] { return bestTarget.isSet() || solutions.isSet(); };
  if (!hasSolution() && start != 0) walkIntoBox(oriented(steps[start], false), steps);
  if (!hasSolution() && bestVector.isSet()) walkIntoBox(bestVector, steps);
  if (bestTarget.isSet()) climb(bestTarget, steps);
  // Neighbours without end are no news: without targets somebody must have asked for more.
  if (hasSolution() && !bestTarget.isSet()) {
    if (!(params.sol > 1)) return;
    walkOn(steps);
  }
  if (params.variate && restarts > 0 && start != 0) walkFromAnywhere(steps, start);
}

template <class T, class R>
void Lattice<T, R>::walkFromAnywhere(const Matrix<T>& steps, Index start) {
  std::mt19937_64 random(static_cast<std::uint64_t>(restarts));
  const Index farthest = Index{2} << (restarts % latticenearby::distances);
  Vector<T> from = oriented(steps[start], false);
  for (Index k = 1; k <= n; ++k)
    if (k != start)
      subtractMultiple(from, steps[k], latticenearby::randomFactor<T>(random, farthest));
  from = walkIntoBox(withLeastDeviations(std::move(from)), steps);
  if (this->At.rowCount() > 0 && liesInBox(from)) climb(from, steps);
}

template <class T, class R>
void Lattice<T, R>::climb(const Vector<T>& from, const Matrix<T>& steps) {
  R value = commonTarget(from);
  walk(from, steps, [&](const Vector<T>& next) {
    const R nextValue = commonTarget(next);
    if (!(nextValue > value) || !liesInBox(next)) return false;
    value = nextValue;
    checkArrival(next);
    return true;
  });
}

template <class T, class R>
Vector<T> Lattice<T, R>::walkIntoBox(const Vector<T>& from, const Matrix<T>& steps) {
  if (!hasLastInBox(from[m])) return from;
  R distance = distanceFromBox(from);
  if (distance == R()) checkArrival(from);
  return walk(from, steps, [&](const Vector<T>& next) {
    const R nextDistance = distanceFromBox(next);
    if (!(nextDistance < distance)) return false;
    distance = nextDistance;
    if (distance == R()) checkArrival(next);
    return true;
  });
}

template <class T, class R>
void Lattice<T, R>::walkOn(const Matrix<T>& steps) {
  walk(solutions[solutions.dimension()].x(), steps, [&](const Vector<T>& next) {
    if (!liesInBox(next)) return false;
    return (checkSolution(next, false, 0, false) & CHECK_STORED) != 0;
  });
}

template <class T, class R>
void Lattice<T, R>::checkArrival(const Vector<T>& vector) {
  const bool isBetter = !bestTarget.isSet() || commonTarget(vector) > commonTarget(bestTarget);
  if (isBetter) checkSolution(vector, false, 0, false);
}

template <class T, class R>
template <class Move>
Vector<T> Lattice<T, R>::walk(Vector<T> at, const Matrix<T>& steps, Move move) {
  bool moved = true;
  for (Index round = 1; moved && round <= latticenearby::mostRounds; ++round) {
    moved = false;
    for (const Vector<T>& step : steps) {
      if (!(step[m] == T()) || supNorm(step) == T()) continue;
      for (const bool back : {false, true}) {
        if (observer != nullptr) observer->onStep(lastPass);
        if (stopped()) return at;
        Vector<T> next = withLeastDeviations(back ? at - step : at + step);
        if (!move(next)) continue;
        at = std::move(next);
        moved = true;
      }
    }
  }
  return at;
}

template <class T, class R>
R Lattice<T, R>::commonTarget(const Vector<T>& vector) const {
  const Index before = columnsBeforeVariables();
  R sum = R();
  for (Index i = 1; i <= this->atu.dimension(); ++i)
    if (!(this->atu[i] == T()))
      sum += NumberConversion<R, T>::nearest(this->atu[i]) *
             (NumberConversion<R, T>::nearest(vector[before + i]) /
              NumberConversion<R, T>::nearest(c[before + i]));
  return sum;
}

template <class T, class R>
R Lattice<T, R>::distanceFromBox(const Vector<T>& vector) const {
  R sum = R();
  for (Index i = firstChecked(); i < m; ++i) {
    if (vector[i] < l[i]) sum += NumberConversion<R, T>::nearest(T(l[i] - vector[i]));
    if (vector[i] > r[i]) sum += NumberConversion<R, T>::nearest(T(vector[i] - r[i]));
  }
  return sum;
}

template <class T, class R>
Vector<T> Lattice<T, R>::withLeastDeviations(Vector<T> vector) const {
  const Index last = m - 1 - (modsInLattice ? this->modulusCount() : 0);
  for (Index i = last - this->deviationCount + 1; i < last; i += 2) {
    const T common = std::min(vector[i], vector[i + 1]) + rangeMultiple;
    vector[i] -= common;
    vector[i + 1] -= common;
  }
  return vector;
}

}  // namespace starsift
