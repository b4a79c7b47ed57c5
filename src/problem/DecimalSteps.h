// The steps of the variables: 10^-dx.
#pragma once

#include <optional>
#include <vector>

#include "core/Vector.h"
#include "numbers/QQ.h"

namespace starsift {

/// 10^dx for each variable; empty if an entry isn't one of 0, 1, ... 1000. More decimals are
/// of no practical use, while larger powers of ten are rejected only far beyond.
std::optional<std::vector<QQ>> stepsPerUnit(const Vector<QQ>& dx);

}  // namespace starsift
