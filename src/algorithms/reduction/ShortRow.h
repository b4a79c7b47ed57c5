// Rows of short integers, whose products are exact in double and computed in a fraction of the
// time that long double takes.
#pragma once

#include <array>
#include <vector>

#include "core/Vector.h"

namespace starsift {

/// The integers of a row in double.
template <class R>
class ShortRow {
 public:
  /// Stores the entries; if one of them isn't an integer below 2^53 in magnitude, the row is
  /// marked as unusable by an infinite `greatest_`.
  void assign(const Vector<R>& row);

  /// True if product() with this row is exact: no partial sum reaches 2^53.
  bool isExactWith(const ShortRow& other) const {
    constexpr double bound = 9007199254740992;  // 2^53
    return greatest_ * other.greatest_ * static_cast<double>(entries_.size()) < bound;
  }
  /// The product of two rows of equal length.
  R product(const ShortRow& other) const;
  /// The products with four rows, in the time of two.
  std::array<R, 4> products(const std::array<const ShortRow*, 4>& others) const;

 private:
  std::vector<double> entries_;
  /// The greatest magnitude, at least 1; infinite if the entries aren't usable.
  double greatest_ = 0;
};

extern template class ShortRow<long double>;

}  // namespace starsift
