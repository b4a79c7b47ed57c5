// Bounds of the variables against what the rows allow. The middle of the box of bounds is
// what a reduction is drawn to: where rows leave a corner of it only, that is the wrong place.
#pragma once

#include "numbers/QQ.h"
#include "problem/Vanu.h"

namespace starsift {

/// Narrows finite bounds lx, rx of variables to what the plain equations and the inequations
/// imply, in steps of 10^-dx. Congruences and targets imply nothing. Everything else of the
/// problem, a problem as read, stays, and the set of its solutions too; infinite bounds stay
/// infinite.
///
/// A variable takes its new bounds only where these leave at most half of its range: the
/// lattice has a common multiple of all ranges in it, and many slightly different ones
/// would make that long. Constants, lx = rx, stay where they are, also between two steps.
///
/// The problem stays as it is where its rows contradict its bounds, where bounds are empty,
/// or a dx isn't one of 0, 1, ... 1000: a later step says so, with a text of its own. Never
/// throws, never fatal.
///
/// Interval propagation in exact arithmetic over at most 20 rounds, fewer over more than
/// 100,000 entries, each O(entries other than 0): E. Davis, Constraint propagation with interval
/// labels, Artif. Intell. 32 (1987).
void tightenBounds(Vanu<QQ>& problem);

}  // namespace starsift
