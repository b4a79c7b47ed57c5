// Decimal fractions on their way into QQ. A power of ten has the primes 2 and 5
// only, so lowest terms come without a gcd.
#pragma once

#include <cstdint>

#include "numbers/QQ.h"

namespace starsift {

/// digits / 10^places, |digits| < 10^18, 0 <= places <= 18.
QQ decimal(std::int64_t digits, int places);

/// digits / 10^places.
QQ decimal(const ZZ& digits, unsigned long places);

}  // namespace starsift
