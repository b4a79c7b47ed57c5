#include "lattice/state/GramSchmidtData.h"

#include <algorithm>
#include <cmath>
#include <ostream>
#include <string>

#include "algorithms/reduction/GramSchmidt.h"
#include "algorithms/reduction/LqFull.h"
#include "algorithms/reduction/LqReduced.h"
#include "lattice/state/Resize.h"
#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "system/Console.h"
#include "system/Exceptions.h"

namespace starsift {

namespace {

/// A row with this squared orthogonal length depends on the rows before it.
template <class R>
bool isDependent(const R& length) {
  return length <= NumberTraits<R>::tolerance();
}

/// Stores row k of the Gram-Schmidt coefficients, from a triangular factor.
template <class R>
void setCoefficients(Vector<R>& row, Index k, const Matrix<R>& triangle) {
  for (Index j = 1; j < k; ++j) row[j] = triangle[k][j] / triangle[j][j];
  row[k] = R(1);
  std::fill(row.begin() + k, row.end(), R());
}

void reportStep(Index k, Index last) {
  if (!extendedOutput() || !consoleWasSilent()) return;
  report(reportStream(), "lq_reduced k = " + std::to_string(k) + ", mm = " + std::to_string(last));
}

}  // namespace

template <class R>
void GramSchmidtData<R>::resize(Index n) {
  resizeFilled(mu, n, n);
  for (Vector<R>* lengths : {&cLen, &bSq}) lengths->resize(n, false);
  clearFactors();
}

template <class R>
void GramSchmidtData<R>::clearLengths() {
  for (Vector<R>* lengths : {&cLen, &bSq}) std::fill(lengths->begin(), lengths->end(), R());
}

template <class R>
void GramSchmidtData<R>::clearFactors() {
  Q = Matrix<R>();
  factors = LqFactors<R>();
}

template <class R>
template <class T>
Index GramSchmidtData<R>::validUpTo(const Basis<T, R>& basis) const {
  return firstWithout(basis.vecStatus, ST_MU, 1, basis.n) - 1;
}

template <class R>
template <class T>
bool GramSchmidtData<R>::orthogonaliseClassic(Basis<T, R>& basis, Index from, Index to) {
  if (to == 0) to = basis.n;
  const Matrix<R>& rows = basis.imagesUpTo(to);
  for (Index k = from; k <= to; ++k) {
    if (carries(basis.vecStatus.element(k), ST_MU)) continue;
    classicGramSchmidt(rows, k, basis.products(), mu, cLen, bSq);
    if (isDependent(cLen[k])) {
      basis.vecStatus[k] = ST_DEPENDENT;
      return false;
    }
    basis.vecStatus[k] = without(basis.vecStatus[k], ST_DEPENDENT) | ST_MU;
  }
  return true;
}

template <class R>
template <class T>
Index GramSchmidtData<R>::orthogonaliseModified(Basis<T, R>& basis, Index from, Index to,
                                                OnDependency reaction, LqCache cache) {
  if (to == 0) to = basis.n;
  const Index first = firstWithout(basis.vecStatus, ST_CACHED_ROW, from, to);
  if (first > to) return 0;
  const Matrix<R>& rows = basis.imagesUpTo(to);
  const StepObserver onStep = [to](Index k) { reportStep(k, to); };
  Index dependent = 0;
  if (cache == LqCache::use) {
    const Index restart = firstWithout(basis.vecStatus, ST_CACHED_ROW, 1, first);
    basis.clearBits(restart, ST_FACTORS);
    auto& [lqCache, _d, Lr, L, Ps] = factors;
    const Index stop = lq_reduced(rows, Lr, Q, _d, &lqCache, restart, to, onStep);
    dependent = storeFromReduced(basis, Lr, _d, first, stop == 0 ? to : stop, ST_CACHED_ROW);
  } else {
    Matrix<R> triangle;
    Matrix<R> pivots;
    Vector<R> lengths;
    const Index stop = lq_reduced<R>(rows, triangle, pivots, lengths, nullptr, 1, to, onStep);
    dependent = storeFromReduced(basis, triangle, lengths, first, stop == 0 ? to : stop, ST_MU);
  }
  if (dependent != 0 && reaction == OnDependency::fail)
    fail("Linear dependency detected - remove these first!");
  return dependent;
}

template <class R>
template <class T>
Index GramSchmidtData<R>::storeFromReduced(Basis<T, R>& basis, const Matrix<R>& triangle,
                                           const Vector<R>& lengths, Index first, Index last,
                                           StatusWord word) {
  const Matrix<R>& rows = basis.imagesUpTo(last);
  // Rows before `first` are checked as well.
  for (Index k = std::min(first, last); k <= last; ++k) {
    if (storeLengths(basis.vecStatus[k], k, rows[k] * rows[k], lengths[k])) return k;
    setCoefficients(mu[k], k, triangle);
    // An infinite coefficient turns the rest of its row into nans.
    for (Index j = 1; j < k; ++j)
      if (!std::isfinite(mu[k][j])) throw DecimalPrecisionException("mu-mod has nan entry");
    // The factorisation rejects an infinite pivot, but not a nan.
    if (!std::isfinite(cLen[k])) throw DecimalPrecisionException("cLen-mod has infinite entry");
    basis.vecStatus[k] = word;
  }
  return 0;
}

template <class R>
template <class T>
Index GramSchmidtData<R>::orthogonaliseFull(Basis<T, R>& basis, Index from, Index to,
                                            OnDependency reaction) {
  if (to == 0) to = basis.n;
  const Index first = firstWithout(basis.vecStatus, ST_FULL_ROW, from, to);
  if (first > to) return 0;
  const Index restart = firstWithout(basis.vecStatus, ST_FULL_ROW, 1, first);
  basis.clearBits(restart, ST_FACTORS);
  lq_full(basis.imagesUpTo(to), factors.L, Q, factors.Ps, restart, to);
  Q.resize(std::min(basis.n, basis.m), basis.m, false);
  const Index dependent = storeFromFull(basis, restart, first, to);
  if (dependent != 0 && reaction == OnDependency::fail)
    fail("Linear dependency detected - remove first!");
  return dependent;
}

template <class R>
template <class T>
Index GramSchmidtData<R>::storeFromFull(Basis<T, R>& basis, Index restart, Index first,
                                        Index last) {
  const Matrix<R>& rows = basis.imagesUpTo(last);
  for (Index k = restart; k <= last; ++k) {
    // After m independent rows every row is dependent.
    const R diagonal = k <= basis.m ? factors.L[k][k] : R();
    const R length = diagonal * diagonal;
    // Rows before `first` are checked as well.
    if (k < first && !isDependent(length)) continue;
    if (storeLengths(basis.vecStatus[k], k, rows[k] * rows[k], length)) return k;
    setCoefficients(mu[k], k, factors.L);
    // The square root of the length, with the sign that makes Q's row point towards b_k.
    for (R& entry : Q[k]) entry *= diagonal;
    basis.vecStatus[k] = ST_FULL_ROW;
  }
  return 0;
}

template <class R>
bool GramSchmidtData<R>::storeLengths(StatusWord& word, Index k, const R& rowLength,
                                      const R& orthogonalLength) {
  bSq[k] = rowLength;
  cLen[k] = orthogonalLength;
  const bool depends = isDependent(orthogonalLength);
  // The old coefficients become invalid even if the new ones can't be computed.
  word = depends ? ST_DEPENDENT : without(word, ST_MU);
  return depends;
}

#define STARSIFT_INSTANTIATE(T)                                                                   \
  template Index GramSchmidtData<long double>::validUpTo(const Basis<T, long double>&) const;     \
  template bool GramSchmidtData<long double>::orthogonaliseClassic(Basis<T, long double>&, Index, \
                                                                   Index);                        \
  template Index GramSchmidtData<long double>::orthogonaliseModified(                             \
      Basis<T, long double>&, Index, Index, OnDependency, LqCache);                               \
  template Index GramSchmidtData<long double>::orthogonaliseFull(Basis<T, long double>&, Index,   \
                                                                 Index, OnDependency);

template class GramSchmidtData<long double>;
STARSIFT_INSTANTIATE(long double)
STARSIFT_INSTANTIATE(QQ)
#undef STARSIFT_INSTANTIATE

}  // namespace starsift
