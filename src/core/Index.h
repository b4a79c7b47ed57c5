// The one integer type for dimensions, indices and counts.
#pragma once

#include <cstdint>

namespace starsift {

/// Signed 64 bits. Containers are 1-based with a live slot 0, so valid indices
/// of a container of dimension n are 0..n.
using Index = std::int64_t;

}  // namespace starsift
