#include "algorithms/reduction/SizeReduce.h"

#include <array>

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
void subtractCoefficients(Matrix<R>& mu, Index k, const RowMultiple<R>& multiple, Index first) {
  const auto& [j, q] = multiple;
  Vector<R>& row = mu[k];
  const Vector<R>& other = mu[j];
  for (Index i = first; i < j; ++i) row[i] -= q * other[i];
  row[j] -= q;
}

template <class R>
void subtractCoefficients(Matrix<R>& mu, Index k, std::span<const RowMultiple<R>> multiples,
                          Index last) {
  R* const row = mu[k].begin();
  for (; multiples.size() >= 4; multiples = multiples.subspan(4)) {
    const auto rowOf = [&](std::size_t i) { return mu[multiples[i].row].begin(); };
    const std::array<const R*, 4> others{rowOf(0), rowOf(1), rowOf(2), rowOf(3)};
    for (Index i = 0; i < last; ++i) {
      R entry = row[i];
      for (std::size_t a = 0; a < 4; ++a) entry -= multiples[a].factor * others[a][i];
      row[i] = entry;
    }
  }
  for (const auto& [j, q] : multiples) {
    const R* const other = mu[j].begin();
    for (Index i = 0; i < last; ++i) row[i] -= q * other[i];
  }
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
template void subtractCoefficients(Matrix<long double>&, Index, const RowMultiple<long double>&,
                                   Index);
template void subtractCoefficients(Matrix<long double>&, Index,
                                   std::span<const RowMultiple<long double>>, Index);
template long double supNorm(const Vector<long double>&);
template QQ supNorm(const Vector<QQ>&);
template bool lengthens(const Vector<long double>&, const Vector<long double>&, const long double&);
template bool lengthens(const Vector<QQ>&, const Vector<QQ>&, const QQ&);

}  // namespace starsift
