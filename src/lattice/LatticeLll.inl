// Lattice: the LLL reduction, from the steps on one vector up to the reduced basis.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iostream>
#include <string>

#include "algorithms/exact/IndependentRows.h"
#include "algorithms/reduction/LllConditions.h"
#include "algorithms/reduction/SizeReduce.h"
#include "lattice/ClearAtEnd.h"
#include "lattice/Lattice.h"
#include "lattice/NearbySearch.h"
#include "system/Console.h"
#include "system/Exceptions.h"
#include "system/Failure.h"

namespace starsift {

namespace latticelll {

/// Exchange condition: a little below 1, so that equal lengths exchange nothing.
constexpr long double delta = 1 - eps;

/// Coefficients up to here count as reduced. At exactly 1/2 one would go to -1/2 and back.
constexpr long double eta = 0.5L;

/// Coefficients above this leave rounding errors worth a second look.
constexpr long double largeQuotient = 1000;

/// Products of integer vectors up to this squared length are exact in R: 2^63.
constexpr long double exactSquare = 0x1p63L;

/// Looks at one vector at most, each with new Gram-Schmidt data.
constexpr int mostLooks = 50;

/// Passes of one reduction at most.
constexpr int mostPasses = 20;

/// Moves of dependent vectors in one step at most, per vector of the basis. Each one gains
/// something, unless cancellation makes a vector seem short: that one would come round again.
constexpr Index mostMoves = 64;

/// The exchanges that the pass behind one with these counts may make.
inline Index nextBudget(Index budget, Index floor, const PassCounts& counts) {
  if (counts.skipped > counts.swaps / 10) return 2 * budget;
  return counts.skipped == 0 && budget > floor ? budget - 1 : budget;
}

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
  try {
    if (classicOrthogonalise(k, k)) return true;
    // Either the row is dependent or cancellation has spoilt its products.
    rowImages.products().forget(k);
    return modifiedOrthogonalise(1, k, false, false) == 0;
  } catch (const DecimalPrecisionException&) {
    // The standard lattice hands over to the exact one, and that to none.
    if (NumberTraits<T>::exact) fail("numbers too large for the reduction");
    throw;
  }
}

template <class T, class R>
R Lattice<T, R>::reduceCoefficients(Index k, bool strict) {
  R largest = R();
  Index last = 0;
  for (Index j = k - 1; j >= 1; --j) {
    if (sizeReduced(k, j, mu, R(latticelll::eta))) continue;
    const R q = std::round(mu[k][j]);
    if (strict && lengthens(B[k], B[j], NumberConversion<T, R>::ofInteger(q))) continue;
    subtractCoefficients(mu, k, j, q);
    subtractBasisVector(k, j, q);
    largest = std::max(largest, std::fabs(q));
    last = std::max(last, j);
  }
  if (last > 0) rowImages.products().keep(k, last, mu[k], cLen);
  return largest;
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
    if (!seemsIndependent(j)) continue;
    for (Index i = k; i < j; ++i) swapBasisVectors(i, i + 1, i > k);
    return -k;
  }
  throw DependencyException("Blending is not possible");
}

template <class T, class R>
bool Lattice<T, R>::lllStep(Index k, Index kmax, bool& strict) {
  Index moves = 0;
  for (Index i = k; i <= k;) {
    updateVector(i, strict);
    Index next = 0;
    try {
      next = blendDependent(i, kmax);
    } catch (const DependencyException&) {
      return false;
    }
    if (next == 0) {
      ++i;
      continue;
    }
    if (next < 0) strict = true;
    i = std::abs(next);
    if (++moves > latticelll::mostMoves * n) return false;
  }
  return true;
}

template <class T, class R>
void Lattice<T, R>::updateVector(Index k, bool strict) {
  keepDependent = k >= 2;
  checkBasisVector(k);
  if (sizeReduce(k, strict)) checkBasisVector(k);
}

/// Where a pass stands.
template <class T, class R>
struct Lattice<T, R>::Pass {
  /// Vector to look at next.
  Index k;
  Index to;
  Index kmax;
  /// A dependent vector had to be moved away; only turns on.
  bool strict = false;
  PassCounts counts = {};
};

template <class T, class R>
Index Lattice<T, R>::lllPass(Index from, Index to, Index kmax) {
  Pass pass{from, to == 0 ? n : to, kmax == 0 ? n : kmax};
  const ClearAtEnd sparing(keepDependent);
  exchangeVectors(pass);
  swapBudget = latticelll::nextBudget(swapBudget, swapBudgetFloor, pass.counts);
  // Vectors that the exchanges didn't reach are brought up to date all the same.
  for (Index j = pass.k; j <= pass.to && goesOn(pass); ++j)
    if (!lllStep(j, pass.kmax, pass.strict)) break;
  lastPass = pass.counts;
  if (from <= pass.to) NearbySearch<T, R>(*this).run();
  return std::min(pass.k, from);
}

