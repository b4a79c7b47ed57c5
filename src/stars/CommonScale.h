// One scale for many rationals, if it doesn't cost too much memory.
#pragma once

#include <optional>
#include <span>

#include "numbers/QQ.h"
#include "numbers/ZZ.h"

namespace starsift {

/// The least common multiple of `multiple`, which is positive, and of the
/// denominators of the finite `numbers`. Empty if the numbers over that scale
/// would take more than a megabit and more than 64 times their present bits:
/// n coprime denominators make n numerators of n times their length.
std::optional<ZZ> commonScale(std::span<const QQ> numbers, ZZ multiple);

}  // namespace starsift
