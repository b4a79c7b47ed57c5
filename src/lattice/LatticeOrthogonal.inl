// Lattice: Gram-Schmidt data of the working basis, three ways to it.
//
// Q has one owner at a time. The full factorisation and the reduced one with its
// cache both write it from the row on where they restart; the rows behind lose the
// bits that spoke of it first, so that neither finds the other's rows there, and a
// run that throws leaves nothing that seems valid. The reduced one without cache
// keeps its factors to itself.
#pragma once

#include <algorithm>
#include <cmath>
#include <iostream>
#include <string>

#include "algorithms/reduction/GramSchmidt.h"
#include "algorithms/reduction/LqFull.h"
#include "algorithms/reduction/LqReduced.h"
#include "lattice/Lattice.h"
#include "system/Console.h"
#include "system/Exceptions.h"

namespace starsift {

namespace latticeorthogonal {

/// What is left of the length of a row that depends on those before it.
template <class R>
bool isDependent(const R& length) {
  return length <= NumberTraits<R>::tolerance();
}

/// Row k of the Gram-Schmidt coefficients from a triangular factor.
template <class R>
void takeCoefficients(Vector<R>& row, Index k, const Matrix<R>& triangle) {
  for (Index j = 1; j < k; ++j) row[j] = triangle[k][j] / triangle[j][j];
  row[k] = R(1);
  std::fill(row.begin() + k, row.end(), R());
}

inline void reportStep(Index k, Index last) {
  if (!extendedOutput() || !consoleWasSilent()) return;
  report(std::cout, "lq_reduced k = " + std::to_string(k) + ", mm = " + std::to_string(last));
}

}  // namespace latticeorthogonal

template <class T, class R>
bool Lattice<T, R>::classicOrthogonalise(Index from, Index to) {
  if (to == 0) to = n;
  const Matrix<R>& rows = rowImages.of(B, to);
  for (Index k = from; k <= to; ++k) {
    if (carries(vecStatus.element(k), ST_MU)) continue;
    classicGramSchmidt(rows, k, rowImages.products(), mu, cLen, bSq);
    if (latticeorthogonal::isDependent(cLen[k])) {
      vecStatus[k] = ST_DEPENDENT;
      return false;
    }
    vecStatus[k] = without(vecStatus[k], ST_DEPENDENT) | ST_MU;
  }
  return true;
}

template <class T, class R>
Index Lattice<T, R>::modifiedOrthogonalise(Index from, Index to, bool abortOnDependency,
                                           bool useCache) {
  if (to == 0) to = n;
  const Index first = firstWithout(vecStatus, ST_CACHED_ROW, from, to);
  if (first > to) return 0;
  const Matrix<R>& rows = rowImages.of(B, to);
  const StepObserver onStep = [to](Index k) { latticeorthogonal::reportStep(k, to); };
  Index dependent = 0;
  if (useCache) {
    const Index restart = firstWithout(vecStatus, ST_CACHED_ROW, 1, first);
    releaseFactors(restart);
    const Index stop = lq_reduced(rows, Lr, Q, _d, &lqCache, restart, to, onStep);
    dependent = takeReduced(Lr, _d, first, stop == 0 ? to : stop, ST_CACHED_ROW);
  } else {
    Matrix<R> triangle;
    Matrix<R> pivots;
    Vector<R> lengths;
    const Index stop = lq_reduced<R>(rows, triangle, pivots, lengths, nullptr, 1, to, onStep);
    dependent = takeReduced(triangle, lengths, first, stop == 0 ? to : stop, ST_MU);
  }
  if (dependent != 0 && abortOnDependency) fail("Linear dependency detected - remove these first!");
  return dependent;
}

template <class T, class R>
Index Lattice<T, R>::takeReduced(const Matrix<R>& triangle, const Vector<R>& lengths, Index first,
                                 Index last, StatusWord word) {
  const Matrix<R>& rows = rowImages.of(B, last);
  // A dependency before the first row is told too.
  for (Index k = std::min(first, last); k <= last; ++k) {
    if (takeLengths(k, rows[k] * rows[k], lengths[k])) return k;
    latticeorthogonal::takeCoefficients(mu[k], k, triangle);
    // An infinite coefficient makes nans of the rest of its row.
    for (Index j = 1; j < k; ++j)
      if (!std::isfinite(mu[k][j])) throw DecimalPrecisionException("mu-mod has nan entry");
    // The factorisation has refused an infinite pivot, but not a nan.
    if (!std::isfinite(cLen[k])) throw DecimalPrecisionException("cLen-mod has infinite entry");
    vecStatus[k] = word;
  }
  return 0;
}

template <class T, class R>
Index Lattice<T, R>::fullOrthogonalise(Index from, Index to, bool abortOnDependency) {
  if (to == 0) to = n;
  const Index first = firstWithout(vecStatus, ST_FULL_ROW, from, to);
  if (first > to) return 0;
  const Index restart = firstWithout(vecStatus, ST_FULL_ROW, 1, first);
  releaseFactors(restart);
  lq_full(rowImages.of(B, to), L, Q, Ps, restart, to);
  Q.resize(std::min(n, m), m, false);
  const Index dependent = takeFull(restart, first, to);
  if (dependent != 0 && abortOnDependency) fail("Linear dependency detected - remove first!");
  return dependent;
}

template <class T, class R>
Index Lattice<T, R>::takeFull(Index restart, Index first, Index last) {
  const Matrix<R>& rows = rowImages.of(B, last);
  for (Index k = restart; k <= last; ++k) {
    // There is no room for another independent row behind the m-th.
    const R diagonal = k <= m ? L[k][k] : R();
    const R length = diagonal * diagonal;
    // A dependency before the first row is told too.
    if (k < first && !latticeorthogonal::isDependent(length)) continue;
    if (takeLengths(k, rows[k] * rows[k], length)) return k;
    latticeorthogonal::takeCoefficients(mu[k], k, L);
    // The square root of the length, with the sign that turns Q's row over where it
    // points away from the vector.
    for (R& entry : Q[k]) entry *= diagonal;
    vecStatus[k] = ST_FULL_ROW;
  }
  return 0;
}

template <class T, class R>
bool Lattice<T, R>::takeLengths(Index k, const R& rowLength, const R& orthogonalLength) {
  bSq[k] = rowLength;
  cLen[k] = orthogonalLength;
  const bool isDependent = latticeorthogonal::isDependent(orthogonalLength);
  // What was known of the row goes even where its coefficients can't be made.
  vecStatus[k] = isDependent ? ST_DEPENDENT : without(vecStatus[k], ST_MU);
  return isDependent;
}

template <class T, class R>
void Lattice<T, R>::releaseFactors(Index from) {
  for (Index k = from; k <= vecStatus.dimension(); ++k)
    vecStatus[k] = without(vecStatus[k], ST_FACTORS);
}

}  // namespace starsift
