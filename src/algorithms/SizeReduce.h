// Row operations of size reduction, on Gram-Schmidt coefficients and on basis rows alike.
#pragma once

#include "core/Matrix.h"

namespace starsift {

/// row -= q * other. The factors 1 and -1, nearly all there are, multiply nothing. The two
/// rows are distinct and have one dimension.
template <class T>
void subtractMultiple(Vector<T>& row, const Vector<T>& other, const T& q);

/// Row k of the coefficients when q times row j, j < k, was taken off the basis row k:
/// mu[k][i] -= q * mu[j][i] for i <= j. q is an integer.
template <class R>
void subtractCoefficients(Matrix<R>& mu, Index k, Index j, const R& q);

/// The greatest magnitude of an entry; 0 without entries.
template <class T>
T supNorm(const Vector<T>& row);

}  // namespace starsift