template <class T, class R>
void Lattice<T, R>::exchangeVectors(Pass& pass) {
  Index& k = pass.k;
  while (true) {
    while (k <= pass.to && carries(vecStatus[k], ST_SWAP_CHECKED)) ++k;
    if (k > pass.to || !goesOn(pass) || !lllStep(k, pass.kmax, pass.strict)) return;
    reportPass(pass);
    if (pass.counts.swaps < swapBudget) {
      const Index next = params.deep ? deepInsertStep(k) : swapStep(k);
      ++pass.counts.swaps;
      if (next < k) ++pass.counts.exchanges;
      k = next;
      vecStatus[k - 1] |= ST_SWAP_CHECKED;
    } else {
      ++pass.counts.skipped;
      ++k;
    }
  }
}

template <class T, class R>
bool Lattice<T, R>::goesOn(const Pass& pass) {
  if (observer != nullptr) observer->onStep(pass.counts);
  return !searchIsOver();
}

template <class T, class R>
bool Lattice<T, R>::searchIsOver() const {
  return latticeKind != LatticeKind::equations && stopped();
}

template <class T, class R>
void Lattice<T, R>::reportPass(const Pass& pass) const {
  if (params.verb != 2 || !consoleWasSilent()) return;
  report(std::cout,
         "lll status: k = " + std::to_string(pass.k) + " (m = " + std::to_string(pass.to) +
             "), strict = " + std::to_string(static_cast<int>(pass.strict)) +
             ", swaps = " + std::to_string(pass.counts.swaps) + " / " + std::to_string(swapBudget));
}

template <class T, class R>
bool Lattice<T, R>::reduce(Index count) {
  if (count == 0) count = n;
  if (params.deep) sortBasis(count);
  for (int pass = 1; pass <= latticelll::mostPasses; ++pass) {
    lllPass(1, count, count);
    if (searchIsOver()) return false;
    // A pass that a dependent vector ended may have moved others before.
    if ((lastPass.skipped == 0 || allChecked(count)) && renewLongData(count) && isReduced(count))
      return true;
    forgetSkipped(count);
  }
  return false;
}

template <class T, class R>
bool Lattice<T, R>::allChecked(Index count) const {
  return firstWithout(vecStatus, ST_SWAP_CHECKED, 1, count) > count;
}

template <class T, class R>
bool Lattice<T, R>::isReduced(Index count) const {
  Index k = 1;
  for (; k <= count && seemsIndependent(k); ++k)
    if (vecStatus[k] == 0 || !isSizeReduced(k) || !isInOrder(k)) return false;
  const Index independent = k - 1;
  while (k <= count && !seemsIndependent(k)) ++k;
  return k > count && areDependent(count, independent);
}

template <class T, class R>
bool Lattice<T, R>::isSizeReduced(Index k) const {
  for (Index j = 1; j < k; ++j)
    if (!sizeReduced(k, j, mu, R(latticelll::eta + eps))) return false;
  return true;
}

template <class T, class R>
bool Lattice<T, R>::seemsIndependent(Index k) const {
  return vecStatus[k] != ST_DEPENDENT && !(supNorm(B[k]) == T());
}

template <class T, class R>
bool Lattice<T, R>::isInOrder(Index k) const {
  return k <= (params.deep ? 2 : 1) || lovaszHolds(k, mu, cLen, R(latticelll::delta));
}

template <class T, class R>
bool Lattice<T, R>::renewLongData(Index count) {
  if (!NumberTraits<T>::exact) return true;
  Index last = 0;
  bool isLong = false;
  while (last < count && seemsIndependent(last + 1))
    isLong = bSq[++last] > latticelll::exactSquare || isLong;
  if (!isLong) return true;
  for (Index k = 1; k <= last; ++k) vecStatus[k] = without(vecStatus[k], ST_MU);
  rowImages.products().forgetAll();
  return classicOrthogonalise(1, last);
}

template <class T, class R>
bool Lattice<T, R>::areDependent(Index count, Index independent) const {
  if (!NumberTraits<T>::exact) return true;
  const auto isZero = [](const Vector<T>& row) { return supNorm(row) == T(); };
  if (std::all_of(B.begin() + independent, B.begin() + count, isZero)) return true;
  Matrix<T> rows(B);
  rows.resize(count, m, false);
  return static_cast<Index>(independentRows(rows).size()) == independent;
}

template <class T, class R>
void Lattice<T, R>::forgetSkipped(Index count) {
  for (Index k = 1; k <= count; ++k)
    if (seemsIndependent(k) && !(isSizeReduced(k) && isInOrder(k)))
      vecStatus[k] = without(vecStatus[k], ST_SIZE_REDUCED | ST_SWAP_CHECKED);
}

}  // namespace starsift
