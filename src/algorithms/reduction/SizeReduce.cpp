#include "algorithms/reduction/SizeReduce.h"

#include "numbers/VectorQQ.h"

namespace starsift {

template <class T>
void subtractMultiple(Vector<T>& row, const Vector<T>& other, const T& q) {
  const Index n = row.dimension();
  if (q == T(1)) {
    for (Index i = 1; i <= n; ++i) row[i] -= other[i];
  } else if (q == T(-1)) {
    for (Index i = 1; i <= n; ++i) row[i] += other[i];
  } else {
    for (Index i = 1; i <= n; ++i) NumberTraits<T>::subtractProduct(row[i], q, other[i]);
  }
}

template <class R>
void subtractCoefficients(Matrix<R>& mu, Index k, Index j, const R& q) {
  Vector<R>& row = mu[k];
  const Vector<R>& other = mu[j];
  if (q == R(1)) {
    for (Index i = 1; i < j; ++i) row[i] -= other[i];
  } else if (q == R(-1)) {
    for (Index i = 1; i < j; ++i) row[i] += other[i];
  } else {
    for (Index i = 1; i < j; ++i) row[i] -= q * other[i];
  }
  row[j] -= q;
}

template <class T>
T supNorm(const Vector<T>& row) {
  T norm = T();
  for (const T& entry : row) {
    const T size = NumberTraits<T>::absolute(entry);
    if (size > norm) norm = size;
  }
  return norm;
}

template <class T>
bool lengthens(const Vector<T>& row, const Vector<T>& other, const T& q) {
  Vector<T> difference(row);
  subtractMultiple(difference, other, q);
  return supNorm(difference) > supNorm(row);
}

template void subtractMultiple(Vector<long double>&, const Vector<long double>&,
                               const long double&);
template void subtractMultiple(Vector<QQ>&, const Vector<QQ>&, const QQ&);
template void subtractCoefficients(Matrix<long double>&, Index, Index, const long double&);
template long double supNorm(const Vector<long double>&);
template QQ supNorm(const Vector<QQ>&);
template bool lengthens(const Vector<long double>&, const Vector<long double>&, const long double&);
template bool lengthens(const Vector<QQ>&, const Vector<QQ>&, const QQ&);

}  // namespace starsift
