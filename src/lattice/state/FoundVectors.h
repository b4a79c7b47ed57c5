// What a search has found, as raw lattice vectors.
#pragma once

#include "core/Set.h"
#include "lattice/state/FiledSolution.h"
#include "lattice/state/SolutionIndex.h"
#include "lattice/state/VectorScore.h"

namespace starsift {

template <class T, class R>
class FoundVectors {
 public:
  /// Best lattice vector so far, empty while there is none.
  TimeVector<T> bestVector;
  /// Its score.
  VectorScore<R> bestRecord;
  /// Best target vector so far, empty while there is none.
  FiledSolution<T> bestTarget;
  /// Solutions found.
  Array<FiledSolution<T>> solutions;
  /// The last number that was given to a filed solution; never reset, and never taken back by a
  /// conversion.
  Index lastFiled = 0;
  /// Finds vectors among the solutions: call forgetAll() after any change of these but
  /// appending.
  SolutionIndex<T> solutionIndex;
  /// Heuristic collections, ordered by score. No search fills or reads them yet; hosts may.
  SortedSet<HeuristicVector<T, R>> collected;
  SortedSet<HeuristicVector<T, R>> chosen;

  /// Empties best vector, best target and solutions; the collections stay.
  void discard();
  void clearCollections();
  /// All vectors get m coordinates, new ones 0.
  void fit(Index m);
  bool isEmpty() const;
  template <class U>
  void convertFrom(const FoundVectors<U, R>& other);
};

extern template class FoundVectors<long double, long double>;

}  // namespace starsift
