// Logarithms and exponentials of rationals, rounded as a float of 192 bits.
//
// A result equals the exact value after one rounding to nearest, so it doesn't depend
// on the series that are used.
#pragma once

#include "numbers/QQ.h"

namespace starsift {

/// The number nearest to `value` among those with a mantissa of 192 bits and an
/// exponent of any size; halves go to the even mantissa. `value` is finite.
QQ roundToFloat(const QQ& value);

/// The natural logarithm of a finite value > 0, rounded like roundToFloat(). The
/// relative error is one rounding, however close `value` is to 1.
QQ roundedLog(const QQ& value);

/// The logarithm to the base 2 of a finite value > 0 that is at most 1/2 or at
/// least 2, rounded like roundToFloat().
QQ roundedLog2(const QQ& value);

/// e ^ value, |value| <= 2^30, rounded like roundToFloat().
QQ roundedExp(const QQ& value);

}  // namespace starsift
