// Matrices of rationals as integers over one scale. Unlike IntegerRow.h, which scales
// each row by itself, this keeps the lattice that the rows span, up to the scale.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "numbers/VectorQQ.h"
#include "numbers/ZZ.h"

namespace starsift {

/// Row after row, 0-based, all of one length.
using IntegerMatrix = std::vector<std::vector<ZZ>>;

/// The rationals that the entries convert to. An infinite one is fatal, "exact matrix:
/// infinite entry"; for a nan see fromDbl().
template <class T>
Matrix<QQ> finiteRationals(const Matrix<T>& matrix);

struct ScaledIntegers {
  IntegerMatrix rows;
  /// The least positive integer that makes all entries integers.
  ZZ scale;
};

/// The entries as finiteRationals() takes them, times `scale`. Takes the number of
/// entries times the length of the scale.
template <class T>
ScaledIntegers scaledIntegers(const Matrix<T>& matrix);

/// Of rows of `columns` entries.
IntegerMatrix transposed(const IntegerMatrix& rows, std::size_t columns);

/// The Euclidean norm of the entries is at most 2 to this.
std::size_t normBits(std::span<const ZZ> entries);

extern template Matrix<QQ> finiteRationals(const Matrix<long double>&);
extern template Matrix<QQ> finiteRationals(const Matrix<QQ>&);
extern template ScaledIntegers scaledIntegers(const Matrix<long double>&);
extern template ScaledIntegers scaledIntegers(const Matrix<QQ>&);

}  // namespace starsift
