// Rows of a problem with the values that they allow at a point: an interval or a
// residue class. The tests are exact; no verdict depends on rounding.
#pragma once

#include "stars/ExactPoint.h"
#include "stars/ScaledRow.h"

namespace starsift {

/// Admits a point if lower <= row * point <= upper.
class IntervalTest {
 public:
  /// The bounds may be infinite.
  template <class T>
  IntervalTest(const Vector<T>& row, const QQ& lower, const QQ& upper);

  bool admits(const ExactPoint& point) const;

 private:
  /// `product` is scale * row * point.
  bool admits(const QQ& product) const;

  /// A finite bound times the scale of the row, as a fraction.
  struct Bound {
    Bound(const QQ& bound, const ZZ& scale);
    /// The sign of product / point.denominator - bound.
    int compare(const ZZ& product, const ZZ& denominator) const;
    bool isInfinite;
    ZZ numerator;
    ZZ denominator;
  };

  ScaledRow row_;
  Bound lower_;
  Bound upper_;
  /// False if the lower bound is +infinity or the upper bound -infinity: no product satisfies it.
  bool lowerIsReachable_;
  bool upperIsReachable_;
  /// The bounds for integer products below 2^62, rounded inwards.
  std::int64_t smallLower_;
  std::int64_t smallUpper_;
};

/// Admits a point if the remainder of (row * point - value) modulo `modulus`,
/// truncated, lies within +-tolerance.
class CongruenceTest {
 public:
  /// All finite, modulus not 0, tolerance not negative.
  template <class T>
  CongruenceTest(const Vector<T>& row, const QQ& value, const QQ& modulus, const QQ& tolerance);

  bool admits(const ExactPoint& point) const;

 private:
  /// `product` is scale * row * point.
  bool admits(const QQ& product) const;

  ScaledRow row_;
  /// value, |modulus| and tolerance (rounded down) times the scale of the row.
  ZZ value_;
  ZZ modulus_;
  QQ tolerance_;
  /// The same as machine integers, if value and modulus are below 2^62.
  bool isSmall_;
  std::int64_t smallValue_ = 0;
  std::int64_t smallModulus_ = 1;
  std::int64_t smallTolerance_ = 0;
};

}  // namespace starsift
