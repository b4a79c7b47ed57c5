#include "algorithms/exact/ExactProduct.h"

#include <cassert>

#include "numbers/ExactArithmetic.h"

namespace starsift {

template <class T>
Vector<T> exactProduct(const Vector<T>& row, const Matrix<T>& right) {
  assert(row.dimension() == right.rowCount());
  Vector<T> result(right.columnCount());
  for (Index i = 1; i <= row.dimension(); ++i) {
    if (row[i] == T()) continue;
    for (Index j = 1; j <= result.dimension(); ++j)
      ExactArithmetic<T>::addProduct(result[j], row[i], right[i][j]);
  }
  return result;
}

template <class T>
Matrix<T> exactProduct(const Matrix<T>& left, const Matrix<T>& right) {
  Matrix<T> result(left.rowCount(), right.columnCount());
  for (Index i = 1; i <= left.rowCount(); ++i) result[i] = exactProduct(left[i], right);
  return result;
}

template Matrix<long double> exactProduct(const Matrix<long double>&, const Matrix<long double>&);
template Matrix<QQ> exactProduct(const Matrix<QQ>&, const Matrix<QQ>&);
template Vector<long double> exactProduct(const Vector<long double>&, const Matrix<long double>&);
template Vector<QQ> exactProduct(const Vector<QQ>&, const Matrix<QQ>&);

}  // namespace starsift
