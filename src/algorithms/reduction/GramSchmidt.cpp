#include "algorithms/reduction/GramSchmidt.h"

#include <algorithm>
#include <cmath>

#include "system/Exceptions.h"

namespace starsift {

namespace {

/// Sum of the first `count` products.
template <class R>
R partialDot(const Vector<R>& a, const Vector<R>& b, Index count) {
  R sum = R();
  for (Index i = 1; i <= count; ++i) sum += a[i] * b[i];
  return sum;
}

}  // namespace

template <class R>
void classicGramSchmidt(const Matrix<R>& rows, Index k, RowProducts<R>& products, Matrix<R>& mu,
                        Vector<R>& cLen, Vector<R>& bSq) {
  const Vector<R>& r = products.ofRow(rows, k, mu, cLen);
  for (Index j = 1; j < k; ++j) {
    mu[k][j] = r[j] / cLen[j];
    if (std::isnan(mu[k][j])) throw DecimalPrecisionException("mu-classic has nan entry");
  }
  bSq[k] = products.squaredLength(rows, k);
  const R c = bSq[k] - partialDot(mu[k], r, k - 1);
  mu[k][k] = R(1);
  std::fill(mu[k].begin() + k, mu[k].end(), R());
  cLen[k] = c;
  if (!std::isfinite(c)) throw DecimalPrecisionException("cLen-classic has infinite entry");
}

template void classicGramSchmidt(const Matrix<long double>&, Index, RowProducts<long double>&,
                                 Matrix<long double>&, Vector<long double>&, Vector<long double>&);

}  // namespace starsift
