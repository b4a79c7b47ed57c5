// The row Hermite normal form of a lattice of full rank, with all numbers kept below a
// modulus.
#pragma once

#include "algorithms/exact/IntegerMatrix.h"

namespace starsift {

/// The form of the lattice spanned by the rows and by `modulus` times each unit vector. Square
/// of order `columns`, upper triangular with positive diagonal, entries above the diagonal
/// at least 0 and less than the diagonal entry of their column.
///
/// `modulus` is positive. No number grows beyond its square times m + n. m rows of n columns:
/// O(n^2 (m + n)) operations.
/// P. D. Domich, R. Kannan, L. E. Trotter, Math. Oper. Res. 12 (1987); H. Cohen, A Course
/// in Computational Algebraic Number Theory, section 2.4.2.
IntegerMatrix hermiteModulo(const IntegerMatrix& rows, std::size_t columns, const ZZ& modulus);

}  // namespace starsift
