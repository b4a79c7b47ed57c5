// What the bounds of the variables imply for the values of a row.
#pragma once

#include "problem/Vanu.h"

namespace starsift {

enum class RowKind { inequations, equations };

/// Compares the rows of one kind with the interval [l, r] of their possible values
/// within lx and rx; a modulus column is unbounded. The data are integers.
///
/// Inequations are tightened: lu = max(lu, l), ru = min(ru, r). An empty interval is fatal:
/// "Unfulfillable inequality detected --> NO SOLUTIONS!". Equations stay as they are; one
/// with bg outside the interval is fatal: "Unfulfillable equality detected --> NO
/// SOLUTIONS!". A line of the error stream names the row first. PrecisionException "llu
/// overflow" if an end of the interval leaves the safe range of T.
template <class T>
void checkRows(Vanu<T>& problem, RowKind kind);

}  // namespace starsift
