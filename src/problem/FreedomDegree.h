// The kind of a variable: on which sides it is free.
#pragma once

#include <istream>
#include <ostream>

#include "core/NumberTraits.h"

namespace starsift {

/// 1 for a free lower side plus 2 for a free upper side.
enum class FreedomDegree : std::uint8_t { bounded = 0, leftFree = 1, rightFree = 2, free = 3 };

/// The kind of a variable with lower <= x <= upper.
template <class T>
FreedomDegree freedomDegree(const T& lower, const T& upper) {
  const T infinity = NumberTraits<T>::infinity();
  return static_cast<FreedomDegree>((upper == infinity ? 2 : 0) + (lower == -infinity ? 1 : 0));
}

/// Writes the kind as its number.
std::ostream& operator<<(std::ostream& stream, FreedomDegree kind);
/// Reads a kind; sets the stream to fail on anything but 0 to 3.
std::istream& operator>>(std::istream& stream, FreedomDegree& kind);

}  // namespace starsift
