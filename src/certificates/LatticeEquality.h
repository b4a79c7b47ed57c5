// Whether two sets of rows span the same lattice.
#pragma once

#include "core/Matrix.h"
#include "numbers/QQ.h"

namespace starsift {

/// True if the integer combinations of the rows of `a` are those of the rows of `b`. Rows may
/// be dependent, zero and rational, and their numbers may differ. Entries are converted to
/// rationals exactly; an infinite one is fatal.
///
/// Bases are compared by the coordinates of one over the other, which must be integers
/// and form a unimodular matrix: short coordinates, as a few steps of a reduction produce
/// them, cost little. Rows that depend on each other, not counting zero rows, are first
/// brought to Hermite normal form, at the cost of hermiteForm().
template <class T>
bool sameLattice(const Matrix<T>& a, const Matrix<T>& b);

extern template bool sameLattice(const Matrix<long double>&, const Matrix<long double>&);
extern template bool sameLattice(const Matrix<QQ>&, const Matrix<QQ>&);

}  // namespace starsift
