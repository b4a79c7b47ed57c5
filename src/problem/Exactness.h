// Whether the tolerance of equations matters in a problem.
//
// A stored solution satisfies an equation within 1e-9, while a lattice satisfies it exactly.
// A proof by the search about the exact equations holds for stored solutions too only if
// no point lies in between.
#pragma once

#include "numbers/QQ.h"
#include "problem/Vanu.h"

namespace starsift {

/// True if a point of the problem as read, its components in steps of 10^-dx or constants
/// lx = rx, satisfies the equations and congruences within the tolerance only if it
/// satisfies them exactly.
///
/// Decided row by row: with f the least positive factor that makes coefficients per step,
/// right-hand side minus the contribution of constants, and modulus integers, a residual other
/// than 0 is at least 1/f in magnitude. The result is true if all 1/f exceed the tolerance,
/// f < 10^9; it is also false for a dx that isn't one of 0, 1, ... 1000. Inequations and
/// targets have no tolerance and don't count. O(entries of Ag).
bool equationsHoldExactly(const Vanu<QQ>& problem);

/// Every number of the problem as read is exact in long double; see isExact() of Conversion.h.
bool fitsLongDouble(const Vanu<QQ>& problem);

}  // namespace starsift
