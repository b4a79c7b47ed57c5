// The limit of machine integers: small points and their products with rows stay below
// 2^62 in magnitude, and bounds are clamped to that.
#pragma once

#include <cstdint>

#include "numbers/QQ.h"

namespace starsift {

/// Small values stay below this magnitude.
constexpr std::int64_t productLimit = std::int64_t{1} << 62;

/// `value` clamped to +-productLimit.
std::int64_t cut(const ZZ& value);

/// The least small value not below `bound`, or productLimit if there is none.
std::int64_t cutUp(const QQ& bound);
/// The greatest small value not above `bound`, or -productLimit if there is none.
std::int64_t cutDown(const QQ& bound);

}  // namespace starsift
