// Lattice: the moves that change the working basis. Everything else only reads it: a
// move also tracks the transformation, takes along what belongs to a vector, and
// forgets what was known of the vectors from there on.
#pragma once

#include <algorithm>
#include <cmath>
#include <utility>

#include "algorithms/reduction/SizeReduce.h"
#include "lattice/Lattice.h"

namespace starsift {

template <class T, class R>
void Lattice<T, R>::swapBasisVectors(Index i, Index j, bool keepStatus) {
  if (i == j) return;
  B.swapRows(i, j);
  rowImages.swap(i, j);
  checkedRows.swap(i, j);
  if (params.consistency) TT[TT.dimension()].swapRows(i, j);
  std::swap(vectorAmounts[i], vectorAmounts[j]);
  std::swap(vectorMarks[i], vectorMarks[j]);
  std::swap(vecStatus[i], vecStatus[j]);
  if (!keepStatus) forgetFrom(i == 0 ? j : std::min(i, j));
}

template <class T, class R>
void Lattice<T, R>::subtractBasisVector(Index k, Index j, const R& q) {
  const T factor = NumberConversion<T, R>::ofInteger(q);
  subtractMultiple(B[k], B[j], factor);
  rowImages.change(k, std::fabs(q));
  checkedRows.forget(k);
  if (params.consistency) subtractMultiple(TT[TT.dimension()][k], TT[TT.dimension()][j], factor);
}

template <class T, class R>
void Lattice<T, R>::forgetFrom(Index k) {
  const bool sparesDependent = k >= 2 && keepDependent;
  for (Index i = k; i <= n; ++i)
    if (!sparesDependent || vecStatus[i] != ST_DEPENDENT) vecStatus[i] = 0;
  workingFactors.clear();
}

template <class T, class R>
void Lattice<T, R>::sortBasis(Index count) {
  if (count == 0) count = n;
  Vector<T> lengths(count);
  for (Index i = 1; i <= count; ++i) lengths[i] = B[i] * B[i];
  const auto exchange = [&](Index i, Index j) {
    swapBasisVectors(i, j, false);
    lengths.swap(i, j);
  };
  // Moves the vector at `root` down to where none below is longer.
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

}  // namespace starsift
