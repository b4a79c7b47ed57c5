// Lattice: the distance of a vector from a solution, and the best vector so far.
#pragma once

#include <algorithm>
#include <ctime>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "algorithms/reduction/SizeReduce.h"
#include "lattice/Lattice.h"
#include "stars/StarNorms.h"

namespace starsift {

namespace latticescore {

/// The target norm, on the problem as read, of the point of a raw vector.
template <class T, class R>
R targetNormOf(const Lattice<T, R>& lattice, const Vector<T>& raw) {
  Vector<T> x;
  lattice.lat2opt(raw, x, Constants::insert, Slacks::omit, Orientation::either);
  const Vanu<T>& problem = lattice.file.problem();
  const Norms<T> norms = computeNorms<T>(problem, problem.At * x, x);
  return NumberConversion<R, T>::nearest(norms.target);
}

/// Counts that a search has its first best vector.
inline void countAccepted(MainMutexVars& runVariables) {
  auto& counter = runVariables[MainMutexVariable::counter5];
  counter.set(std::to_string(std::stoll("0" + counter.copied()) + 1));
}

}  // namespace latticescore

template <class T, class R>
Array<RightOrderPair<Index, R>> Lattice<T, R>::deviationsOf(const Vector<T>& vector) const {
  std::vector<std::pair<R, Index>> amounts;
  for (Index i = frame.firstChecked(*this); i < basis.m; ++i) {
    const T amount = frame.distanceFromBox(vector, i);
    if (!(amount == T())) amounts.emplace_back(NumberConversion<R, T>::nearest(amount), i);
  }
  std::stable_sort(amounts.begin(), amounts.end(),
                   [](const auto& a, const auto& b) { return a.first > b.first; });
  Array<RightOrderPair<Index, R>> deviations(static_cast<Index>(amounts.size()));
  for (Index k = 1; const auto& [amount, i] : amounts) {
    deviations[k].left = i;
    deviations[k].right = amount;
    ++k;
  }
  return deviations;
}

template <class T, class R>
void Lattice<T, R>::score(VectorScore<R>& record, const Vector<T>& vector, Space space) const {
  const Vector<T> raw = space == Space::working ? backMap(vector) : Vector<T>(vector);
  using Traits = NumberTraits<T>;
  record = VectorScore<R>();
  record.status = Traits::absolute(raw[basis.m]) == Traits::absolute(this->homValue)
                      ? ScoreStatus::inhomogeneous
                      : ScoreStatus::homogeneous;
  record.deviations = deviationsOf(raw);
  record.isSolution = record.deviations.dimension() == 0;
  if (!record.isSolution) {
    record.deviationIndex = record.deviations[1].left;
    record.firstDeviation = record.deviations[1].right;
  }
  for (const auto& deviation : record.deviations) record.deviationSum += deviation.right;
  record.squaredNorm = squaredNorm<R>(raw);
  if (this->atuValid && record.isSolution && record.status == ScoreStatus::inhomogeneous)
    record.targetValue = latticescore::targetNormOf(*this, raw);
}

template <class T, class R>
bool Lattice<T, R>::offerBest(const Vector<T>& vector, std::int64_t time) {
  if (found.bestVector.isSet() && found.bestVector == vector) return true;
  if (!frame.hasLastInBox(NumberTraits<T>::absolute(vector[basis.m]))) return false;
  VectorScore<R> record;
  score(record, vector, Space::raw);
  if (found.bestVector.isSet() && !better(record, found.bestRecord)) return false;
  if (!found.bestVector.isSet() && !run.restoring) latticescore::countAccepted(run.runVariables);
  static_cast<Vector<T>&>(found.bestVector) = vector;
  found.bestVector.time = discoveryTime(time);
  found.bestRecord = std::move(record);
  return true;
}

template <class T, class R>
std::int64_t Lattice<T, R>::discoveryTime(std::int64_t time) const {
  // A vector from a backup may have been found in the first second, with time 0.
  if (time != 0 || run.restoring) return time;
  const std::int64_t seconds = secondsSinceStart();
  if (!(params.bench > 0) || seconds <= 0) return seconds;
  constexpr std::int64_t longest = std::numeric_limits<std::int64_t>::max();
  const float scaled = static_cast<float>(seconds) * params.bench;
  // As a float the longest time is 2^63, which is one second too long.
  return scaled < static_cast<float>(longest) ? static_cast<std::int64_t>(scaled) : longest;
}

template <class T, class R>
std::int64_t Lattice<T, R>::secondsSinceStart() const {
  const auto* text = run.runVariables.find(MainMutexVariable::startTime);
  const std::int64_t start = std::stoll("0" + text->copied());
  return start == 0 ? 0 : std::time(nullptr) - start;
}

}  // namespace starsift
