// Classic Gram-Schmidt orthogonalisation, one row at a time, without its vectors.
#pragma once

#include "core/Matrix.h"

namespace starsift {

/// Row k of the Gram-Schmidt data from those of the rows before it.
///
/// rows   1..k are read, of any equal length
/// k      1 <= k <= rows, columns of mu and entries of cLen and bSq
/// mu     row k is set: mu[k][k] = 1, behind it 0; rows 1..k-1 are valid
/// cLen   squared length of the part of row k orthogonal to the rows before; entries
///        1..k-1 are valid and not 0
/// bSq    squared length of row k
///
/// Throws DecimalPrecisionException "mu-classic has nan entry" or "cLen-classic has
/// infinite entry". O(k * (k + columns)). The lengths come by subtraction: of a row
/// that nearly depends on others few digits are right, and cLen[k] may be negative.
/// H. Cohen, A Course in Computational Algebraic Number Theory, algorithm 2.6.3.
template <class R>
void classicGramSchmidt(const Matrix<R>& rows, Index k, Matrix<R>& mu, Vector<R>& cLen,
                        Vector<R>& bSq);

}  // namespace starsift
