// A row of rationals as integers without a common factor: the same line through the
// origin, and linear dependence is a property of lines.
#pragma once

#include <compare>
#include <cstdint>
#include <vector>

#include "core/Vector.h"
#include "numbers/QQ.h"
#include "numbers/ZZ.h"

namespace starsift {

/// The row times the one rational, positive or negative, that makes its entries
/// integers without a common factor and the first entry that isn't zero positive. Two
/// rows give equal objects if one is a multiple of the other. Columns are 0-based.
class IntegerRow {
 public:
  /// `row` must be finite. O(dimension times length of the common denominator).
  template <class T>
  explicit IntegerRow(const Vector<T>& row);

  bool isZero() const;

  /// True if all entries are machine integers.
  bool isSmall() const { return big_.empty(); }
  /// Only if isSmall().
  std::int64_t small(std::size_t column) const { return small_[column]; }
  /// Only if not isSmall().
  const ZZ& big(std::size_t column) const { return big_[column]; }

  ZZ entry(std::size_t column) const { return isSmall() ? ZZ(small_[column]) : big_[column]; }

  /// sum += factor * entry
  void addProduct(ZZ& sum, const ZZ& factor, std::size_t column) const;

  auto operator<=>(const IntegerRow&) const = default;

 private:
  std::vector<std::int64_t> small_;
  /// The entries if one of them is not a machine integer, else empty.
  std::vector<ZZ> big_;
};

/// The rational with row == factor * line, for the `line` that IntegerRow made of `row`; the
/// line isn't zero.
QQ factorOf(const Vector<QQ>& row, const IntegerRow& line);

extern template IntegerRow::IntegerRow(const Vector<long double>&);
extern template IntegerRow::IntegerRow(const Vector<QQ>&);

}  // namespace starsift
