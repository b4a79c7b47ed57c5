// The full LQ factorisation by reflectors.
#pragma once

#include "algorithms/reduction/Reflectors.h"

namespace starsift {

/// P := the matrix of the reflector of step i, of order columns - i + 1, that
/// reflectorOf() computes for row i of A. Throws as reflectorOf() does.
template <class R>
void Ps(const Matrix<R>& A, Matrix<R>& P, Index i);

/// Factors rows 1..mm of A as A = L * Q, L lower triangular, Q orthogonal: numerically the
/// most stable way to the Gram-Schmidt data.
///
/// A   its rows from kk on are read
/// L   mm x columns; right of the diagonal 0, or up to eps in a row that depends on
///     the rows before it
/// Q   columns x columns; the transpose of the product of all reflectors
/// Ps  min(mm, columns - 1) reflectors
/// kk  first row, 1 <= kk <= mm; if above 1, rows 1..kk-1 of L and Q and reflectors
///     1..kk-1 (or all reflectors if there are fewer) must be as an earlier run over
///     the same rows left them
/// mm  last row; 0 stands for all rows of A
///
/// Returns the rank of the leading block: min(mm, columns) minus the number of diagonal
/// entries of L that are up to eps in magnitude. The result of a run from kk is bit for bit
/// that of a run from 1.
///
/// Fatal: "lq_full: kk is invalid (< 1)", "lq_full: end index overflow", "lq_full:
/// dimension mismatch". Throws DecimalPrecisionException "Ps has nan entry", "L has nan
/// entry" or "Q has nan entry"; the results from row kk on are incomplete then.
/// O((mm - kk + 1) * min(mm, columns) * columns), and columns^3 for Q.
/// A. S. Householder, J. ACM 5 (1958); G. H. Golub, C. F. Van Loan, Matrix
/// Computations, 5.1 and 5.2.
template <class R>
Index lq_full(const Matrix<R>& A, Matrix<R>& L, Matrix<R>& Q, Reflectors<R>& Ps, Index kk,
              Index mm);

}  // namespace starsift
