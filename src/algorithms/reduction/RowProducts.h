// Products of the rows of a basis with the orthogonal vectors of the rows before them, stored
// as long as they are valid.
//
// A reduction changes one row, or swaps two neighbouring rows, and needs the Gram-Schmidt data
// of one row again. Most products stay valid: a row from which multiples of rows before it are
// subtracted keeps its orthogonal vector, and a swap changes two of these vectors. So most
// steps compute a few products of rows, instead of one for each row before.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <utility>
#include <vector>

#include "algorithms/reduction/ShortRow.h"
#include "algorithms/reduction/SizeReduce.h"
#include "core/Matrix.h"

namespace starsift {

/// Rows and orthogonal vectors are numbered from 1. Every change of a row must be reported by
/// the member functions below.
template <class R>
class RowProducts {
 public:
  /// The product of rows i and j of the basis that the rows were rounded from, rounded once.
  using ExactProduct = std::function<R(Index i, Index j)>;

  /// States that the rows are rounded: if cancellation leaves too few digits of their product,
  /// `exact` is called. The objects that it refers to must live as long as this object, or until
  /// the next call.
  void roundedFrom(ExactProduct exact) { exact_ = std::move(exact); }

  /// Sets the number of rows; if it changes, all products are invalidated.
  void resize(Index count);
  /// Invalidates all products: any row may have been changed.
  void forgetAll();
  /// Invalidates what depends on row k: its products and the orthogonal vectors from k on.
  void forget(Index k);
  /// Rows i and j were swapped.
  void swap(Index i, Index j);

  /// Subtracts multiples of rows before k from row k of `rows`, as change() tells, once for each of
  /// them. The same sums as one by one, in a fraction of the time if all numbers are short.
  void subtract(Matrix<R>& rows, Index k, const std::vector<RowMultiple<R>>& multiples);
  /// A multiple of a row before k was subtracted from row k; its products are invalid until
  /// keep(). Their rounding errors grow by `factor`, a magnitude, in units of the rounding
  /// errors at the time when they were computed.
  void change(Index k, const R& factor);
  /// Stores mu[j] * lengths[j] as the products of row k for j <= last; later ones are unchanged.
  /// If the rounding errors are too large nothing is stored and the products stay invalid.
  void keep(Index k, Index last, const Vector<R>& mu, const Vector<R>& lengths);

  /// The products of row k with the orthogonal vectors 1..k-1 as its first entries; unknown
  /// products are computed.
  ///
  /// rows     1..k, of any equal length
  /// mu       Gram-Schmidt coefficients; rows 1..k-1 are valid
  /// lengths  squared lengths of the orthogonal vectors; entries 1..k-1 are valid
  const Vector<R>& ofRow(const Matrix<R>& rows, Index k, const Matrix<R>& mu,
                         const Vector<R>& lengths);
  /// The squared length of row k.
  const R& squaredLength(const Matrix<R>& rows, Index k);

 private:
  struct Row {
    Vector<R> products;
    /// Product j is valid if its stamp equals that of orthogonal vector j, which is above 0.
    Array<std::int64_t> stamps;
    R squaredLength = R();
    bool isLengthKnown = false;
    /// The row as integers in double; valid if `isImageKnown`.
    ShortRow<R> image;
    bool isImageKnown = false;
    /// True if `products` holds valid entries.
    bool isKnown = false;
    /// Set by change(); no product is valid until keep().
    bool isChanged = false;
    /// Sum of the factors of change() since the products were computed.
    R growth = R();
  };

  using Four = std::array<R, 4>;

  bool knows(const Row& row, Index j) const { return row.stamps[j] == stamps_[j]; }
  void renewVectors(Index first, Index last);
  /// Computes products first..first+3; the products before are known.
  void computeFour(const Matrix<R>& rows, Index k, Index first, const Matrix<R>& mu,
                   const Vector<R>& lengths);
  void computeOne(const Matrix<R>& rows, Index k, Index j, const Matrix<R>& mu,
                  const Vector<R>& lengths);
  /// Products of row k with rows first..first+3.
  Four rowProducts(const Matrix<R>& rows, Index k, Index first, const Vector<R>& lengths);
  /// The same with row j, j < k.
  R rowProduct(const Matrix<R>& rows, Index k, Index j, const Vector<R>& lengths);
  /// A product of rounded rows, or the exact product if cancellation leaves too few digits.
  R withoutLoss(const R& product, const Matrix<R>& rows, Index k, Index j,
                const Vector<R>& lengths);
  ShortRow<R>& imageOf(const Matrix<R>& rows, Index k);
  /// False, and nothing changes, if a number isn't short.
  bool subtractShort(Matrix<R>& rows, Index k, const std::vector<RowMultiple<R>>& multiples);

  Array<Row> rows_;
  /// Stamps of the orthogonal vectors.
  Array<std::int64_t> stamps_;
  std::int64_t lastStamp_ = 0;
  /// Empty if the rows aren't rounded.
  ExactProduct exact_;
  /// Memory of subtractShort().
  std::vector<ShortMultiple<R>> multiples_;
};

extern template class RowProducts<long double>;

}  // namespace starsift
