// Number conversions for tests of the containers on the lowest floor: from long
// double to long, which cuts off what stands behind the point, and back.
#pragma once

#include "core/Exceptions.h"
#include "core/NumberConversion.h"

namespace starsift {

/// Values beyond 10^18 throw PreCommaPrecisionException, as a strict conversion does.
template <>
struct NumberConversion<long, long double> {
  static long convert(long double value) {
    if (value > 1e18L || value < -1e18L) throw PreCommaPrecisionException("too long");
    return static_cast<long>(value);
  }
};

template <>
struct NumberConversion<long double, long> {
  static long double convert(long value) { return static_cast<long double>(value); }
};

}  // namespace starsift
