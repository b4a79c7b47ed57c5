#include "algorithms/reduction/Reflectors.h"

#include <cmath>

#include "system/Exceptions.h"

namespace starsift {

template <class R>
Reflector<R> reflectorOf(const Matrix<R>& A, Index i, R& length) {
  const Vector<R>& row = A[i];
  const Index columns = A.columnCount();
  length = R();
  for (Index j = i; j <= columns; ++j) length += row[j] * row[j];
  length = std::sqrt(length);
  if (std::isnan(length) || NumberTraits<R>::isInfinite(length))
    throw DecimalPrecisionException("Ps has nan entry");
  Reflector<R> reflector;
  if (length <= NumberTraits<R>::tolerance()) return reflector;
  const R first = NumberTraits<R>::absolute(row[i]);
  reflector.v.resize(columns - i + 1, false);
  std::copy(row.begin() + (i - 1), row.end(), reflector.v.begin());
  // Both terms have the same sign, so nothing cancels.
  reflector.v[1] = row[i] >= R() ? length + first : -(length + first);
  reflector.beta = R(-1) / (length * (first + length));
  return reflector;
}

template <class R>
void Reflectors<R>::resize(Index count) {
  const Index before = vectors_.dimension();
  vectors_.resize(count, false);
  betas_.resize(count, false);
  // The storage may hold old reflectors.
  for (Index i = before + 1; i <= count; ++i) vectors_[i].clear();
}

template <class R>
void Reflectors<R>::set(Index i, const Reflector<R>& reflector) {
  vectors_.element(i) = reflector.v;
  betas_[i] = reflector.beta;
}

template <class R>
void Reflectors<R>::apply(Index i, Vector<R>& row) const {
  const Vector<R>& v = vectors_[i];
  R factor = R();
  for (Index j = 1; j <= v.dimension(); ++j) factor += row[i + j - 1] * v[j];
  factor *= betas_[i];
  for (Index j = 1; j <= v.dimension(); ++j) row[i + j - 1] += factor * v[j];
}

template <class R>
Matrix<R> Reflectors<R>::product(Index i, Index order) const {
  Matrix<R> result = Matrix<R>::identity(order);
  for (Vector<R>& row : result)
    for (Index step = 1; step <= i; ++step) apply(step, row);
  return result;
}

template Reflector<long double> reflectorOf(const Matrix<long double>&, Index, long double&);
template class Reflectors<long double>;

}  // namespace starsift
