// Exact numbers as other programs read them.
#pragma once

#include <string>

#include "numbers/QQ.h"

namespace starsift {

/// "-7/2", "3", "inf": an integer, or a fraction in lowest terms.
std::string plainText(const QQ& value);

}  // namespace starsift
