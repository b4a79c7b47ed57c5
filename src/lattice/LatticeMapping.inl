// Lattice: the transformation between raw coordinates and the scaled and
// translated ones of the working basis.
#pragma once

#include "lattice/Lattice.h"

namespace starsift {

template <class T, class R>
Vector<T> Lattice<T, R>::forwardMap(const Vector<T>& vector, bool inverse) const {
  Vector<T> mapped(vector);
  const bool translated = params.translate && m > 0 && !(vector[m] == T());
  if (inverse) {
    if (translated) {
      const T t = vector[m] / homScaled;
      for (Index i = 1; i <= m; ++i) NumberTraits<T>::addProduct(mapped[i], t, translation[i]);
    }
    return mapped /= scale;
  }
  mapped *= scale;
  if (translated) {
    const T t = vector[m] / this->homValue;
    for (Index i = 1; i <= m; ++i) NumberTraits<T>::subtractProduct(mapped[i], t, translation[i]);
  }
  return mapped;
}

template <class T, class R>
Matrix<T> Lattice<T, R>::forwardMapAll(const Matrix<T>& rows) const {
  Matrix<T> mapped(rows);
  for (Vector<T>& row : mapped) row = forwardMap(row, false);
  return mapped;
}

template <class T, class R>
Matrix<T> Lattice<T, R>::backMapAll(const Matrix<T>& rows) const {
  Matrix<T> mapped(rows);
  for (Vector<T>& row : mapped) row = forwardMap(row, true);
  return mapped;
}

}  // namespace starsift
