// Memory in pages of some megabytes.
#pragma once

#include <cstddef>

namespace starsift {

/// Asks the system to back `size` bytes from `memory` on, as yet unused, with large pages where it
/// has them: fewer page faults, and random access finds more addresses translated. Nothing for
/// blocks that are too small to gain by it.
void preferLargePages(void* memory, std::size_t size);

}  // namespace starsift
