// Determinants of integer matrices by their residues modulo primes, up to the bound of
// Hadamard.
#pragma once

#include "algorithms/exact/IntegerMatrix.h"

namespace starsift {

/// The magnitude of the determinant of the square matrix is at most 2 to this: the
/// product of the lengths of rows or of columns.
std::size_t determinantBits(const IntegerMatrix& matrix);

/// Exact; 1 without rows. n rows: O(n^3) machine operations for each 30 bits of the
/// bound. J. von zur Gathen, J. Gerhard, Modern Computer Algebra, algorithm 5.10.
ZZ determinant(const IntegerMatrix& matrix);

/// The determinant is 1 or -1. A no costs one prime, a yes as many as determinant().
bool hasUnitDeterminant(const IntegerMatrix& matrix);

}  // namespace starsift
