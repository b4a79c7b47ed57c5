#include "algorithms/reduction/LllConditions.h"

namespace starsift {

template <class R>
bool sizeReduced(Index k, Index j, const Matrix<R>& mu, const R& eta) {
  return NumberTraits<R>::absolute(mu[k][j]) <= eta;
}

template <class R>
bool lovaszHolds(Index k, const Matrix<R>& mu, const Vector<R>& cLen, const R& delta) {
  const R& coefficient = mu[k][k - 1];
  return cLen[k] + coefficient * coefficient * cLen[k - 1] >= delta * cLen[k - 1];
}

template bool sizeReduced(Index, Index, const Matrix<long double>&, const long double&);
template bool lovaszHolds(Index, const Matrix<long double>&, const Vector<long double>&,
                          const long double&);

}  // namespace starsift
