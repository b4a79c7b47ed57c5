#include "algorithms/reduction/RowProducts.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace starsift {

namespace {

/// Products of `vector` with the four rows from `first` on, over the first `count` columns. The
/// four sums are computed in parallel, so that no addition waits for the one before; each sum
/// has the order of summation that it would have alone.
template <class R>
std::array<R, 4> fourProducts(const Matrix<R>& rows, Index first, const Vector<R>& vector,
                              Index count) {
  const R* const x = vector.begin();
  const R* const a = rows[first].begin();
  const R* const b = rows[first + 1].begin();
  const R* const c = rows[first + 2].begin();
  const R* const d = rows[first + 3].begin();
  std::array<R, 4> sum{};
  for (Index i = 0; i < count; ++i) {
    sum[0] += a[i] * x[i];
    sum[1] += b[i] * x[i];
    sum[2] += c[i] * x[i];
    sum[3] += d[i] * x[i];
  }
  return sum;
}

/// Products are kept while their rounding errors are at most this multiple of those of newly
/// computed ones.
constexpr long double maxGrowth = 64;

/// Least ratio of a product of rounded rows to the product of their lengths for which the
/// rounding errors leave enough correct digits: 2^-16, squared.
constexpr long double minProductShare = 0x1p-32L;

/// From this ratio of the product of the lengths to the squared length that the product is
/// divided by for a Gram-Schmidt coefficient, rounding errors of the coefficient matter: 2^24,
/// squared.
constexpr long double minLengthRatio = 0x1p48L;

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
  for (Row& row : rows_) row.isKnown = row.isLengthKnown = row.isImageKnown = false;
  renewVectors(1, rows_.dimension());
}

template <class R>
void RowProducts<R>::forget(Index k) {
  if (k < 1 || k > rows_.dimension()) return;
  rows_[k].isKnown = rows_[k].isLengthKnown = rows_[k].isImageKnown = false;
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
void RowProducts<R>::subtract(Matrix<R>& rows, Index k,
                              const std::vector<RowMultiple<R>>& multiples) {
  const bool isShort = k <= rows_.dimension() && subtractShort(rows, k, multiples);
  if (!isShort)
    for (const RowMultiple<R>& one : multiples)
      subtractMultiple(rows[k], rows[one.row], one.factor);
  for (const RowMultiple<R>& one : multiples) change(k, std::fabs(one.factor));
  if (isShort) rows_[k].isImageKnown = true;
}

template <class R>
bool RowProducts<R>::subtractShort(Matrix<R>& rows, Index k,
                                   const std::vector<RowMultiple<R>>& multiples) {
  multiples_.clear();
  for (const RowMultiple<R>& one : multiples) {
    const auto factor = static_cast<double>(one.factor);
    if (static_cast<R>(factor) != one.factor) return false;
    multiples_.push_back({&imageOf(rows, one.row), factor});
  }
  ShortRow<R>& image = imageOf(rows, k);
  if (!image.subtract(multiples_)) return false;
  image.copyTo(rows[k]);
  return true;
}

template <class R>
void RowProducts<R>::change(Index k, const R& factor) {
  if (k > rows_.dimension()) return;
  Row& row = rows_[k];
  row.isChanged = true;
  row.isLengthKnown = row.isImageKnown = false;
  row.growth += factor;
}

template <class R>
void RowProducts<R>::keep(Index k, Index last, const Vector<R>& mu, const Vector<R>& lengths) {
  Row& row = rows_[k];
  if (!row.isKnown || row.growth > maxGrowth) return;
  for (Index j = 1; j <= last; ++j) row.products[j] = mu[j] * lengths[j];
  row.isChanged = false;
}

template <class R>
const Vector<R>& RowProducts<R>::ofRow(const Matrix<R>& rows, Index k, const Matrix<R>& mu,
                                       const Vector<R>& lengths) {
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
      computeFour(rows, k, j, mu, lengths);
      j += 3;
    } else {
      computeOne(rows, k, j, mu, lengths);
    }
  }
  return row.products;
}

