// Lattice: the steps of the LLL reduction on one vector.
#pragma once

#include <cmath>

#include "algorithms/LllConditions.h"
#include "algorithms/SizeReduce.h"
#include "core/Exceptions.h"
#include "lattice/Lattice.h"

namespace starsift {

namespace latticelll {

/// Exchange condition: a little below 1, so that equal lengths exchange nothing.
constexpr long double delta = 1 - eps;

/// Coefficients up to here count as reduced. At exactly 1/2 one would go to -1/2 and back.
constexpr long double eta = 0.5L;

/// Coefficients above this leave rounding errors worth a second look.
constexpr long double largeQuotient = 1000;

/// Looks at one vector at most, each with new Gram-Schmidt data.
constexpr int mostLooks = 50;

}  // namespace latticelll

template <class T, class R>
bool Lattice<T, R>::sizeReduce(Index k, bool strict) {
  if (carries(vecStatus.element(k), ST_SIZE_REDUCED)) return false;
  // Each look begins with new Gram-Schmidt data, as forgetFrom() takes the old ones.
  bool changed = false;
  for (int look = 1; look <= latticelll::mostLooks; ++look) {
    if (!orthogonaliseVector(k)) return changed;
    const R largest = reduceCoefficients(k, strict);
    if (largest == R()) break;
    changed = true;
    forgetFrom(k);
    if (!(largest > latticelll::largeQuotient)) break;
  }
  vecStatus[k] |= ST_SIZE_REDUCED;
  return changed;
}

template <class T, class R>
bool Lattice<T, R>::orthogonaliseVector(Index k) {
  return classicOrthogonalise(k, k) || modifiedOrthogonalise(1, k, false, false) == 0;
}

template <class T, class R>
R Lattice<T, R>::reduceCoefficients(Index k, bool strict) {
  R largest = R();
  for (Index j = k - 1; j >= 1; --j) {
    if (sizeReduced(k, j, mu, R(latticelll::eta))) continue;
    const R q = std::round(mu[k][j]);
    const T factor = NumberConversion<T, R>::ofInteger(q);
    if (strict && lengthens(k, j, factor)) continue;
    subtractCoefficients(mu, k, j, q);
    subtractBasisVector(k, j, factor);
    largest = std::max(largest, std::fabs(q));
  }
  return largest;
}

template <class T, class R>
bool Lattice<T, R>::lengthens(Index k, Index j, const T& q) const {
  Vector<T> difference(B[k]);
  subtractMultiple(difference, B[j], q);
  return supNorm(difference) > supNorm(B[k]);
}

template <class T, class R>
Index Lattice<T, R>::swapStep(Index k) {
  if (k < 2 || lovaszHolds(k, mu, cLen, R(latticelll::delta))) return k + 1;
  swapBasisVectors(k, k - 1, false);
  return k - 1;
}

template <class T, class R>
Index Lattice<T, R>::deepInsertStep(Index k) {
  // Neither the first position nor the second vector takes part.
  if (k <= 2) return k + 1;
  const Matrix<R>& rows = rowImages.of(B, k);
  R rest = rows[k] * rows[k] - cLen[1] * mu[k][1] * mu[k][1];
  for (Index j = 2; j < k; ++j) {
    if (rest > eps && rest < latticelll::delta * cLen[j]) {
      for (Index i = k; i > j; --i) swapBasisVectors(i, i - 1, i > j + 1);
      ++deepInsertions;
      return j;
    }
    rest -= cLen[j] * mu[k][j] * mu[k][j];
  }
  return k + 1;
}

template <class T, class R>
Index Lattice<T, R>::blendDependent(Index k, Index kmax) {
  if (vecStatus.element(k) != ST_DEPENDENT) return 0;
  if (!(supNorm(B[k]) == T())) {
    const Index position = deepInsertStep(k);
    if (position < k) return position;
  }
  for (Index j = kmax; j > k; --j) {
    if (vecStatus[j] == ST_DEPENDENT || supNorm(B[j]) == T()) continue;
    for (Index i = k; i < j; ++i) swapBasisVectors(i, i + 1, i > k);
    return -k;
  }
  throw DependencyException("Blending is not possible");
}

}  // namespace starsift
