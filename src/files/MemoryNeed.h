// Whether a solution file fits into memory, decided before it is read.
#pragma once

#include "system/FilePlace.h"

namespace starsift {

/// Fatal if the file at `place` is large and its text and the lines of its stars (see StarLine.h),
/// whose number is estimated, take more memory than the process may have: more than its limit of
/// the address space, or than the machine has available with its swap space. The report says what
/// is needed. Nothing if that can't be told. A text that needs a reader of stars takes more.
void requireMemoryFor(const FilePlace& place);

}  // namespace starsift
