// The last coordinates of the rows of a matrix, step by step towards their common divisor.
#pragma once

#include "core/Matrix.h"

namespace starsift {

/// The last coordinate of row i isn't 0, and smaller in magnitude than that of row `pick`, 0
/// for none. Rows have at least one entry.
template <class T>
bool lastIsLess(const Matrix<T>& rows, Index i, Index pick);

/// Takes multiples of row `pick` off all others, so that their last coordinates are from 0 to
/// that of `pick`; those that are 0 stay. False where there is no other. Its last coordinate
/// isn't 0; all entries are integers. PrecisionException where T can't hold a result.
template <class T>
bool reduceLast(Matrix<T>& rows, Index pick);

}  // namespace starsift
