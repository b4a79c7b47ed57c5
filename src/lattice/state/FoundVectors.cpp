#include "lattice/state/FoundVectors.h"

#include <algorithm>
#include <memory>

#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"

namespace starsift {

namespace {

template <class T, class U>
void convertAll(Array<T>& target, const Array<U>& source) {
  target.resize(source.dimension(), false);
  for (Index i = 1; i <= source.dimension(); ++i) target[i].convertFrom(source[i], false);
}

template <class T, class U, class R>
void convertSet(SortedSet<HeuristicVector<T, R>>& target,
                const SortedSet<HeuristicVector<U, R>>& source) {
  target.clear();
  target.setLimit(source.limit());
  for (const HeuristicVector<U, R>& vector : source) {
    auto copy = std::make_unique<HeuristicVector<T, R>>();
    copy->convertFrom(vector, false);
    copy->score = vector.score;
    target.append(std::move(copy));
  }
}

}  // namespace

template <class T, class R>
void FoundVectors<T, R>::discard() {
  bestVector.clear();
  bestRecord = VectorScore<R>();
  bestTarget = FiledSolution<T>();
  solutions.clear();
  solutionIndex.forgetAll();
}

template <class T, class R>
void FoundVectors<T, R>::clearCollections() {
  shortVectors = ShortVectors<T>();
  collected.clear();
  chosen.clear();
}

template <class T, class R>
void FoundVectors<T, R>::fit(Index m) {
  if (bestVector.isSet()) bestVector.resize(m, false);
  if (bestTarget.isSet()) bestTarget.resize(m, false);
  for (FiledSolution<T>& solution : solutions) solution.resize(m, false);
  solutionIndex.forgetAll();
  shortVectors.clear();
  for (auto* set : {&collected, &chosen})
    for (HeuristicVector<T, R>& vector : *set) vector.resize(m, false);
}

template <class T, class R>
bool FoundVectors<T, R>::isEmpty() const {
  return !bestVector.isSet() && !bestTarget.isSet() && !solutions.isSet() &&
         collected.count() == 0 && chosen.count() == 0;
}

template <class T, class R>
template <class U>
void FoundVectors<T, R>::convertFrom(const FoundVectors<U, R>& other) {
  bestVector.convertFrom(other.bestVector, false);
  bestRecord = other.bestRecord;
  bestTarget.convertFrom(other.bestTarget, false);
  convertAll(solutions, other.solutions);
  lastFiled = std::max(lastFiled, other.lastFiled);
  solutionIndex.forgetAll();
  shortVectors.convertFrom(other.shortVectors);
  convertSet(collected, other.collected);
  convertSet(chosen, other.chosen);
}

template class FoundVectors<long double, long double>;
template class FoundVectors<QQ, long double>;
template void FoundVectors<long double, long double>::convertFrom(
    const FoundVectors<long double, long double>&);
template void FoundVectors<long double, long double>::convertFrom(
    const FoundVectors<QQ, long double>&);
template void FoundVectors<QQ, long double>::convertFrom(const FoundVectors<QQ, long double>&);
template void FoundVectors<QQ, long double>::convertFrom(
    const FoundVectors<long double, long double>&);

}  // namespace starsift
