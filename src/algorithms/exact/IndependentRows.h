// Which rows of a matrix depend linearly on the rows above, decided exactly.
#pragma once

#include <vector>

#include "core/Matrix.h"
#include "numbers/QQ.h"

namespace starsift {

/// The ascending 1-based indices of the rows that are not rational combinations of the
/// kept rows above them: greedy from the top, so that a row of zeros and a multiple
/// of an earlier row are never among them. Entries are finite and converted to rationals
/// exactly; nothing is rounded, and the result is proven, not only probable.
///
/// Elimination modulo a prime proves independence. A row that depends on the rows above
/// modulo the prime is proven dependent by its coefficients: they are lifted from the prime
/// to rationals (PadicLift.h) and verified over all columns. If that fails the prime divides
/// a minor, and the next prime is used.
///
/// m rows of n columns, k of them kept: O(m n k) machine operations, and for each
/// dependent row O(k^2 + n k) for each 30 bits of its coefficients.
template <class T>
std::vector<Index> independentRows(const Matrix<T>& rows);

extern template std::vector<Index> independentRows(const Matrix<long double>&);
extern template std::vector<Index> independentRows(const Matrix<QQ>&);

}  // namespace starsift
