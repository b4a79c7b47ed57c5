// What makes a basis LLL-reduced: the two inequalities on Gram-Schmidt data, as the
// reduction tests them.
//
// A. K. Lenstra, H. W. Lenstra, L. Lovasz, Math. Ann. 261 (1982).
#pragma once

#include "core/Matrix.h"

namespace starsift {

/// True if row k is size-reduced against row j.
///
/// j, k   1 <= j < k <= n
/// mu     n x n; entry [k][j] is valid
/// eta    1/2 <= eta < 1
///
/// |mu[k][j]| = eta counts as size-reduced. Never throws.
template <class R>
bool sizeReduced(Index k, Index j, const Matrix<R>& mu, const R& eta);

/// Lovasz test for rows k-1 and k: true if they may stay in this order, false for a swap.
///
/// k      2 <= k <= n
/// mu     n x n; entry [k][k-1] is valid
/// cLen   squared lengths of the orthogonalised rows; entries k-1 and k are valid
/// delta  1/4 < delta < 1
///
/// Never throws: the orthogonalisation has already rejected nan and infinity.
template <class R>
bool lovaszHolds(Index k, const Matrix<R>& mu, const Vector<R>& cLen, const R& delta);

extern template bool sizeReduced(Index, Index, const Matrix<long double>&, const long double&);
extern template bool lovaszHolds(Index, const Matrix<long double>&, const Vector<long double>&,
                                 const long double&);

}  // namespace starsift
