// What is true of a lattice between any two of its operations: a word on what isn't, empty
// where everything is.
#pragma once

#include <string>

#include "lattice/Lattice.h"

namespace starsift::test {

/// Sizes and flags. O(n + m).
template <class T>
std::string sizeFaults(const Lattice<T, long double>& lattice);

/// What the lattice says that it knows is so: the Gram-Schmidt data of rows that have some and
/// the size of reduced ones, both in exact arithmetic, the images of rows, the tracked
/// transformation, and the coordinates of both bases over themselves. Rows are independent
/// and of numbers that long double tells apart. Fills what the lattice remembers, as any
/// question does. O(n^3 m) on rationals.
template <class T>
std::string knowledgeFaults(Lattice<T, long double>& lattice);

}  // namespace starsift::test
