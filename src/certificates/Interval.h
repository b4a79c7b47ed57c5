// Real numbers that are known to lie between two floats: a comparison that is decided is
// always correct.
#pragma once

#include <mpreal.h>

#include <optional>

#include "numbers/QQ.h"

namespace starsift {

/// All numbers from one float to another one of the same precision. Arithmetic rounds
/// outwards: the result contains the result for any two numbers of the operands. The
/// exponent range of the floats is practically unlimited.
class Interval {
 public:
  /// Encloses the number; `precision` is that of the bounds, in bits, at least 2.
  Interval(const ZZ& value, long precision);
  /// Encloses a finite number.
  Interval(const QQ& value, long precision);

  /// *this -= a * b
  void subtractProduct(const Interval& a, const Interval& b);
  /// All of `divisor` must be positive.
  Interval& operator/=(const Interval& divisor);

  bool isPositive() const { return mpfr_sgn(low_.mpfr_srcptr()) > 0; }

  /// The interval of the magnitudes.
  friend Interval abs(const Interval& a);

  /// True if a <= b for all numbers of the two, false if for none; empty if undecided.
  friend std::optional<bool> atMost(const Interval& a, const Interval& b);

 private:
  mpfr::mpreal low_;
  mpfr::mpreal high_;
};

}  // namespace starsift
