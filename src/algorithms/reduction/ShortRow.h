// Rows of short integers, whose products double gives exactly and in a fraction of the time that
// long double takes.
#pragma once

#include <array>
#include <vector>

#include "core/Vector.h"

namespace starsift {

/// The integers of a row in double.
template <class R>
class ShortRow {
 public:
  /// Takes the entries; of those that are no integers below 2^53 nothing is known.
  void assign(const Vector<R>& row);

  /// product() with this row is exact: no sum on the way leaves the integers of double.
  bool isExactWith(const ShortRow& other) const {
    constexpr double bound = 9007199254740992;  // 2^53
    return greatest_ * other.greatest_ * static_cast<double>(entries_.size()) < bound;
  }
  /// Of rows of one length.
  R product(const ShortRow& other) const;
  /// The products with four rows, for the time of two.
  std::array<R, 4> products(const std::array<const ShortRow*, 4>& others) const;

 private:
  std::vector<double> entries_;
  /// The greatest magnitude, at least 1; infinite when nothing is known.
  double greatest_ = 0;
};

extern template class ShortRow<long double>;

}  // namespace starsift
