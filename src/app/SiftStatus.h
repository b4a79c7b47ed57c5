// The text of the status line while a solution file is checked.
#pragma once

#include <string>

#include "files/StarLines.h"

namespace starsift {

/// "34 % of the file, 120000 stars kept, 35 dropped".
std::string siftStatus(const ReadProgress& progress);

}  // namespace starsift
