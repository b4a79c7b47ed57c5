// Reading points of short integers in canonical form, nearly all that a solution file holds.
#pragma once

#include <cstdint>
#include <span>

#include "stars/ExactPoint.h"

namespace starsift {

/// Reads "[ 1 -2 3 ]": a blank behind each component and no other blanks, integers of at most 16
/// digits without sign +, leading zeros or -0. The number of components is that of `point`, whose
/// magnitude is set too. Returns the position behind the bracket, or null if the text has another
/// form; `point` may have changed then. A zero byte follows the text.
const char* scanPlainPoint(const char* text, SmallPoint& point);

/// The same for exact numbers: components may be fractions in lowest terms, "2:1/3" or "1/3", with
/// numerators and denominators of at most 18 digits, and integers may have 38 digits.
const char* scanPlainPoint(const char* text, std::span<MixedNumber> components);

/// Reads one integer of the form of the first. Returns the position behind it, or null; behind a
/// leading zero, where a caller must find no digit.
const char* scanPlainInteger(const char* text, std::int64_t& value);

}  // namespace starsift
