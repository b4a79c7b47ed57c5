// A row of rationals as integers without a common factor: the same line through the
// origin, which is all that linear dependence looks at.
#pragma once

#include <compare>
#include <cstdint>
#include <vector>

#include "core/Vector.h"
#include "numbers/QQ.h"
#include "numbers/ZZ.h"

namespace starsift {

/// The row times the one rational, positive or negative, that makes its entries
/// integers without a common factor and the first one that isn't zero positive. Two
/// rows are equal when one is a multiple of the other. Columns are 0-based.
class IntegerRow {
 public:
  /// `row` must be finite. Takes dimension times the length of the common denominator.
  template <class T>
  explicit IntegerRow(const Vector<T>& row);

  bool isZero() const;

  /// All entries are machine integers.
  bool isSmall() const { return big_.empty(); }
  /// Only where isSmall().
  std::int64_t small(std::size_t column) const { return small_[column]; }
  /// Only where not isSmall().
  const ZZ& big(std::size_t column) const { return big_[column]; }

  ZZ entry(std::size_t column) const { return isSmall() ? ZZ(small_[column]) : big_[column]; }

  /// sum += factor * entry
  void addProduct(ZZ& sum, const ZZ& factor, std::size_t column) const;

  auto operator<=>(const IntegerRow&) const = default;

 private:
  std::vector<std::int64_t> small_;
  /// The entries instead, where one of them is no machine integer.
  std::vector<ZZ> big_;
};

/// The rational that makes `row` of `line`, which IntegerRow made of it and isn't zero:
/// row == factor * line.
QQ factorOf(const Vector<QQ>& row, const IntegerRow& line);

extern template IntegerRow::IntegerRow(const Vector<long double>&);
extern template IntegerRow::IntegerRow(const Vector<QQ>&);

}  // namespace starsift
