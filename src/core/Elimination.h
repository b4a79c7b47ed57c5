// Gaussian elimination with its transformation, and the determinant computed by it.
#pragma once

#include "core/Matrix.h"

namespace starsift {

/// Brings `a` to row echelon form by row operations and collects them:
/// transform * old a == new a, `transform` square of order a.rowCount(), set here.
/// With `reduce` pivots become 1 and the entries above them 0 (reduced row echelon form).
///
/// The pivot of a step is the entry of greatest magnitude in the leftmost column that is
/// not zero in the remaining rows: not zero within the tolerance of T, or not exactly
/// zero if T is exact. Returns the rank, negative if the number of row swaps was odd.
/// Throws PrecisionException "q overflow" or "q2 overflow" if a factor leaves the safe
/// range of T, and FatalPrecisionException beyond that; both matrices are partly reduced
/// then. With `reduce` fatal if rounding makes a row above a pivot zero: "This should not
/// happen -- check it". O(rows^2 * (rows + columns)).
template <class T>
Index eliminate(Matrix<T>& a, Matrix<T>& transform, bool reduce);

/// Implements Matrix::determinant().
template <class T>
T eliminationDeterminant(const Matrix<T>& matrix);

}  // namespace starsift
