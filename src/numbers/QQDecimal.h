// QQ from decimal fractions, and back. A power of ten has the prime factors 2 and 5 only, so
// reducing to lowest terms needs no gcd.
#pragma once

#include <cstdint>
#include <optional>

#include "numbers/QQ.h"

namespace starsift {

/// digits / 10^places, |digits| < 10^18, 0 <= places <= 18.
QQ decimal(std::int64_t digits, int places);

/// digits / 10^places.
QQ decimal(const ZZ& digits, unsigned long places);

/// digits / 10^places, |digits| < 10^18, 0 <= places <= 18.
struct ShortDecimal {
  std::int64_t digits;
  int places;
};

/// The number with as few places as possible; nothing if it has more digits, or no last one.
std::optional<ShortDecimal> shortDecimal(const QQ& value);

}  // namespace starsift
