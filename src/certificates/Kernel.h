// Whether rows are a basis of the integer solutions of homogeneous equations.
#pragma once

#include "core/Matrix.h"
#include "numbers/QQ.h"

namespace starsift {

/// The lattice of the rows is all of the integer vectors in their rational span, and the
/// rows are independent and of integers. A matrix without rows is such a basis.
///
/// The rows extend to a basis of all integer vectors exactly when the columns span all
/// of the integer vectors of their length, and that needs a look only modulo what two
/// minors have in common, which hardly ever is more than 1. Entries are taken as the
/// rationals that they convert to; an infinite one is fatal.
template <class T>
bool isSaturatedBasis(const Matrix<T>& rows);

/// Each integer solution x of equations * x = 0 is one integer combination of the rows,
/// and each row is one. Both matrices have as many columns as x has entries, also where
/// they have no rows; false if they don't. Entries as above.
template <class T>
bool isKernelBasis(const Matrix<T>& rows, const Matrix<T>& equations);

extern template bool isSaturatedBasis(const Matrix<long double>&);
extern template bool isSaturatedBasis(const Matrix<QQ>&);
extern template bool isKernelBasis(const Matrix<long double>&, const Matrix<long double>&);
extern template bool isKernelBasis(const Matrix<QQ>&, const Matrix<QQ>&);

}  // namespace starsift
