// A row of rational coefficients as integers over one scale, so that products
// with points are exact and cheap: zeros cost nothing, machine integers are used
// where they can't overflow and GMP where they might. Where the integers would be
// too long the row stays rational.
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
  /// which is positive, and the denominators of the row; `multiple` alone where
  /// commonScale() has none.
  template <class T>
  ScaledRow(const Vector<T>& row, ZZ multiple);

  const ZZ& scale() const { return scale_; }

  /// False: there are no products with small or scaled points.
  bool isInteger() const { return rationals_.empty(); }

  /// row * point, exactly.
  QQ product(const ExactPoint& point) const;

  /// scale * row * point, below 2^62 in magnitude, where no partial sum can reach
  /// that; else nothing.
  std::optional<std::int64_t> times(const SmallPoint& point) const {
    if (point.magnitude > largestPoint_) return std::nullopt;
    std::int64_t sum = 0;
    for (std::size_t k = 0; k < columns_.size(); ++k)
      sum += smallEntries_[k] * point.components[columns_[k]];
    return sum;
  }

  /// product := scale * row * numerators of `point`. Only where isInteger().
  void times(const ScaledPoint& point, ZZ& product) const;

  /// scale * row * point, whatever the two are; slow.
  QQ rationalTimes(const ExactPoint& point) const;

 private:
  void keepIntegers(const std::vector<QQ>& values);
  void keepSmall();
  QQ unscaled(std::int64_t product) const;

  ZZ scale_;
  /// 0-based columns of the non-zero entries, ascending.
  std::vector<std::size_t> columns_;
  std::vector<ZZ> entries_;
  /// The entries instead, where these would be too long.
  std::vector<QQ> rationals_;
  /// The entries again, where all are machine integers.
  std::vector<std::int64_t> smallEntries_;
  /// Points up to this magnitude can't overflow the small product; -1: none.
  std::int64_t largestPoint_ = -1;
  /// The scale again, 0 where it is no machine integer.
  std::int64_t smallScale_ = 0;
};

}  // namespace starsift