template <class R>
const R& RowProducts<R>::squaredLength(const Matrix<R>& rows, Index k) {
  Row& row = rows_[k];
  if (!row.isLengthKnown) {
    const ShortRow<R>& image = imageOf(rows, k);
    row.squaredLength = image.isExactWith(image) ? image.product(image) : rows[k] * rows[k];
    row.isLengthKnown = true;
  }
  return row.squaredLength;
}

template <class R>
void RowProducts<R>::renewVectors(Index first, Index last) {
  for (Index j = first; j <= last; ++j) stamps_[j] = ++lastStamp_;
}

template <class R>
void RowProducts<R>::computeOne(const Matrix<R>& rows, Index k, Index j, const Matrix<R>& mu,
                                const Vector<R>& lengths) {
  Row& row = rows_[k];
  R sum = R();
  for (Index i = 1; i < j; ++i) sum += mu[j][i] * row.products[i];
  row.products[j] = rowProduct(rows, k, j, lengths) - sum;
  row.stamps[j] = stamps_[j];
}

template <class R>
void RowProducts<R>::computeFour(const Matrix<R>& rows, Index k, Index first, const Matrix<R>& mu,
                                 const Vector<R>& lengths) {
  Row& row = rows_[k];
  R* const r = &row.products[first];
  const Four full = rowProducts(rows, k, first, lengths);
  const Four before = fourProducts(mu, first, row.products, first - 1);
  for (Index a = 0; a < 4; ++a) {
    const auto place = static_cast<std::size_t>(a);
    const R* const coefficients = &mu[first + a][first];
    R sum = before[place];
    for (Index b = 0; b < a; ++b) sum += coefficients[b] * r[b];
    r[a] = full[place] - sum;
    row.stamps[first + a] = stamps_[first + a];
  }
}

template <class R>
auto RowProducts<R>::rowProducts(const Matrix<R>& rows, Index k, Index first,
                                 const Vector<R>& lengths) -> Four {
  const ShortRow<R>& image = imageOf(rows, k);
  std::array<const ShortRow<R>*, 4> images{};
  bool isExact = true;
  for (std::size_t a = 0; a < 4; ++a) {
    images[a] = &imageOf(rows, first + static_cast<Index>(a));
    isExact = isExact && image.isExactWith(*images[a]);
  }
  if (isExact) return image.products(images);
  Four result = fourProducts(rows, first, rows[k], rows[k].dimension());
  for (std::size_t a = 0; a < 4; ++a)
    result[a] = withoutLoss(result[a], rows, k, first + static_cast<Index>(a), lengths);
  return result;
}

template <class R>
R RowProducts<R>::rowProduct(const Matrix<R>& rows, Index k, Index j, const Vector<R>& lengths) {
  const ShortRow<R>& a = imageOf(rows, k);
  const ShortRow<R>& b = imageOf(rows, j);
  return a.isExactWith(b) ? a.product(b) : withoutLoss(rows[j] * rows[k], rows, k, j, lengths);
}

template <class R>
R RowProducts<R>::withoutLoss(const R& product, const Matrix<R>& rows, Index k, Index j,
                              const Vector<R>& lengths) {
  if (!exact_) return product;
  // Squares are compared because roots would take longer than the rest.
  const R maxSquare = squaredLength(rows, k) * squaredLength(rows, j);
  const bool isLost = product * product < minProductShare * maxSquare &&
                      minLengthRatio * (lengths[j] * lengths[j]) < maxSquare;
  return isLost ? exact_(k, j) : product;
}

template <class R>
ShortRow<R>& RowProducts<R>::imageOf(const Matrix<R>& rows, Index k) {
  Row& row = rows_[k];
  if (!row.isImageKnown) row.image.assign(rows[k]);
  row.isImageKnown = true;
  return row.image;
}

template class RowProducts<long double>;

}  // namespace starsift
