// Tightens the bounds of variables by the rows, and those of rows by the variables. A reduction is
// drawn to the middle of the box of bounds: if the rows allow only a corner of the box, its middle
// is the wrong place.
#pragma once

#include "numbers/QQ.h"
#include "problem/Vanu.h"

namespace starsift {

/// Narrows finite bounds lx, rx of variables to what the plain equations and the inequations
/// imply, in steps of 10^-dx. Congruences and targets are not used. `problem` is a problem as
/// read; the set of its solutions stays unchanged, and infinite bounds of variables stay infinite.
///
/// The bounds of a variable are replaced only if at most half of its range remains: the
/// lattice contains a common multiple of all ranges, and many slightly different ranges
/// would make it long. Constants, lx = rx, stay, even if they lie between two steps.
///
/// The infinite side of an inequation becomes the value that the rows and bounds imply, if that
/// is finite. Left infinite, it would take a slack of its own, whose centre is wherever the
/// inequation is tight; a row with two sides is a coordinate of the box, as the variables are.
///
/// False if the rows contradict the bounds: a proof that no point satisfies both exactly. The
/// problem is unchanged then, and also if bounds are empty, or if a dx isn't one of 0, 1, ...
/// 1000, which later steps report. Never throws, never fatal.
///
/// Interval propagation in exact arithmetic over at most 20 rounds, fewer over more than
/// 100,000 entries, each O(entries other than 0): E. Davis, Constraint propagation with interval
/// labels, Artif. Intell. 32 (1987).
bool tightenBounds(Vanu<QQ>& problem);

/// What the rows imply for the bounds.
enum class BoundsImplied {
  /// The bounds of all variables are replaced, infinite ones too, wherever they become narrower.
  narrowed,
  /// Proven: no point within the bounds satisfies the rows. The problem is unchanged.
  contradiction,
  /// A dx isn't one of 0, 1, ... 1000. The problem is unchanged.
  unknownSteps
};

/// The same propagation for a search that needs every bound as narrow as it can be: the set of
/// solutions stays unchanged.
BoundsImplied implyBounds(Vanu<QQ>& problem);

}  // namespace starsift
