// Which rows of a matrix depend linearly on the ones above, decided exactly.
#pragma once

#include <vector>

#include "core/Matrix.h"
#include "numbers/QQ.h"

namespace starsift {

/// The ascending 1-based indices of the rows that are no rational combination of the
/// kept rows above them: greedy from the top, so that a row of zeros and a multiple
/// of an earlier row are never among them. Entries are finite and taken as the
/// rationals that they convert to; nothing is rounded and nothing left to chance.
///
/// Elimination modulo a prime proves independence. What depends on the rows above
/// modulo the prime is proven by its coefficients: they are lifted from the prime to
/// rationals (PadicLift.h) and multiplied out over all columns. Where that fails the
/// prime divides a minor, and the next one is taken.
///
/// m rows of n columns, k of them kept: O(m n k) machine operations, and for each
/// dependent row O(k^2 + n k) for each 30 bits that its coefficients have.
template <class T>
std::vector<Index> independentRows(const Matrix<T>& rows);

extern template std::vector<Index> independentRows(const Matrix<long double>&);
extern template std::vector<Index> independentRows(const Matrix<QQ>&);

}  // namespace starsift
