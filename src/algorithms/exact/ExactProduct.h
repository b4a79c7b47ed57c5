// Products of matrices that must not round.
#pragma once

#include <cstddef>
#include <vector>

#include "core/Matrix.h"
#include "numbers/VectorQQ.h"

namespace starsift {

/// The right factor of products, n x m: rows are multiplied with its entries that aren't 0.
template <class T>
class RightFactor {
 public:
  /// `matrix` must live as long as this object, and stay as it is.
  explicit RightFactor(const Matrix<T>& matrix);

  /// row * matrix for a row with n entries. PrecisionException if T can't hold an entry or a
  /// partial sum of one.
  Vector<T> times(const Vector<T>& row) const;
  /// Entries that aren't 0.
  Index entryCount() const { return static_cast<Index>(columns_.size()); }

 private:
  const Matrix<T>& matrix_;
  /// Columns of the entries that aren't 0, row after row; those of row i from starts_[i - 1] on.
  std::vector<Index> columns_;
  std::vector<std::size_t> starts_;
};

/// left * right, k x n times n x m. PrecisionException if T can't hold an entry or a
/// partial sum of one. One product for each entry of `left` and each entry of the row of `right`
/// that it meets, if they aren't 0.
template <class T>
Matrix<T> exactProduct(const Matrix<T>& left, const Matrix<T>& right);

/// row * right, the same for one row with n entries.
template <class T>
Vector<T> exactProduct(const Vector<T>& row, const Matrix<T>& right);

extern template class RightFactor<long double>;
extern template class RightFactor<QQ>;
extern template Matrix<long double> exactProduct(const Matrix<long double>&,
                                                 const Matrix<long double>&);
extern template Matrix<QQ> exactProduct(const Matrix<QQ>&, const Matrix<QQ>&);
extern template Vector<long double> exactProduct(const Vector<long double>&,
                                                 const Matrix<long double>&);
extern template Vector<QQ> exactProduct(const Vector<QQ>&, const Matrix<QQ>&);

}  // namespace starsift
