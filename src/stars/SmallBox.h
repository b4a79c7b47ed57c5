// The bounds of variables for points of machine integers.
#pragma once

#include <cstdint>
#include <vector>

#include "stars/ExactPoint.h"

namespace starsift {

/// lower <= x <= upper, component by component, each bound rounded inwards and clamped
/// to +-2^62, which no component of a small point exceeds.
class SmallBox {
 public:
  /// The bounds may be infinite; both have the same dimension.
  template <class T>
  SmallBox(const Vector<T>& lower, const Vector<T>& upper);

  /// The point has one component per bound.
  bool contains(const SmallPoint& point) const {
    // Integers, because without branches many components are compared at once.
    int inside = 1;
    for (std::size_t j = 0; j < lower_.size(); ++j)
      inside &= static_cast<int>(lower_[j] <= point.components[j]) &
                static_cast<int>(point.components[j] <= upper_[j]);
    return inside != 0;
  }

 private:
  std::vector<std::int64_t> lower_;
  std::vector<std::int64_t> upper_;
};

extern template SmallBox::SmallBox(const Vector<long double>&, const Vector<long double>&);
extern template SmallBox::SmallBox(const Vector<QQ>&, const Vector<QQ>&);

}  // namespace starsift
