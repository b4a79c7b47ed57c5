#include "algorithms/reduction/LqFull.h"

#include <algorithm>
#include <cmath>

#include "system/Exceptions.h"

namespace starsift {

namespace {

/// Rows kk..mm of A, multiplied by the reflectors before step kk.
template <class R>
void takeRows(const Matrix<R>& A, Matrix<R>& L, const Reflectors<R>& reflectors, Index kk,
              Index mm) {
  const Index known = std::min(kk - 1, reflectors.count());
  L.resize(mm, A.columnCount(), false);
  for (Index j = kk; j <= mm; ++j) {
    L[j] = A[j];
    for (Index i = 1; i <= known; ++i) reflectors.apply(i, L[j]);
  }
}

/// Step i: row i becomes a multiple of a unit vector from column i on.
template <class R>
void reflectRows(Matrix<R>& L, Reflectors<R>& reflectors, Index i) {
  R length = R();
  const Reflector<R> reflector = reflectorOf(L, i, length);
  reflectors.set(i, reflector);
  if (!reflector.v.isSet()) return;
  for (Index j = i + 1; j <= L.rowCount(); ++j) reflectors.apply(i, L[j]);
  // The effect of the reflector on its own row is known without rounding.
  L[i][i] = L[i][i] >= R() ? -length : length;
  std::fill(L[i].begin() + i, L[i].end(), R());
}

/// Rows kk.. of the transposed product. Row r of it needs no reflector after the
/// r-th, as the later reflectors do not change the r-th unit vector.
template <class R>
void accumulate(Matrix<R>& Q, const Reflectors<R>& reflectors, Index kk) {
  for (Index r = kk; r <= Q.rowCount(); ++r) {
    std::fill(Q[r].begin(), Q[r].end(), R());
    Q[r][r] = R(1);
    for (Index i = std::min(r, reflectors.count()); i >= 1; --i) reflectors.apply(i, Q[r]);
  }
}

template <class R>
void refuseNan(const Matrix<R>& matrix, Index from, const char* message) {
  for (Index k = from; k <= matrix.rowCount(); ++k)
    for (const R& entry : matrix[k])
      if (std::isnan(entry)) throw DecimalPrecisionException(message);
}

}  // namespace

template <class R>
void Ps(const Matrix<R>& A, Matrix<R>& P, Index i) {
  R length = R();
  const Reflector<R> reflector = reflectorOf(A, i, length);
  P = Matrix<R>::identity(A.columnCount() - i + 1);
  const Vector<R>& v = reflector.v;
  for (Index row = 1; row <= v.dimension(); ++row)
    for (Index column = 1; column <= row; ++column) {
      P[row][column] += reflector.beta * v[row] * v[column];
      P[column][row] = P[row][column];
    }
}

template <class R>
Index lq_full(const Matrix<R>& A, Matrix<R>& L, Matrix<R>& Q, Reflectors<R>& Ps, Index kk,
              Index mm) {
  if (kk < 1) fail("lq_full: kk is invalid (< 1)");
  if (mm > A.rowCount()) fail("lq_full: end index overflow");
  if (mm == 0) mm = A.rowCount();
  if (kk > mm) fail("lq_full: dimension mismatch");
  const Index columns = A.columnCount();
  const Index steps = std::max(std::min(mm, columns - 1), Index{0});
  takeRows(A, L, Ps, kk, mm);
  Ps.resize(steps);
  for (Index i = kk; i <= steps; ++i) reflectRows(L, Ps, i);
  refuseNan(L, kk, "L has nan entry");
  Q.resize(columns, columns, false);
  accumulate(Q, Ps, kk);
  refuseNan(Q, kk, "Q has nan entry");
  Index rank = std::min(mm, columns);
  for (Index k = std::min(mm, columns); k >= 1; --k)
    if (NumberTraits<R>::isZero(L[k][k])) --rank;
  return rank;
}

template void Ps(const Matrix<long double>&, Matrix<long double>&, Index);
template Index lq_full(const Matrix<long double>&, Matrix<long double>&, Matrix<long double>&,
                       Reflectors<long double>&, Index, Index);

}  // namespace starsift
