// What a point can break. Apart from PointCheck.h, which has names that the public header of the
// library has too.
#pragma once

#include <cstdint>

namespace starsift {

enum class ViolationKind : std::uint8_t { row, lowerBound, upperBound, step };

}  // namespace starsift
