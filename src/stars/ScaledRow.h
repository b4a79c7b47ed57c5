// A row of rational coefficients as integers over one scale, so that products
// with points are exact and cheap: zeros cost nothing, machine integers are used
// if they can't overflow, and GMP otherwise. If the integers would be too long
// the row stays rational.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "stars/ExactPoint.h"

namespace starsift {

/// The non-zero entries of a row, times a positive integer scale that makes them
/// integers.
class ScaledRow {
 public:
  /// `row` must be finite. The scale is the least common multiple of `multiple`,
  /// which is positive, and the denominators of the row; `multiple` alone if
  /// commonScale() returns none.
  template <class T>
  ScaledRow(const Vector<T>& row, ZZ multiple);

  const ZZ& scale() const { return scale_; }

  /// True if products with small and scaled points can be computed.
  bool isInteger() const { return rationals_.empty(); }

  /// row * point, exactly.
  QQ product(const ExactPoint& point) const;

  /// scale * row * point, below 2^62 in magnitude, if no partial sum can reach
  /// that; else empty.
  std::optional<std::int64_t> times(const SmallPoint& point) const {
    if (point.magnitude > largestPoint_) return std::nullopt;
    std::int64_t sum = 0;
    for (std::size_t k = 0; k < columns_.size(); ++k)
      sum += smallEntries_[k] * point.components[columns_[k]];
    return sum;
  }

  /// product := scale * row * numerators of `point`. Only if isInteger().
  void times(const ScaledPoint& point, ZZ& product) const;

  /// scale * row * point for any row and point; slow.
  QQ rationalTimes(const ExactPoint& point) const;

 private:
  void keepIntegers(const std::vector<QQ>& values);
  void keepSmall();
  QQ unscaled(std::int64_t product) const;

  ZZ scale_;
  /// 0-based columns of the non-zero entries, ascending.
  std::vector<std::size_t> columns_;
  std::vector<ZZ> entries_;
  /// The entries as rationals if the integers would be too long, else empty.
  std::vector<QQ> rationals_;
  /// The entries again, if all are machine integers.
  std::vector<std::int64_t> smallEntries_;
  /// The small product can't overflow for points up to this magnitude; -1: none.
  std::int64_t largestPoint_ = -1;
  /// The scale again, 0 if it isn't a machine integer.
  std::int64_t smallScale_ = 0;
};

}  // namespace starsift
