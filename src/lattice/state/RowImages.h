// The rows of the basis in the number type of the Gram-Schmidt data, and the products that
// these are computed from.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "algorithms/reduction/RowProducts.h"
#include "core/Matrix.h"

namespace starsift {

/// The rows of one basis, rounded to nearest once per change. Each change of a row must be
/// made by subtract(), or reported by one of the operations before it, before the next use.
template <class T, class R>
class RowImages {
 public:
  /// Row k was changed.
  void forget(Index k) {
    forgetImage(k);
    products_.forget(k);
  }
  /// Any row may have been changed.
  void forgetAll() {
    std::fill(valid_.begin(), valid_.end(), false);
    products_.forgetAll();
  }
  /// Rows i and j were swapped; row 0 has no image.
  void swap(Index i, Index j) {
    if (std::min(i, j) >= 1 && std::max(i, j) <= valid_.dimension()) {
      images_.swapRows(i, j);
      valid_.swap(i, j);
    } else {
      forgetImage(i);
      forgetImage(j);
    }
    products_.swap(i, j);
  }
  /// Subtracts multiples of rows before k from row k of the basis, which needs no report.
  void subtract(Matrix<T>& basis, Index k, const std::vector<RowMultiple<R>>& multiples) {
    for (const RowMultiple<R>& one : multiples) {
      subtractMultiple(basis[k], basis[one.row], NumberConversion<T, R>::ofInteger(one.factor));
      products_.change(k, std::fabs(one.factor));
    }
    forgetImage(k);
  }

  /// A matrix whose rows 1..min(last, n) are the rounded rows of the basis. A squared length
  /// beyond R is fatal: "numbers too large for the reduction". The basis must live as long as
  /// the products are used.
  const Matrix<R>& of(const Matrix<T>& basis, Index last) {
    if (images_.rowCount() != basis.rowCount() || images_.columnCount() != basis.columnCount()) {
      images_.resize(basis.rowCount(), basis.columnCount(), false);
      valid_.resize(basis.rowCount(), false);
      forgetAll();
    }
    for (Index k = 1; k <= std::min(last, basis.rowCount()); ++k)
      if (!valid_[k]) convert(basis[k], k);
    products_.roundedFrom([&basis](Index i, Index j) {
      return NumberConversion<R, T>::nearest(T(basis[i] * basis[j]));
    });
    return images_;
  }
  /// The products of these rows.
  RowProducts<R>& products() {
    products_.resize(images_.rowCount());
    return products_;
  }

 private:
  void forgetImage(Index k) {
    if (k >= 1 && k <= valid_.dimension()) valid_[k] = false;
  }
  void convert(const Vector<T>& row, Index k) {
    Vector<R>& image = images_[k];
    std::transform(row.begin(), row.end(), image.begin(), NumberConversion<R, T>::nearest);
    if (NumberTraits<R>::isInfinite(image * image)) fail("numbers too large for the reduction");
    valid_[k] = true;
  }

  Matrix<R> images_;
  Array<bool> valid_;
  RowProducts<R> products_;
};

/// Over R itself the rows are their own images.
template <class R>
class RowImages<R, R> {
 public:
  void forget(Index k) { products_.forget(k); }
  void forgetAll() { products_.forgetAll(); }
  void swap(Index i, Index j) { products_.swap(i, j); }
  void subtract(Matrix<R>& basis, Index k, const std::vector<RowMultiple<R>>& multiples) {
    products_.subtract(basis, k, multiples);
  }
  const Matrix<R>& of(const Matrix<R>& basis, Index /*last*/) {
    products_.resize(basis.rowCount());
    return basis;
  }
  RowProducts<R>& products() { return products_; }

 private:
  RowProducts<R> products_;
};

}  // namespace starsift
