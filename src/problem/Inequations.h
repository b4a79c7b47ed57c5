// Transforms inequations to normal form: no inequation is useless or an equality, and all have
// two finite bounds. Each step preserves the solutions of the problem.
#pragma once

#include "problem/Vanu.h"

namespace starsift {

/// Removes the inequations without a finite bound, -inf <= row <= +inf. A console line
/// for each: "Useless inequation (-inf <= ... <= inf) detected".
template <class T>
void dropUselessInequations(Vanu<T>& problem);

/// Turns the inequations with lu = ru into plain equations, in order, placed after all
/// other plain equations and before the lifted ones. Returns their number. With `verbose` a
/// console line for each: "Fake inequation detected and transfered". An infinite common value
/// is fatal: "Unfulfillable infinite inequation detected --> NO SOLUTIONS!".
template <class T>
Index transferFakeInequations(Vanu<T>& problem, bool verbose);

/// Turns the inequations with one finite bound into equations with a slack variable:
/// row * x >= l becomes row * x - s = l, s >= 0, and an upper bound is negated first. The
/// equations are appended, and so are the slacks, in the same order; slackCount is their number.
/// The last of the remaining inequations replaces each lifted one.
template <class T>
void liftOneSidedInequations(Vanu<T>& problem);

}  // namespace starsift
