// Whether a change of basis loses nothing.
#pragma once

#include "core/Matrix.h"
#include "numbers/QQ.h"

namespace starsift {

/// Square, of integers, with determinant 1 or -1: the rows span all integer vectors.
/// True without rows and columns. Exact: entries are taken as the rationals that they
/// convert to; an infinite one is fatal. n rows: O(n^3) machine operations for a no by
/// the determinant, and for a yes as many for each 30 bits that it might have.
template <class T>
bool isUnimodular(const Matrix<T>& matrix);

extern template bool isUnimodular(const Matrix<long double>&);
extern template bool isUnimodular(const Matrix<QQ>&);

}  // namespace starsift
