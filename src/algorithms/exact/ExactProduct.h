// Products of matrices that must not round.
#pragma once

#include "core/Matrix.h"
#include "numbers/VectorQQ.h"

namespace starsift {

/// left * right, k x n times n x m. PrecisionException if T can't hold an entry or a
/// partial sum of one. O(m) for each entry of `left` that isn't 0.
template <class T>
Matrix<T> exactProduct(const Matrix<T>& left, const Matrix<T>& right);

/// row * right, the same for one row with n entries.
template <class T>
Vector<T> exactProduct(const Vector<T>& row, const Matrix<T>& right);

extern template Matrix<long double> exactProduct(const Matrix<long double>&,
                                                 const Matrix<long double>&);
extern template Matrix<QQ> exactProduct(const Matrix<QQ>&, const Matrix<QQ>&);
extern template Vector<long double> exactProduct(const Vector<long double>&,
                                                 const Matrix<long double>&);
extern template Vector<QQ> exactProduct(const Vector<QQ>&, const Matrix<QQ>&);

}  // namespace starsift
