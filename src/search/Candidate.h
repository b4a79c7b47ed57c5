// What every search beside the reduction does with a vector that it has made.
#pragma once

#include "algorithms/exact/LastCoordinate.h"
#include "lattice/Lattice.h"

namespace starsift {

/// Notifies the observer of a step that isn't one of a pass; false once the search has ended.
template <class T, class R>
bool notifyStep(Lattice<T, R>& lattice) {
  if (lattice.run.observer != nullptr) lattice.run.observer->onStep(lattice.run.lastPass);
  return !lattice.stopped();
}

/// Checks a raw vector of the lattice as checkRow() checks a row.
template <class T, class R>
void checkCandidate(Lattice<T, R>& lattice, const Vector<T>& vector) {
  if (lattice.isHopeless(lattice.forwardMap(vector))) return;
  lattice.checkSolution(vector, Space::raw, 0, Announce::full);
}

/// The lattice is the full one of a problem with variables: the only kind that is searched.
template <class T, class R>
bool isSearched(const Lattice<T, R>& lattice) {
  return lattice.frame.latticeKind == LatticeKind::full && lattice.originalCount() > 0;
}

/// The row of the first `count` ones whose last coordinate isn't 0 and is smallest in magnitude; 0
/// if there is none.
template <class T>
Index inhomogeneousRow(const Matrix<T>& rows, Index count) {
  Index row = 0;
  for (Index k = 1; k <= count; ++k)
    if (lastIsLess(rows, k, row)) row = k;
  return row;
}

}  // namespace starsift
