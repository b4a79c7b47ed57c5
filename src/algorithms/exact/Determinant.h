// Determinants of integer matrices from their residues modulo primes, up to Hadamard's
// bound.
#pragma once

#include "algorithms/exact/IntegerMatrix.h"

namespace starsift {

/// Exponent b such that the determinant of the square matrix is at most 2^b in magnitude:
/// Hadamard's bound, the product of the lengths of the rows or of the columns.
std::size_t determinantBits(const IntegerMatrix& matrix);

/// Exact; 1 without rows. n rows: O(n^3) machine operations for each 30 bits of the
/// bound. J. von zur Gathen, J. Gerhard, Modern Computer Algebra, algorithm 5.10.
ZZ determinant(const IntegerMatrix& matrix);

/// True if the determinant is 1 or -1. False costs one prime, true as many as determinant().
bool hasUnitDeterminant(const IntegerMatrix& matrix);

}  // namespace starsift
