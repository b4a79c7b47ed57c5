// The last coordinates of the rows of a matrix, reduced step by step to their greatest common
// divisor.
#pragma once

#include "core/Matrix.h"

namespace starsift {

/// True if the last coordinate of row i isn't 0 and is smaller in magnitude than that of row
/// `pick`; `pick` is 0 for no row. Rows have at least one entry.
template <class T>
bool lastIsLess(const Matrix<T>& rows, Index i, Index pick);

/// Subtracts multiples of row `pick` from all other rows, so that their last coordinates lie
/// between 0 and that of `pick`; rows whose last coordinate is 0 stay. False if there is no
/// other row. The last coordinate of `pick` isn't 0; all entries are integers.
/// PrecisionException if T can't hold a result.
template <class T>
bool reduceLast(Matrix<T>& rows, Index pick);

}  // namespace starsift
