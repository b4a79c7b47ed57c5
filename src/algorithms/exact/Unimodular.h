// Whether a change of basis preserves the lattice.
#pragma once

#include "core/Matrix.h"
#include "numbers/QQ.h"

namespace starsift {

/// Square, of integers, with determinant 1 or -1: the rows span all integer vectors.
/// True without rows and columns. Exact: entries are converted to rationals exactly; an
/// infinite one is fatal. n rows: O(n^2) for what little moves made of an identity; in general
/// O(n^3) machine operations if the determinant shows false, and if true as many for each 30 bits
/// of the bound on the determinant.
template <class T>
bool isUnimodular(const Matrix<T>& matrix);

extern template bool isUnimodular(const Matrix<long double>&);
extern template bool isUnimodular(const Matrix<QQ>&);

}  // namespace starsift
