// What the bounds of the variables say about the values of a row.
#pragma once

#include "problem/Vanu.h"

namespace starsift {

enum class RowKind { inequations, equations };

/// Compares the rows of a kind with the interval [l, r] of the values that they can have
/// within lx and rx; a modulus column is unbounded. The data are integers.
///
/// Inequations are tightened: lu = max(lu, l), ru = min(ru, r). An empty one is fatal:
/// "Unfulfillable inequality detected --> NO SOLUTIONS!". Equations stay as they are; one
/// with bg outside the interval is fatal: "Unfulfillable equality detected --> NO
/// SOLUTIONS!". A line of the error stream names the row first. PrecisionException "llu
/// overflow" where an end of the interval leaves the safe range of T.
template <class T>
void checkRows(Vanu<T>& problem, RowKind kind);

}  // namespace starsift
