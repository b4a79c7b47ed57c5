#include "lattice/reduce/LllReduction.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <span>
#include <utility>
#include <vector>

#include "algorithms/exact/IndependentRows.h"
#include "algorithms/reduction/LllConditions.h"
#include "algorithms/reduction/SizeReduce.h"
#include "lattice/state/ClearAtEnd.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "system/Exceptions.h"

namespace starsift {

namespace {

/// Coefficients above this leave rounding errors that justify another round.
constexpr long double largeQuotient = 1000;

/// Products of integer vectors up to this squared length are exact in R: 2^63.
constexpr long double exactSquare = 0x1p63L;

/// Rounds on one row, each with new Gram-Schmidt data.
constexpr int maxSizeReductionRounds = 50;

/// Gram-Schmidt coefficients of a row that are reduced together: those before them are updated once
/// for all.
constexpr Index coefficientBlock = 16;

/// Moves of dependent rows in one step, per row of the basis. Each move makes progress, unless
/// cancellation makes a row seem short: such a row would be moved for ever.
constexpr Index maxDependentMoves = 64;

}  // namespace

template <class T, class R>
bool LllReduction<T, R>::sizeReduce(Index k, bool strict) {
  if (carries(basis_.vecStatus.element(k), ST_SIZE_REDUCED)) return false;
  // Each round begins with new Gram-Schmidt data: forgetFrom() invalidates the old ones.
  bool changed = false;
  for (int round = 1; round <= maxSizeReductionRounds; ++round) {
    const bool isClear = orthogonalise(k);
    // The length of such a row has cancelled, its large coefficients have not.
    const bool isLong = !isClear && hasLargeCoefficient(k);
    if (isLong) basis_.vecStatus[k] = ST_MU;
    if (!isClear && !isLong && !isIndependent(k)) return changed;
    const R largest = reduceCoefficients(k, strict);
    if (largest == R()) {
      if (isLong && !isIndependent(k)) return changed;
      break;
    }
    changed = true;
    basis_.forgetFrom(k);
    if (!isLong && !(largest > largeQuotient)) break;
  }
  basis_.vecStatus[k] |= ST_SIZE_REDUCED;
  return changed;
}

template <class T, class R>
bool LllReduction<T, R>::orthogonalise(Index k) {
  return withFallback([&] { return data_.orthogonaliseClassic(basis_, k, k); });
}

template <class T, class R>
bool LllReduction<T, R>::hasLargeCoefficient(Index k) const {
  const Vector<R>& row = data_.mu[k];
  return std::any_of(row.begin(), row.begin() + (k - 1),
                     [](const R& entry) { return std::fabs(entry) > largeQuotient; });
}

template <class T, class R>
bool LllReduction<T, R>::isIndependent(Index k) {
  // Either the row is dependent or its products have lost their digits by cancellation.
  basis_.forgetProducts(k);
  const Index suspect = withFallback([&] {
    return data_.orthogonaliseModified(basis_, 1, k, OnDependency::report, LqCache::bypass);
  });
  if (suspect == 0) return true;
  const Index dependent = firstDependent(k);
  for (Index i = suspect; i <= k; ++i)
    if (i != dependent && !carries(basis_.vecStatus[i], ST_MU)) acceptShort(i);
  if (dependent != 0) basis_.vecStatus[dependent] = ST_DEPENDENT;
  return dependent == 0;
}

template <class T, class R>
Index LllReduction<T, R>::firstDependent(Index count) const {
  Matrix<T> rows(basis_.B());
  rows.resize(count, basis_.m, false);
  const std::vector<Index> independent = independentRows(rows);
  Index k = 1;
  for (const Index i : independent) {
    if (i != k) return k;
    ++k;
  }
  return k <= count ? k : 0;
}

template <class T, class R>
void LllReduction<T, R>::acceptShort(Index k) {
  if (orthogonalise(k)) return;
  const R tolerance = NumberTraits<R>::tolerance();
  data_.cLen[k] = std::max(data_.cLen[k], tolerance * tolerance);
  basis_.vecStatus[k] = ST_MU;
}

template <class T, class R>
template <class Step>
auto LllReduction<T, R>::withFallback(Step step) -> decltype(step()) {
  try {
    return step();
  } catch (const DecimalPrecisionException&) {
    // In the standard lattice the step is repeated in the exact one, which has no fallback.
    if (NumberTraits<T>::exact && settings_.lossIsFatal)
      fail("numbers too large for the reduction");
    throw;
  }
}

template <class T, class R>
R LllReduction<T, R>::reduceCoefficients(Index k, bool strict) {
  multiples_.clear();
  R largest = R();
  Index last = 0;
  // A test of the row itself needs all that was subtracted before.
  const Index width = strict ? 1 : coefficientBlock;
  for (Index end = k - 1; end >= 1; end -= width) {
    const Index first = std::max(end - width + 1, Index{1});
    const std::size_t before = multiples_.size();
    for (Index j = end; j >= first; --j) findMultiple(k, j, first, strict);
    const auto found = std::span(std::as_const(multiples_)).subspan(before);
    if (found.empty()) continue;
    last = std::max(last, found.front().row);
    for (const RowMultiple<R>& one : found) largest = std::max(largest, std::fabs(one.factor));
    subtractCoefficients(data_.mu, k, found, first - 1);
    if (strict) subtractMultiples(k);
  }
  subtractMultiples(k);
  if (last > 0) basis_.products().keep(k, last, data_.mu[k], data_.cLen);
  return largest;
}

template <class T, class R>
void LllReduction<T, R>::findMultiple(Index k, Index j, Index first, bool strict) {
  if (sizeReduced(k, j, data_.mu, settings_.eta)) return;
  const R q = std::round(data_.mu[k][j]);
  const auto& rows = basis_.B();
  if (strict && lengthens(rows[k], rows[j], NumberConversion<T, R>::ofInteger(q))) return;
  multiples_.push_back({j, q});
  subtractCoefficients(data_.mu, k, multiples_.back(), first);
}

template <class T, class R>
void LllReduction<T, R>::subtractMultiples(Index k) {
  if (multiples_.empty()) return;
  basis_.subtract(k, multiples_);
  multiples_.clear();
}

template <class T, class R>
Index LllReduction<T, R>::swapStep(Index k) {
  if (k < 2 || lovaszHolds(k, data_.mu, data_.cLen, settings_.delta)) return k + 1;
  basis_.swap(k, k - 1, RowStatus::forget);
  return k - 1;
}

template <class T, class R>
Index LllReduction<T, R>::deepInsertStep(Index k) {
  // No row is inserted at position 1, so rows 1 and 2 stay.
  if (k <= 2) return k + 1;
  const Vector<R>& row = basis_.imagesUpTo(k)[k];
  const Vector<R>& coefficients = data_.mu[k];
  const Vector<R>& cLen = data_.cLen;
  R rest = row * row - cLen[1] * coefficients[1] * coefficients[1];
  for (Index j = 2; j < k; ++j) {
    if (rest > NumberTraits<R>::tolerance() && rest < settings_.delta * cLen[j]) {
      for (Index i = k; i > j; --i)
        basis_.swap(i, i - 1, i > j + 1 ? RowStatus::keep : RowStatus::forget);
      ++deepInsertions_;
      return j;
    }
    rest -= cLen[j] * coefficients[j] * coefficients[j];
  }
  return k + 1;
}

template <class T, class R>
Index LllReduction<T, R>::blendDependent(Index k, Index kmax) {
  if (basis_.vecStatus.element(k) != ST_DEPENDENT) return 0;
  if (!(supNorm(basis_.B()[k]) == T())) {
    const Index position = deepInsertStep(k);
    if (position < k) return position;
  }
  for (Index j = kmax; j > k; --j) {
    if (!seemsIndependent(j)) continue;
    for (Index i = k; i < j; ++i)
      basis_.swap(i, i + 1, i > k ? RowStatus::keep : RowStatus::forget);
    return -k;
  }
  throw DependencyException("Blending is not possible");
}

template <class T, class R>
bool LllReduction<T, R>::step(Index k, Index kmax, bool& strict) {
  Index moves = 0;
  for (Index i = k; i <= k;) {
    basis_.keepDependent = i >= 2;
    visitor_.onRow(i);
    if (sizeReduce(i, strict)) visitor_.onRow(i);
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
    if (++moves > maxDependentMoves * basis_.n) return false;
  }
  return true;
}

template <class T, class R>
void LllReduction<T, R>::pass(PassStatus& status) {
  const ClearAtEnd sparing(basis_.keepDependent);
  exchangeRows(status);
  // Rows that the swaps didn't reach are brought up to date as well.
  for (Index j = status.k; j <= status.to && visitor_.mayStep(status); ++j)
    if (!step(j, status.kmax, status.strict)) break;
}

template <class T, class R>
void LllReduction<T, R>::exchangeRows(PassStatus& status) {
  Index& k = status.k;
  PassCounts& counts = status.counts;
  while (true) {
    while (k <= status.to && carries(basis_.vecStatus[k], ST_SWAP_CHECKED)) ++k;
    if (k > status.to || !visitor_.mayStep(status) || !step(k, status.kmax, status.strict)) return;
    visitor_.onStepped(status);
    // Coefficients with respect to a vector whose length was lost would be wrong: it goes forward
    // at once.
    if (counts.tests < status.budget || isTooShort(k)) {
      Index next = settings_.deep ? deepInsertStep(k) : swapStep(k);
      if (next > k && isTooShort(k)) next = swapStep(k);
      ++counts.tests;
      if (next < k) ++counts.swaps;
      k = next;
      basis_.vecStatus[k - 1] |= ST_SWAP_CHECKED;
    } else {
      ++counts.skipped;
      ++k;
    }
  }
}

template <class T, class R>
bool LllReduction<T, R>::allTested(Index count) const {
  return firstWithout(basis_.vecStatus, ST_SWAP_CHECKED, 1, count) > count;
}

template <class T, class R>
bool LllReduction<T, R>::isReduced(Index count) const {
  Index k = 1;
  for (; k <= count && seemsIndependent(k); ++k)
    if (basis_.vecStatus[k] == 0 || !isSizeReduced(k) || !isInOrder(k)) return false;
  const Index rank = k - 1;
  while (k <= count && !seemsIndependent(k)) ++k;
  return k > count && haveRank(count, rank);
}

template <class T, class R>
bool LllReduction<T, R>::isSizeReduced(Index k) const {
  const R bound = settings_.eta + NumberTraits<R>::tolerance();
  for (Index j = 1; j < k; ++j)
    if (!sizeReduced(k, j, data_.mu, bound)) return false;
  return true;
}

template <class T, class R>
bool LllReduction<T, R>::seemsIndependent(Index k) const {
  return basis_.vecStatus[k] != ST_DEPENDENT && !(supNorm(basis_.B()[k]) == T());
}

template <class T, class R>
bool LllReduction<T, R>::isTooShort(Index k) const {
  return k >= 2 && data_.cLen[k] <= NumberTraits<R>::tolerance();
}

template <class T, class R>
bool LllReduction<T, R>::isInOrder(Index k) const {
  return k <= (settings_.deep ? 2 : 1) || lovaszHolds(k, data_.mu, data_.cLen, settings_.delta);
}

template <class T, class R>
bool LllReduction<T, R>::renewLongData(Index count) {
  if (!NumberTraits<T>::exact) return true;
  Index last = 0;
  bool isLong = false;
  while (last < count && seemsIndependent(last + 1))
    isLong = data_.bSq[++last] > exactSquare || isLong;
  if (!isLong) return true;
  for (Index k = 1; k <= last; ++k) basis_.vecStatus[k] = without(basis_.vecStatus[k], ST_MU);
  basis_.forgetAllProducts();
  return data_.orthogonaliseClassic(basis_, 1, last);
}

template <class T, class R>
bool LllReduction<T, R>::haveRank(Index count, Index rank) const {
  if (!NumberTraits<T>::exact) return true;
  const Matrix<T>& B = basis_.B();
  const auto isZero = [](const Vector<T>& row) { return supNorm(row) == T(); };
  if (std::all_of(B.begin() + rank, B.begin() + count, isZero)) return true;
  Matrix<T> rows(B);
  rows.resize(count, basis_.m, false);
  return static_cast<Index>(independentRows(rows).size()) == rank;
}

template <class T, class R>
void LllReduction<T, R>::unmarkUnreduced(Index count) {
  for (Index k = 1; k <= count; ++k)
    if (seemsIndependent(k) && !(isSizeReduced(k) && isInOrder(k)))
      basis_.vecStatus[k] = without(basis_.vecStatus[k], ST_SIZE_REDUCED | ST_SWAP_CHECKED);
}

template <class T, class R>
R LllReduction<T, R>::potential(Index count) const {
  R sum = R();
  for (Index k = 1; k <= count; ++k)
    // Size reduction clears ST_MU, but leaves the orthogonal length as it was.
    if ((basis_.vecStatus[k] & (ST_MU | ST_SIZE_REDUCED)) != 0 && data_.cLen[k] > R())
      sum += static_cast<R>(count + 1 - k) * std::log2(data_.cLen[k]);
  return sum;
}

Index nextBudget(Index budget, Index floor, const PassCounts& counts) {
  if (counts.skipped > counts.tests / 10) return 2 * budget;
  return counts.skipped == 0 && budget > floor ? budget - 1 : budget;
}

template class LllReduction<long double, long double>;
template class LllReduction<QQ, long double>;

}  // namespace starsift
