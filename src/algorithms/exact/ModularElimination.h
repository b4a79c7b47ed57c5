// Elimination modulo a prime: which rows are independent there, and the inverse of
// their pivot block.
//
// Rows that are independent modulo a prime are independent over the rationals, since a
// minor that isn't 0 modulo the prime isn't 0. The converse fails for the finitely many
// primes that divide certain minors.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "algorithms/exact/IntegerRow.h"
#include "algorithms/exact/PrimeField.h"

namespace starsift {

/// Rows and columns are 0-based.
struct ModularSplit {
  /// Rows that are independent of the rows kept before them, ascending.
  std::vector<std::size_t> kept;
  /// Column of the pivot of each kept row. The first i pivot columns of the first i
  /// kept rows are invertible modulo the prime, for each i.
  std::vector<std::size_t> pivots;
  /// Rows that depend on the rows kept before them modulo the prime, ascending. Once as many
  /// rows are kept as there are columns, further rows are in neither list: they depend on
  /// the kept rows over the rationals too.
  std::vector<std::size_t> doubtful;
};

/// Splits rows of `columns` entries from the top.
ModularSplit splitRows(std::span<const IntegerRow> rows, std::size_t columns,
                       const PrimeField& field);

/// The first prime from firstPrime on modulo which the independent rows stay independent.
/// Doesn't terminate for dependent rows.
PrimeField separatingField(std::span<const IntegerRow> rows, std::size_t columns);

/// A square matrix over a prime field, stored by rows.
using ModularMatrix = std::vector<std::vector<std::uint32_t>>;

/// Determinant of a square matrix; 1 without rows. O(n^3).
std::uint32_t determinant(const ModularMatrix& matrix, const PrimeField& field);

/// Replaces the matrix by its inverse. All its leading minors are invertible, so no
/// rows are swapped. O(n^3).
void invert(ModularMatrix& matrix, const PrimeField& field);

}  // namespace starsift
