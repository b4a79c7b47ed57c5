// What a host's point must be like.
#pragma once

#include <starsift/starsift.h>

#include <cstddef>
#include <span>

namespace starsift {

/// Fatal if a point with so many components isn't one of a problem with so many variables.
void requireLength(std::size_t components, std::size_t variables);

/// The same for the point itself; fatal too if a component is infinite.
void requirePoint(std::span<const Number> point, std::size_t variables);

}  // namespace starsift
