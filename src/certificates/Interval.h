// Real numbers that are known to lie between two floats, so that a comparison is right
// whenever it is decided.
#pragma once

#include <mpreal.h>

#include <optional>

#include "numbers/QQ.h"

namespace starsift {

/// All numbers from one float to another one of the same precision. Arithmetic rounds
/// outwards: the result holds that of any two numbers of the operands. The range of
/// the floats has no bound that matters.
class Interval {
 public:
  /// Around the number; `precision` is that of the bounds, in bits, at least 2.
  Interval(const ZZ& value, long precision);
  /// Around a finite number.
  Interval(const QQ& value, long precision);

  /// *this -= a * b
  void subtractProduct(const Interval& a, const Interval& b);
  /// All of `divisor` is positive.
  Interval& operator/=(const Interval& divisor);

  bool isPositive() const { return mpfr_sgn(low_.mpfr_srcptr()) > 0; }

  /// Of the magnitude.
  friend Interval abs(const Interval& a);

  /// a <= b for all numbers of the two, or for none; nothing where it depends.
  friend std::optional<bool> atMost(const Interval& a, const Interval& b);

 private:
  mpfr::mpreal low_;
  mpfr::mpreal high_;
};

}  // namespace starsift
