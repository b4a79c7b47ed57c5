// What a search has found, as raw lattice vectors.
#pragma once

#include "core/Set.h"
#include "lattice/state/FiledSolution.h"
#include "lattice/state/ShortVectors.h"
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
  /// The last number that was given to a filed solution; never reset, and never lowered by a
  /// conversion.
  Index lastFiled = 0;
  /// Finds vectors among the solutions; call forgetAll() after any change of the solutions
  /// except appending.
  SolutionIndex<T> solutionIndex;
  /// Short vectors of the lattice; empty until a search opens it.
  ShortVectors<T> shortVectors;
  /// Heuristic collections, ordered by score; kept for hosts, no search fills or reads them.
  SortedSet<HeuristicVector<T, R>> collected;
  SortedSet<HeuristicVector<T, R>> chosen;

  /// Clears best vector, best target and solutions; the collections stay.
  void discard();
  void clearCollections();
  /// Resizes all vectors to m coordinates; new ones are 0. The short vectors are dropped.
  void fit(Index m);
  bool isEmpty() const;
  template <class U>
  void convertFrom(const FoundVectors<U, R>& other);
};

extern template class FoundVectors<long double, long double>;

}  // namespace starsift
