// The steps in which variables count: 10^-dx.
#pragma once

#include <optional>
#include <vector>

#include "core/Vector.h"
#include "numbers/QQ.h"

namespace starsift {

/// 10^dx for each variable; nothing if an entry isn't one of 0, 1, ... 1000. More decimals
/// than that nobody counts in, while larger powers of ten are refused only far beyond.
std::optional<std::vector<QQ>> stepsPerUnit(const Vector<QQ>& dx);

}  // namespace starsift
