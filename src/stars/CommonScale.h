// One scale for many rationals, where that doesn't cost too much memory.
#pragma once

#include <optional>
#include <span>

#include "numbers/QQ.h"
#include "numbers/ZZ.h"

namespace starsift {

/// The least common multiple of `multiple`, which is positive, and of the
/// denominators of the finite `numbers`. Nothing where the numbers over that scale
/// would take more than a megabit and more than 64 times the bits that they have
/// now: n coprime denominators make n numerators of n times their length.
std::optional<ZZ> commonScale(std::span<const QQ> numbers, ZZ multiple);

}  // namespace starsift
