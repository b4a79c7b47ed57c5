// Lattice: the transformation between raw coordinates and the scaled and
// translated ones of the working basis.
#pragma once

#include "lattice/Lattice.h"

namespace starsift {

template <class T, class R>
Vector<T> Lattice<T, R>::forwardMap(const Vector<T>& vector, bool inverse) const {
  return mapped(vector, inverse, params.translate);
}

template <class T, class R>
Vector<T> Lattice<T, R>::mapped(const Vector<T>& vector, bool inverse, bool translated) const {
  Vector<T> result(vector);
  const bool moves = translated && m > 0 && !(vector.element(m) == T());
  if (inverse) {
    if (moves) {
      const T t = vector[m] / homScaled;
      for (Index i = 1; i <= m; ++i) NumberTraits<T>::addProduct(result[i], t, translation[i]);
    }
    result /= scale;
    return result;
  }
  result *= scale;
  if (moves) {
    const T t = vector[m] / this->homValue;
    for (Index i = 1; i <= m; ++i) NumberTraits<T>::subtractProduct(result[i], t, translation[i]);
  }
  return result;
}

template <class T, class R>
Matrix<T> Lattice<T, R>::forwardMapAll(const Matrix<T>& rows) const {
  Matrix<T> result(rows);
  for (Vector<T>& row : result) row = forwardMap(row, false);
  return result;
}

template <class T, class R>
Matrix<T> Lattice<T, R>::backMapAll(const Matrix<T>& rows) const {
  Matrix<T> result(rows);
  for (Vector<T>& row : result) row = forwardMap(row, true);
  return result;
}

}  // namespace starsift
