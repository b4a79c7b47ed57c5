// Products of the rows of a basis with the orthogonal vectors of the rows before them, kept
// as long as they hold.
//
// A reduction changes one row, or exchanges two neighbours, and needs the Gram-Schmidt data of
// one row again. Most products are what they were: a row from which multiples of rows before
// it are taken keeps its orthogonal vector, and an exchange changes two of these vectors. So
// most steps cost a few products of rows, where they would cost one for each row before.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <utility>

#include "algorithms/reduction/ShortRow.h"
#include "core/Matrix.h"

namespace starsift {

/// Rows and orthogonal vectors are numbered from 1. Whoever changes a row says so.
template <class R>
class RowProducts {
 public:
  /// The product of rows i and j of the basis that the rows were rounded from, rounded once.
  using ExactProduct = std::function<R(Index i, Index j)>;

  /// Rows are rounded: where cancellation leaves too little of their product `exact` is asked.
  /// What it looks at must live as long as this, or until the next call.
  void roundedFrom(ExactProduct exact) { exact_ = std::move(exact); }

  /// For so many rows; of another number than before nothing is known.
  void resize(Index count);
  /// Any row may have been changed.
  void forgetAll();
  /// Row k was changed, and with it the orthogonal vectors from k on.
  void forget(Index k);
  /// Rows i and j changed places.
  void swap(Index i, Index j);

  /// A multiple of a row before k was taken off row k; its products count as unknown until
  /// keep(). They grow by rounding errors of `factor`, a magnitude, in units of those that
  /// they had at first.
  void change(Index k, const R& factor);
  /// The products of row k are mu[j] * lengths[j] for j <= last, those behind as they were.
  /// Nothing is kept once the rounding errors are too large.
  void keep(Index k, Index last, const Vector<R>& mu, const Vector<R>& lengths);

  /// The products of row k with the orthogonal vectors 1..k-1 as its first entries, those that
  /// aren't known computed.
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
    /// Product j is known while its stamp is that of orthogonal vector j; those are above 0.
    Array<std::int64_t> stamps;
    R squaredLength = R();
    bool isLengthKnown = false;
    /// The entries, while they are those.
    ShortRow<R> image;
    bool isImageKnown = false;
    /// False: no product is.
    bool isKnown = false;
    /// By change(); no product holds until keep().
    bool isChanged = false;
    /// Sum of the factors of change() since the products were computed.
    R growth = R();
  };

  using Four = std::array<R, 4>;

  bool knows(const Row& row, Index j) const { return row.stamps[j] == stamps_[j]; }
  void renewVectors(Index first, Index last);
  /// Products first..first+3, or the first of them; those before are known.
  void computeFour(const Matrix<R>& rows, Index k, Index first, const Matrix<R>& mu,
                   const Vector<R>& lengths);
  void computeOne(const Matrix<R>& rows, Index k, Index j, const Matrix<R>& mu,
                  const Vector<R>& lengths);
  /// Products of row k with rows first..first+3.
  Four rowProducts(const Matrix<R>& rows, Index k, Index first, const Vector<R>& lengths);
  /// The same with row j, j < k.
  R rowProduct(const Matrix<R>& rows, Index k, Index j, const Vector<R>& lengths);
  /// A product of rounded rows, or the exact one where that says too little.
  R withoutLoss(const R& product, const Matrix<R>& rows, Index k, Index j,
                const Vector<R>& lengths);
  const ShortRow<R>& imageOf(const Matrix<R>& rows, Index k);

  Array<Row> rows_;
  /// Of the orthogonal vectors.
  Array<std::int64_t> stamps_;
  std::int64_t lastStamp_ = 0;
  /// Empty where rows aren't rounded.
  ExactProduct exact_;
};

extern template class RowProducts<long double>;

}  // namespace starsift
