// Gaussian elimination with its transformation, and the determinant it gives.
#pragma once

#include "core/Matrix.h"

namespace starsift {

/// Brings `a` to row echelon form by row operations and collects them:
/// transform * old a == new a, `transform` square of order a.rowCount(), set here.
/// With `reduce` pivots become 1 and the entries above them 0 (reduced form).
///
/// The pivot of a step is, in the leftmost column that is not zero within the
/// tolerance of T, exactly zero where T is exact, the entry of greatest magnitude. Returns the
/// rank, negative when the number of row exchanges was odd. Throws PrecisionException "q overflow"
/// or "q2 overflow" where a factor leaves the safe range of T, and
/// FatalPrecisionException beyond that; both matrices are half done then. With `reduce`
/// fatal where rounding makes a row above a pivot zero: "This should not happen -- check it".
/// O(rows^2 * (rows + columns)).
template <class T>
Index eliminate(Matrix<T>& a, Matrix<T>& transform, bool reduce);

/// The body of Matrix::determinant().
template <class T>
T eliminationDeterminant(const Matrix<T>& matrix);

}  // namespace starsift
