// A finite point in the forms that exact row products need.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "core/Vector.h"
#include "numbers/QQ.h"
#include "numbers/WideInt.h"
#include "numbers/ZZ.h"

namespace starsift {

/// Integer components that all lie within +-magnitude.
struct SmallPoint {
  std::vector<std::int64_t> components;
  std::int64_t magnitude = 0;
};

/// A number as it stands in a file: whole + numerator / denominator, negated if isNegative.
/// numerator < denominator < 2^62.
struct MixedNumber {
  bool isNegative = false;
  UInt128 whole = 0;
  std::uint64_t numerator = 0;
  std::uint64_t denominator = 1;
};

/// numerators[j - 1] / denominator is component j; the denominator is positive.
struct ScaledPoint {
  std::vector<ZZ> numerators;
  ZZ denominator;
};

/// Holds one point at a time and reuses its storage for the next.
class ExactPoint {
 public:
  /// Stores the components of `x` exactly. False, and the point can't be used, if
  /// one is infinite or nan.
  template <class T>
  bool assign(const Vector<T>& x);

  /// Storage for a point of integers below 2^62 in magnitude, to be filled completely; the point
  /// is the one of this object from now on.
  SmallPoint& becomeSmall();

  /// Stores mixed numbers. False, and the point can't be used, if their common denominator is 2^62
  /// or more.
  bool assign(std::span<const MixedNumber> x);

  /// True if all components are integers below 2^62 in magnitude.
  bool isSmall() const { return isSmall_; }
  /// Only if isSmall().
  const SmallPoint& small() const { return small_; }
  /// False if commonScale() returns no scale for the components.
  bool isScalable() const { return rationals_.dimension() == 0; }
  /// Only if isScalable(); for a small point computed on first use.
  const ScaledPoint& scaled() const;

  /// Storage for the product of a row with this point; one at a time.
  ZZ& product() const { return product_; }

  /// Component index + 1, for any point.
  QQ component(std::size_t index) const;

 private:
  template <class T>
  bool assignSmall(const Vector<T>& x);
  bool scale(const Vector<QQ>& x);

  SmallPoint small_;
  bool isSmall_ = false;
  mutable ScaledPoint scaled_;
  mutable bool scaledIsValid_ = false;
  mutable ZZ product_;
  /// The components if there is no scaled form, else empty.
  Vector<QQ> rationals_;
};

extern template bool ExactPoint::assign(const Vector<long double>&);
extern template bool ExactPoint::assign(const Vector<QQ>&);

}  // namespace starsift
