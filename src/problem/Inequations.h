// From inequations to normal form: none is useless, none is an equality, all have two
// finite bounds. Each step leaves the solutions of the problem as they are.
#pragma once

#include "problem/Vanu.h"

namespace starsift {

/// Removes the inequations without a finite bound, -inf <= row <= +inf. A console line
/// each: "Useless inequation (-inf <= ... <= inf) detected".
template <class T>
void dropUselessInequations(Vanu<T>& problem);

/// Turns the inequations with lu = ru into plain equations, in order, which stand behind
/// all others but before the lifted ones. Returns their number. With `verbose` a
/// console line each: "Fake inequation detected and transfered". An infinite common value is fatal:
/// "Unfulfillable infinite inequation detected --> NO SOLUTIONS!".
template <class T>
Index transferFakeInequations(Vanu<T>& problem, bool verbose);

/// Turns the inequations with one finite bound into equations with a slack variable:
/// row * x >= l becomes row * x - s = l, s >= 0, and an upper bound is negated first. The
/// equations come last, the slacks too, in one order; slackCount is their number. Each
/// lifted inequation leaves its place to the last one of those that are left.
template <class T>
void liftOneSidedInequations(Vanu<T>& problem);

}  // namespace starsift
