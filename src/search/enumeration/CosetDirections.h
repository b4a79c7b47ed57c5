// The Gram-Schmidt data of a coset at high precision, for rounding.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "numbers/BigFloat.h"
#include "search/enumeration/BoxCoset.h"

namespace starsift {

/// Data of a coset in scaled coordinates s_j (x_j - m_j), m the middle of the box and s_j about
/// 1 over the range of coordinate j, so that the box is a cube of side 1. With D = diag(s) and
/// b*_k the Gram-Schmidt vectors of the rows D b_k, orthogonalised from the first on.
///
/// Nothing is proved from the fact that these numbers are close to what they stand for: bounds
/// of the error are computed exactly from the rounded data.
struct CosetDirections {
  using Row = std::vector<BigFloat>;

  /// s, n entries. A fixed coordinate counts as one of range 1 / (n + 1): the multiples of the rows
  /// that move it have little room anyway.
  std::vector<double> scale;
  /// v_k = D b*_k, d rows: <v_k, x> is |b*_k|^2 times the coefficient of b*_k in D x.
  std::vector<Row> directions;
  /// D times the dual basis, d rows: <w_k, b_i> is 1 for i = k, else 0.
  std::vector<Row> duals;
  /// D (part of D (p - m) orthogonal to all rows), n entries.
  Row rest;
  /// |b*_k|^2, d entries.
  std::vector<BigFloat> squaredLengths;
  /// Bits of all these numbers.
  mp_bitcnt_t precision;
};

/// The data of a coset whose box isn't empty; O(d^2 n) operations, seconds for some hundred rows.
/// `mayGoOn` is called before every row; false ends the work, and nothing is returned then. Throws
/// FatalPrecisionException if the rows of the basis are dependent.
std::optional<CosetDirections> cosetDirections(const BoxCoset& coset,
                                               const std::function<bool()>& mayGoOn);
CosetDirections cosetDirections(const BoxCoset& coset);

/// p := the point of the coset whose coefficients over the b*_k lie within 1/2 of the middle of
/// the box, by Babai's nearest planes. `data` stay those of the coset.
void movePointToMiddle(BoxCoset& coset, CosetDirections& data);

}  // namespace starsift
