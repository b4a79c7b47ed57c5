// Whether two sets of rows span one lattice.
#pragma once

#include "core/Matrix.h"
#include "numbers/QQ.h"

namespace starsift {

/// The integer combinations of the rows of `a` are those of the rows of `b`. Rows may be
/// dependent, of zeros and rational, and there may be more of them on one side. Entries
/// are taken as the rationals that they convert to; an infinite one is fatal.
///
/// Bases are compared by the coordinates of one over the other, which must be integers
/// and form a unimodular matrix: short coordinates, as a few steps of a reduction leave
/// them, cost little. Rows that depend on each other, not counting zeros, are first
/// brought to Hermite form, which costs what hermiteForm() does.
template <class T>
bool sameLattice(const Matrix<T>& a, const Matrix<T>& b);

extern template bool sameLattice(const Matrix<long double>&, const Matrix<long double>&);
extern template bool sameLattice(const Matrix<QQ>&, const Matrix<QQ>&);

}  // namespace starsift
