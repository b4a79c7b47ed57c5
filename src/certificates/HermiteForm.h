// The row Hermite normal form: a unique basis of each lattice.
#pragma once

#include "numbers/VectorQQ.h"

namespace starsift {

/// The basis in echelon form of the lattice that the rows span: pivots are positive,
/// entries above a pivot at least 0 and less than it, and there are as many rows as the rank.
/// Rows may be dependent, zero and rational; rational rows give the form over their common
/// denominator. Entries are converted to rationals exactly; an infinite one is fatal.
///
/// The pivot columns are the columns that are independent of the columns before them. On them
/// the form is computed modulo the determinant of a minor, and the other columns follow as
/// combinations of them, so that no number grows beyond the square of that determinant.
/// m rows of n columns and rank r: O(r^2 (m + r)) operations on numbers of its length,
/// plus the cost of independentRows() for the columns.
template <class T>
Matrix<QQ> hermiteForm(const Matrix<T>& rows);

extern template Matrix<QQ> hermiteForm(const Matrix<long double>&);
extern template Matrix<QQ> hermiteForm(const Matrix<QQ>&);

}  // namespace starsift
