// Row operations of size reduction, on Gram-Schmidt coefficients and on basis rows alike.
#pragma once

#include <span>

#include "core/Matrix.h"
#include "core/NumberConversion.h"

namespace starsift {

/// row -= q * other. The factors 1 and -1, which are nearly all that occur, are applied without
/// a multiplication. The two rows are distinct and have the same dimension.
template <class T>
void subtractMultiple(Vector<T>& row, const Vector<T>& other, const T& q);

/// An integer, in a floating type, times a row of a matrix.
template <class R>
struct RowMultiple {
  Index row;
  R factor;
};

/// Updates entries `first` to j of row k of the Gram-Schmidt coefficients after q times row j, j <
/// k, was subtracted from basis row k: mu[k][i] -= q * mu[j][i]. q is an integer.
template <class R>
void subtractCoefficients(Matrix<R>& mu, Index k, const RowMultiple<R>& multiple, Index first);

/// Updates entries 1 to `last` after multiples of rows j > last were subtracted, in their order.
/// The same numbers as one by one, in less time: an entry is stored once for four rows.
template <class R>
void subtractCoefficients(Matrix<R>& mu, Index k, std::span<const RowMultiple<R>> multiples,
                          Index last);

/// The greatest magnitude of an entry; 0 without entries.
template <class T>
T supNorm(const Vector<T>& row);

/// True if row - q * other has a greater sup norm than row.
template <class T>
bool lengthens(const Vector<T>& row, const Vector<T>& other, const T& q);

/// The squared length of a row, its entries rounded to nearest in R.
template <class R, class T>
R squaredNorm(const Vector<T>& row) {
  R sum = R();
  for (const T& entry : row) {
    const R value = NumberConversion<R, T>::nearest(entry);
    sum += value * value;
  }
  return sum;
}

}  // namespace starsift
