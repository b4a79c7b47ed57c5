// The reflectors of a factorisation, stored as vectors: a product of matrices would
// need columns^2 numbers per step, a reflector needs columns.
#pragma once

#include "core/Matrix.h"

namespace starsift {

/// I + beta * v * v^T on the columns from some column on; the identity if v has no
/// components.
template <class R>
struct Reflector {
  Vector<R> v;
  R beta = R();
};

/// The reflector that maps row i of A from column i on to a multiple of the first unit
/// vector whose sign is opposite to that of A[i][i]; the identity if the length is up to
/// eps. `length` is set to the length of that part of the row.
///
/// 1 <= i <= rows, columns of A. Throws DecimalPrecisionException "Ps has nan entry".
/// A. S. Householder, J. ACM 5 (1958); G. H. Golub, C. F. Van Loan, Matrix
/// Computations, 5.1.
template <class R>
Reflector<R> reflectorOf(const Matrix<R>& A, Index i, R& length);

/// Reflectors H_1, H_2, ...; H_i does not change the columns before i.
template <class R>
class Reflectors {
 public:
  Index count() const { return vectors_.dimension(); }
  void clear() { resize(0); }
  /// New reflectors are identities.
  void resize(Index count);
  /// 1 <= i <= count(); as many components as columns from column i on, or none.
  void set(Index i, const Reflector<R>& reflector);

  /// row := row * H_i, 1 <= i <= count(). O(columns).
  void apply(Index i, Vector<R>& row) const;

  /// H_1 * ... * H_i as a matrix of the given order, 0 <= i <= count(). O(i * order^2).
  Matrix<R> product(Index i, Index order) const;

 private:
  Array<Vector<R>> vectors_;
  Vector<R> betas_;
};

extern template Reflector<long double> reflectorOf(const Matrix<long double>&, Index, long double&);
extern template class Reflectors<long double>;

}  // namespace starsift
