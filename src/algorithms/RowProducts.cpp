#include "algorithms/RowProducts.h"

#include <algorithm>
#include <utility>

namespace starsift {

namespace {

/// Rounding errors of products may be so many times those of new ones.
constexpr long double mostGrowth = 64;

}  // namespace

template <class R>
void RowProducts<R>::resize(Index count) {
  if (count == rows_.dimension()) return;
  rows_.resize(count, false);
  for (Row& row : rows_) {
    row.products.resize(count, false);
    row.stamps.resize(count, false);
  }
  stamps_.resize(count, false);
  forgetAll();
}

template <class R>
void RowProducts<R>::forgetAll() {
  for (Row& row : rows_) row.isKnown = row.isLengthKnown = false;
  renewVectors(1, rows_.dimension());
}

template <class R>
void RowProducts<R>::forget(Index k) {
  if (k < 1 || k > rows_.dimension()) return;
  rows_[k].isKnown = rows_[k].isLengthKnown = false;
  renewVectors(k, rows_.dimension());
}

template <class R>
void RowProducts<R>::swap(Index i, Index j) {
  if (i > j) std::swap(i, j);
  if (i < 1 || j > rows_.dimension()) {
    forget(i);
    forget(j);
    return;
  }
  std::swap(rows_[i], rows_[j]);
  renewVectors(i, j);
}

template <class R>
void RowProducts<R>::change(Index k, const R& factor) {
  if (k > rows_.dimension()) return;
  Row& row = rows_[k];
  row.isChanged = true;
  row.isLengthKnown = false;
  row.growth += factor;
}

template <class R>
void RowProducts<R>::keep(Index k, Index last, const Vector<R>& mu, const Vector<R>& lengths) {
  Row& row = rows_[k];
  if (!row.isKnown || row.growth > mostGrowth) return;
  for (Index j = 1; j <= last; ++j) row.products[j] = mu[j] * lengths[j];
  row.isChanged = false;
}

template <class R>
const Vector<R>& RowProducts<R>::ofRow(const Matrix<R>& rows, Index k, const Matrix<R>& mu) {
  Row& row = rows_[k];
  if (!row.isKnown || row.isChanged) {
    std::fill(row.stamps.begin(), row.stamps.end(), 0);
    row.isKnown = true;
    row.isChanged = false;
    row.growth = R();
  }
  for (Index j = 1; j < k; ++j) {
    if (knows(row, j)) continue;
    if (j + 4 <= k && !knows(row, j + 1) && !knows(row, j + 2) && !knows(row, j + 3)) {
      computeFour(rows, k, j, mu);
      j += 3;
    } else {
      computeOne(rows, k, j, mu);
    }
  }
  return row.products;
}

template <class R>
const R& RowProducts<R>::squaredLength(const Matrix<R>& rows, Index k) {
  Row& row = rows_[k];
  if (!row.isLengthKnown) row.squaredLength = rows[k] * rows[k];
  row.isLengthKnown = true;
  return row.squaredLength;
}

template <class R>
void RowProducts<R>::renewVectors(Index first, Index last) {
  for (Index j = first; j <= last; ++j) stamps_[j] = ++lastStamp_;
}

template <class R>
void RowProducts<R>::computeOne(const Matrix<R>& rows, Index k, Index j, const Matrix<R>& mu) {
  Row& row = rows_[k];
  R sum = R();
  for (Index i = 1; i < j; ++i) sum += mu[j][i] * row.products[i];
  row.products[j] = rows[j] * rows[k] - sum;
  row.stamps[j] = stamps_[j];
}

// Four sums grow side by side, so that no addition waits for the one before. Each has the
// order that it has alone.
template <class R>
void RowProducts<R>::computeFour(const Matrix<R>& rows, Index k, Index first, const Matrix<R>& mu) {
  struct Four {
    R a = R();
    R b = R();
    R c = R();
    R d = R();
  };
  const auto products = [first](const Matrix<R>& matrix, const Vector<R>& vector, Index count) {
    const R* const a = matrix[first].begin();
    const R* const b = matrix[first + 1].begin();
    const R* const c = matrix[first + 2].begin();
    const R* const d = matrix[first + 3].begin();
    const R* const x = vector.begin();
    Four sum;
    for (Index i = 0; i < count; ++i) {
      sum.a += a[i] * x[i];
      sum.b += b[i] * x[i];
      sum.c += c[i] * x[i];
      sum.d += d[i] * x[i];
    }
    return sum;
  };
  Row& row = rows_[k];
  Vector<R>& r = row.products;
  const Four full = products(rows, rows[k], rows[k].dimension());
  const Four before = products(mu, r, first - 1);
  const Index j = first;
  r[j] = full.a - before.a;
  r[j + 1] = full.b - (before.b + mu[j + 1][j] * r[j]);
  r[j + 2] = full.c - (before.c + mu[j + 2][j] * r[j] + mu[j + 2][j + 1] * r[j + 1]);
  r[j + 3] = full.d - (before.d + mu[j + 3][j] * r[j] + mu[j + 3][j + 1] * r[j + 1] +
                       mu[j + 3][j + 2] * r[j + 2]);
  for (Index i = j; i < j + 4; ++i) row.stamps[i] = stamps_[i];
}

template class RowProducts<long double>;

}  // namespace starsift
