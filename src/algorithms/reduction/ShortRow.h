// Rows of short integers, whose products and sums are exact in double and computed in a fraction of
// the time that long double takes.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "core/Vector.h"

namespace starsift {

template <class R>
class ShortRow;

/// An integer times a row.
template <class R>
struct ShortMultiple {
  const ShortRow<R>* row;
  double factor;
};

/// The integers of a row in double.
template <class R>
class ShortRow {
 public:
  /// Stores the entries; if one of them isn't an integer below 2^53 in magnitude, the row is
  /// marked as unusable by an infinite `greatest_`.
  void assign(const Vector<R>& row);

  /// True if product() with this row is exact: no partial sum reaches 2^53.
  bool isExactWith(const ShortRow& other) const {
    return greatest_ * other.greatest_ * static_cast<double>(entries_.size()) < bound;
  }
  /// The product of two rows of equal length.
  R product(const ShortRow& other) const;
  /// Subtracts multiples of other rows of equal length. False, and nothing changes, if a partial
  /// sum may reach 2^53.
  bool subtract(const std::vector<ShortMultiple<R>>& multiples);
  /// Writes the integers to a row of equal length.
  void copyTo(Vector<R>& row) const;
  /// The products with four rows, in the time of two unless rows are sparse.
  std::array<R, 4> products(const std::array<const ShortRow*, 4>& others) const;

 private:
  static constexpr double bound = 9007199254740992;  // 2^53

  /// Sets what is known of the entries.
  void examine();
  void subtract(const ShortMultiple<R>& multiple);
  /// The product of this row, a sparse one, with another row.
  R sparseProduct(const ShortRow& other) const;

  std::vector<double> entries_;
  /// Indices of the entries other than 0; empty unless the row is sparse.
  std::vector<std::uint32_t> places_;
  /// Most entries are 0: products run over the others only. The sums are exact, so that their
  /// order doesn't matter.
  bool isSparse_ = false;
  /// The greatest magnitude, at least 1; infinite if the entries aren't usable.
  double greatest_ = 0;
};

extern template class ShortRow<long double>;

}  // namespace starsift
