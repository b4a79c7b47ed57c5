// The full LQ factorisation by reflectors.
#pragma once

#include "algorithms/reduction/Reflectors.h"

namespace starsift {

/// P := the matrix of the reflector of step i, of order columns - i + 1, that
/// reflectorOf() gives for row i of A. Throws as that does.
template <class R>
void Ps(const Matrix<R>& A, Matrix<R>& P, Index i);

/// Factors rows 1..mm of A as A = L * Q, L lower triangular, Q orthogonal: the most
/// stable way to the Gram-Schmidt data.
///
/// A   its rows from kk on are read
/// L   mm x columns; behind the diagonal 0, or up to eps in a row that depends on
///     those before
/// Q   columns x columns; the transpose of the product of all reflectors
/// Ps  min(mm, columns - 1) reflectors
/// kk  first row, 1 <= kk <= mm; above 1 rows 1..kk-1 of L and Q and reflectors
///     1..kk-1 stay as an earlier run over the same rows left them, or as many of
///     the reflectors as there are
/// mm  last row; 0 stands for all rows of A
///
/// Returns the rank of the leading block: min(mm, columns) less the diagonal entries
/// of L up to eps in magnitude. A run from kk has bit for bit the result of a run
/// from 1.
///
/// Fatal: "lq_full: kk is invalid (< 1)", "lq_full: end index overflow", "lq_full:
/// dimension mismatch". Throws DecimalPrecisionException "Ps has nan entry", "L has nan
/// entry" or "Q has nan entry"; what stands from row kk on is half done then.
/// O((mm - kk + 1) * min(mm, columns) * columns), and columns^3 for Q.
/// A. S. Householder, J. ACM 5 (1958); G. H. Golub, C. F. Van Loan, Matrix
/// Computations, 5.1 and 5.2.
template <class R>
Index lq_full(const Matrix<R>& A, Matrix<R>& L, Matrix<R>& Q, Reflectors<R>& Ps, Index kk,
              Index mm);

}  // namespace starsift
