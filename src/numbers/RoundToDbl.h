// The long double nearest to a rational, by integer arithmetic alone.
#pragma once

#include "numbers/QQ.h"

namespace starsift {

/// roundToDbl() of a finite number for which QQ::toSmall() returns false.
long double roundBigToDbl(const QQ& value);

/// Returns the long double nearest to the finite `value`, halves to the even mantissa.
/// Subnormal results are rounded once as well. Returns an infinity for a magnitude that
/// rounds to more than LDBL_MAX, and 0 with the sign of `value` for one of at most half
/// the least subnormal number.
inline long double roundToDbl(const QQ& value) {
  std::int64_t numerator = 0;
  std::uint32_t denominator = 0;
  // Both operands are exact, so the one rounding of the division is the right one.
  if (value.toSmall(numerator, denominator))
    return static_cast<long double>(numerator) / static_cast<long double>(denominator);
  return roundBigToDbl(value);
}

}  // namespace starsift
