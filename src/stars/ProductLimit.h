// Where machine integers end: small points and their products with rows stay below
// 2^62 in magnitude, and bounds are cut to that.
#pragma once

#include <cstdint>

#include "numbers/QQ.h"

namespace starsift {

/// Magnitude that small values stay below.
constexpr std::int64_t productLimit = std::int64_t{1} << 62;

/// `value` cut to +-productLimit.
std::int64_t cut(const ZZ& value);

/// The least small value not below `bound`, or productLimit where there is none.
std::int64_t cutUp(const QQ& bound);
/// The greatest small value not above `bound`, or -productLimit.
std::int64_t cutDown(const QQ& bound);

}  // namespace starsift
