// Lattice: moves of basis vectors, by the verbs of Basis.
#pragma once

#include "lattice/Lattice.h"

namespace starsift {

template <class T, class R>
void Lattice<T, R>::swapBasisVectors(Index i, Index j, RowStatus status) {
  basis.swap(i, j, status);
}

template <class T, class R>
void Lattice<T, R>::sortBasis(Index count) {
  if (count == 0) count = basis.n;
  Vector<T> lengths(count);
  for (Index i = 1; i <= count; ++i) lengths[i] = basis.B()[i] * basis.B()[i];
  const auto exchange = [&](Index i, Index j) {
    basis.swap(i, j, RowStatus::forget);
    lengths.swap(i, j);
  };
  // Moves the vector at `root` down until none below is longer.
  const auto sift = [&](Index root, Index last) {
    for (Index child = 2 * root; child <= last; root = child, child = 2 * root) {
      if (child < last && lengths[child + 1] > lengths[child]) ++child;
      if (!(lengths[child] > lengths[root])) return;
      exchange(root, child);
    }
  };
  for (Index root = count / 2; root >= 1; --root) sift(root, count);
  for (Index last = count; last >= 2; --last) {
    exchange(1, last);
    sift(1, last - 1);
  }
}

template <class T, class R>
void Lattice<T, R>::setScale(Index i, const T& value) {
  basis.setScale(i, value, this->homValue);
}

}  // namespace starsift
