// The reduced LQ factorisation, row by row, that can restart at the first changed row.
#pragma once

#include <functional>

#include "core/Matrix.h"

namespace starsift {

/// Called with k before step k is done.
using StepObserver = std::function<void(Index k)>;

/// Factors rows 1..mm of A as A = Lr * Q, Lr lower triangular with ones on its
/// diagonal, the rows of Q orthogonal: the modified Gram-Schmidt process, which subtracts
/// the projection onto each pivot row from all rows below it before the next step.
///
/// A      its rows from kk on are read, the work rows start as copies of them
/// Lr     mm x mm; column k is set by step k
/// Q      mm x columns; row k is the pivot of step k
/// _d     mm squared lengths of the pivots
/// cache  null, or what the next run may restart from: element k holds the rows k..mm,
///        and only these, reduced by steps 1..k-1, so that basis row j is stored in row
///        j-k+1 of the element. There are as many elements as steps that were begun.
/// kk     first step, 1 <= kk <= mm; if above 1, the cache must hold a run over the same
///        rows 1..kk-1, and Lr, Q and _d its results
/// mm     last row; 0 stands for all rows of A
///
/// Returns 0, or the first k whose pivot vanishes: |_d[k]| <= eps; the steps from k on
/// are not done then. The result of a run from kk is bit for bit that of a run from 1: a
/// row that the cache holds unchanged is read from there, the steps before kk are repeated
/// for any other row.
///
/// Fatal: "lq_reduced: kk is invalid (< 1)", "lq_reduced: dimension mismatch" for mm
/// below kk or above the rows and for a cache that ends before kk - 1, "lq_reduced: non
/// caching variant needs kk == 1". Throws DecimalPrecisionException "_d has infinite
/// entry"; a run may restart at any k up to that step then.
/// O((mm - kk + 1) * mm * columns) for unchanged rows.
/// A. Bjorck, BIT 7 (1967); G. H. Golub, C. F. Van Loan, Matrix Computations, 5.2.
template <class R>
Index lq_reduced(const Matrix<R>& A, Matrix<R>& Lr, Matrix<R>& Q, Vector<R>& _d,
                 Array<Matrix<R>>* cache, Index kk, Index mm, const StepObserver& onStep = {});

}  // namespace starsift
