// QQ from decimal fractions. A power of ten has the prime factors 2 and 5 only, so
// reducing to lowest terms needs no gcd.
#pragma once

#include <cstdint>

#include "numbers/QQ.h"

namespace starsift {

/// digits / 10^places, |digits| < 10^18, 0 <= places <= 18.
QQ decimal(std::int64_t digits, int places);

/// digits / 10^places.
QQ decimal(const ZZ& digits, unsigned long places);

}  // namespace starsift
