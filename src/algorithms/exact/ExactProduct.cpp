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
RightFactor<T>::RightFactor(const Matrix<T>& matrix) : matrix_(matrix) {
  starts_.reserve(static_cast<std::size_t>(matrix.rowCount()) + 1);
  starts_.push_back(0);
  for (const Vector<T>& row : matrix) {
    for (Index j = 1; j <= row.dimension(); ++j)
      if (!(row[j] == T())) columns_.push_back(j);
    starts_.push_back(columns_.size());
  }
}

template <class T>
Vector<T> RightFactor<T>::times(const Vector<T>& row) const {
  assert(row.dimension() == matrix_.rowCount());
  Vector<T> result(matrix_.columnCount());
  for (Index i = 1; i <= row.dimension(); ++i) {
    if (row[i] == T()) continue;
    const auto at = static_cast<std::size_t>(i);
    for (std::size_t k = starts_[at - 1]; k < starts_[at]; ++k)
      ExactArithmetic<T>::addProduct(result[columns_[k]], row[i], matrix_[i][columns_[k]]);
  }
  return result;
}

template <class T>
Matrix<T> exactProduct(const Matrix<T>& left, const Matrix<T>& right) {
  const RightFactor<T> factor(right);
  Matrix<T> result(left.rowCount(), right.columnCount());
  for (Index i = 1; i <= left.rowCount(); ++i) result[i] = factor.times(left[i]);
  return result;
}

template class RightFactor<long double>;
template class RightFactor<QQ>;
template Matrix<long double> exactProduct(const Matrix<long double>&, const Matrix<long double>&);
template Matrix<QQ> exactProduct(const Matrix<QQ>&, const Matrix<QQ>&);
template Vector<long double> exactProduct(const Vector<long double>&, const Matrix<long double>&);
template Vector<QQ> exactProduct(const Vector<QQ>&, const Matrix<QQ>&);

}  // namespace starsift
