// Matrices of rationals as integers over one scale. Unlike IntegerRow.h, which scales
// each row by itself, this keeps the lattice that the rows span, up to the scale.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "numbers/VectorQQ.h"
#include "numbers/ZZ.h"

namespace starsift {

/// Rows in sequence, 0-based, all of one length.
using IntegerMatrix = std::vector<std::vector<ZZ>>;

/// The rationals that the entries convert to. An infinite entry is fatal, "exact matrix:
/// infinite entry"; for a nan see fromDbl().
template <class T>
Matrix<QQ> finiteRationals(const Matrix<T>& matrix);

struct ScaledIntegers {
  IntegerMatrix rows;
  /// The least positive integer that makes all entries integers.
  ZZ scale;
};

/// The entries, converted as by finiteRationals(), times `scale`. O(number of entries times
/// length of the scale).
template <class T>
ScaledIntegers scaledIntegers(const Matrix<T>& matrix);

/// The transpose; rows have `columns` entries.
IntegerMatrix transposed(const IntegerMatrix& rows, std::size_t columns);

/// Exponent b such that the Euclidean norm of the entries is at most 2^b.
std::size_t normBits(std::span<const ZZ> entries);

extern template Matrix<QQ> finiteRationals(const Matrix<long double>&);
extern template Matrix<QQ> finiteRationals(const Matrix<QQ>&);
extern template ScaledIntegers scaledIntegers(const Matrix<long double>&);
extern template ScaledIntegers scaledIntegers(const Matrix<QQ>&);

}  // namespace starsift
