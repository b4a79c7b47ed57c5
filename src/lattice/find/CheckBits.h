// What the check of a lattice vector says: the bits of its result.
#pragma once

namespace starsift {

/// A solution of the problem.
constexpr unsigned CHECK_SOLUTION = 0x04;
/// Filed as a new one.
constexpr unsigned CHECK_STORED = 0x08;
/// The search has what it was to find.
constexpr unsigned CHECK_LIMIT = 0x20;

}  // namespace starsift
