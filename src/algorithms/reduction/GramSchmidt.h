// Classic Gram-Schmidt orthogonalisation, one row at a time, without its vectors.
#pragma once

#include "algorithms/reduction/RowProducts.h"
#include "core/Matrix.h"

namespace starsift {

/// Computes row k of the Gram-Schmidt data from the data of the rows before it.
///
/// rows      1..k are read, of any equal length
/// k         1 <= k <= rows, columns of mu and entries of cLen and bSq
/// products  for as many rows as there are; known products aren't computed again
/// mu        row k is set: mu[k][k] = 1, 0 after it; rows 1..k-1 are valid
/// cLen      squared length of the part of row k orthogonal to the rows before it; entries
///           1..k-1 are valid and not 0
/// bSq       squared length of row k
///
/// Throws DecimalPrecisionException "mu-classic has nan entry" or "cLen-classic has
/// infinite entry". O(u * (k + columns) + k) for u unknown products. The lengths are
/// computed by subtraction: for a row that nearly depends on others few digits are correct,
/// and cLen[k] may be negative.
/// H. Cohen, A Course in Computational Algebraic Number Theory, algorithm 2.6.3.
template <class R>
void classicGramSchmidt(const Matrix<R>& rows, Index k, RowProducts<R>& products, Matrix<R>& mu,
                        Vector<R>& cLen, Vector<R>& bSq);

}  // namespace starsift
