// Writing to a descriptor until everything has arrived, or nothing more can be done.
#pragma once

#include <string_view>

namespace starsift {

/// Writes all of the text; false with errno set if a write fails or moves no byte.
bool writeAll(int descriptor, std::string_view text);

/// Waits until everything written to a file is on its disk; false with errno set on error.
bool syncFile(int descriptor);

}  // namespace starsift
