#include "algorithms/reduction/ShortRow.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

namespace starsift {

namespace {

/// Rows with at most one entry other than 0 in this many count as sparse.
constexpr std::size_t sparseShare = 8;

}  // namespace

template <class R>
void ShortRow<R>::assign(const Vector<R>& row) {
  const auto count = static_cast<std::size_t>(row.dimension());
  entries_.resize(count);
  const R* const source = row.begin();
  for (std::size_t i = 0; i < count; ++i) {
    if (!(std::fabs(source[i]) < static_cast<R>(bound)) ||
        static_cast<R>(static_cast<std::int64_t>(source[i])) != source[i]) {
      greatest_ = std::numeric_limits<double>::infinity();
      return;
    }
    entries_[i] = static_cast<double>(source[i]);
  }
  examine();
}

template <class R>
void ShortRow<R>::examine() {
  greatest_ = 1;
  std::size_t nonzero = 0;
  for (const double entry : entries_) {
    greatest_ = std::max(greatest_, std::fabs(entry));
    nonzero += entry != 0 ? 1 : 0;
  }
  isSparse_ = nonzero * sparseShare <= entries_.size();
  places_.clear();
  if (!isSparse_) return;
  for (std::size_t i = 0; i < entries_.size(); ++i)
    if (entries_[i] != 0) places_.push_back(static_cast<std::uint32_t>(i));
}

template <class R>
bool ShortRow<R>::subtract(const std::vector<ShortMultiple<R>>& multiples) {
  double greatest = greatest_;
  for (const ShortMultiple<R>& multiple : multiples)
    greatest += std::fabs(multiple.factor) * multiple.row->greatest_;
  if (!(greatest < bound)) return false;
  for (const ShortMultiple<R>& multiple : multiples) subtract(multiple);
  examine();
  return true;
}

template <class R>
void ShortRow<R>::subtract(const ShortMultiple<R>& multiple) {
  double* const entries = entries_.data();
  const double* const other = multiple.row->entries_.data();
  const double factor = multiple.factor;
  if (multiple.row->isSparse_) {
    for (const std::uint32_t i : multiple.row->places_) entries[i] -= factor * other[i];
  } else {
    for (std::size_t i = 0; i < entries_.size(); ++i) entries[i] -= factor * other[i];
  }
}

template <class R>
void ShortRow<R>::copyTo(Vector<R>& row) const {
  std::copy(entries_.begin(), entries_.end(), row.begin());
}

template <class R>
R ShortRow<R>::sparseProduct(const ShortRow& other) const {
  double sum = 0;
  for (const std::uint32_t i : places_) sum += entries_[i] * other.entries_[i];
  return static_cast<R>(sum);
}

template <class R>
R ShortRow<R>::product(const ShortRow& other) const {
  if (isSparse_) return sparseProduct(other);
  if (other.isSparse_) return other.sparseProduct(*this);
  const double* const a = entries_.data();
  const double* const b = other.entries_.data();
  const std::size_t count = entries_.size();
  double even = 0;
  double odd = 0;
  std::size_t i = 0;
  for (; i + 1 < count; i += 2) {
    even += a[i] * b[i];
    odd += a[i + 1] * b[i + 1];
  }
  if (i < count) even += a[i] * b[i];
  return static_cast<R>(even + odd);
}

template <class R>
std::array<R, 4> ShortRow<R>::products(const std::array<const ShortRow*, 4>& others) const {
  const bool anySparse = isSparse_ || std::any_of(others.begin(), others.end(),
                                                  [](const auto* row) { return row->isSparse_; });
  if (anySparse)
    return {product(*others[0]), product(*others[1]), product(*others[2]), product(*others[3])};
  const double* const x = entries_.data();
  const double* const a = others[0]->entries_.data();
  const double* const b = others[1]->entries_.data();
  const double* const c = others[2]->entries_.data();
  const double* const d = others[3]->entries_.data();
  std::array<double, 4> sum{};
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    sum[0] += a[i] * x[i];
    sum[1] += b[i] * x[i];
    sum[2] += c[i] * x[i];
    sum[3] += d[i] * x[i];
  }
  return {sum[0], sum[1], sum[2], sum[3]};
}

template class ShortRow<long double>;

}  // namespace starsift
