// Decimal fractions on their way into QQ. A power of ten has the primes 2 and 5
// only, so lowest terms come without a gcd.
#pragma once

#include <array>
#include <cstdint>

#include "numbers/QQ.h"

namespace starsift {

/// The powers of ten below 2^62.
constexpr std::array<std::int64_t, 19> powersOfTen = {1,
                                                      10,
                                                      100,
                                                      1'000,
                                                      10'000,
                                                      100'000,
                                                      1'000'000,
                                                      10'000'000,
                                                      100'000'000,
                                                      1'000'000'000,
                                                      10'000'000'000,
                                                      100'000'000'000,
                                                      1'000'000'000'000,
                                                      10'000'000'000'000,
                                                      100'000'000'000'000,
                                                      1'000'000'000'000'000,
                                                      10'000'000'000'000'000,
                                                      100'000'000'000'000'000,
                                                      1'000'000'000'000'000'000};

/// digits / 10^places, |digits| < 10^18, 0 <= places <= 18.
QQ decimal(std::int64_t digits, int places);

/// digits / 10^places.
QQ decimal(const ZZ& digits, unsigned long places);

}  // namespace starsift
