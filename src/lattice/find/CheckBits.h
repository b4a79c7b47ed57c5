// The bits that the check of a lattice vector returns.
#pragma once

namespace starsift {

/// A solution of the problem.
constexpr unsigned CHECK_SOLUTION = 0x04;
/// Filed as a new one.
constexpr unsigned CHECK_STORED = 0x08;
/// The goal of the search is met.
constexpr unsigned CHECK_LIMIT = 0x20;

}  // namespace starsift
