// The row Hermite normal form: the one basis of each lattice.
#pragma once

#include "numbers/VectorQQ.h"

namespace starsift {

/// The basis in echelon form of the lattice that the rows span: pivots are positive,
/// entries above a pivot at least 0 and below it, and there are as many rows as the rank.
/// Rows may be dependent, of zeros and rational; they give the form over their common
/// denominator. Entries are taken as the rationals that they convert to; an infinite one
/// is fatal.
///
/// The pivot columns are those that are independent of the columns before. On them the
/// form is computed modulo the determinant of a minor, and the other columns follow as
/// combinations of them, so that nothing grows beyond the square of that determinant.
/// m rows of n columns and rank r: O(r^2 (m + r)) operations on numbers of its length,
/// and as many as independentRows() takes for the columns.
template <class T>
Matrix<QQ> hermiteForm(const Matrix<T>& rows);

extern template Matrix<QQ> hermiteForm(const Matrix<long double>&);
extern template Matrix<QQ> hermiteForm(const Matrix<QQ>&);

}  // namespace starsift
