// Whether rows are a basis of a kernel lattice, the integer solutions of homogeneous equations.
#pragma once

#include "core/Matrix.h"
#include "numbers/QQ.h"

namespace starsift {

/// True if the rows are independent, consist of integers, and their lattice contains all
/// integer vectors of their rational span. A matrix without rows is such a basis.
///
/// The rows extend to a basis of all integer vectors exactly if the columns span all integer
/// vectors of their length, which is tested only modulo the greatest common divisor of two
/// minors, hardly ever more than 1. Entries are converted to rationals exactly; an infinite
/// one is fatal.
template <class T>
bool isSaturatedBasis(const Matrix<T>& rows);

/// True if the rows are a basis of the kernel lattice of the equations: each integer solution x
/// of equations * x = 0 is exactly one integer combination of the rows, and each row is a
/// solution. Both matrices have as many columns as x has entries, even without rows; false if
/// they don't. Entries as above.
template <class T>
bool isKernelBasis(const Matrix<T>& rows, const Matrix<T>& equations);

extern template bool isSaturatedBasis(const Matrix<long double>&);
extern template bool isSaturatedBasis(const Matrix<QQ>&);
extern template bool isKernelBasis(const Matrix<long double>&, const Matrix<long double>&);
extern template bool isKernelBasis(const Matrix<QQ>&, const Matrix<QQ>&);

}  // namespace starsift
