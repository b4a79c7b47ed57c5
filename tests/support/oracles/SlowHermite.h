// The Hermite form by Euclid's scheme over GMP's integers, whose numbers may grow as
// they like, and without anything of the library.
#pragma once

#include <algorithm>
#include <utility>

#include "support/oracles/BareissRows.h"

namespace starsift::test {

/// row -= factor * other
inline void subtractRow(std::vector<mpz_class>& row, const mpz_class& factor,
                        const std::vector<mpz_class>& other) {
  for (std::size_t j = 0; j < row.size(); ++j) row[j] -= factor * other[j];
}

inline mpz_class floorQuotient(const mpz_class& a, const mpz_class& b) {
  mpz_class result;
  mpz_fdiv_q(result.get_mpz_t(), a.get_mpz_t(), b.get_mpz_t());
  return result;
}

/// Without rows of zeros; positive pivots, entries above them at least 0 and below them.
/// All rows have `columns` entries.
inline IntegerRows hermiteByEuclid(IntegerRows rows, std::size_t columns) {
  std::size_t rank = 0;
  for (std::size_t j = 0; j < columns && rank < rows.size(); ++j) {
    for (std::size_t i = rank + 1; i < rows.size(); ++i)
      while (rows[i][j] != 0) {
        subtractRow(rows[rank], floorQuotient(rows[rank][j], rows[i][j]), rows[i]);
        std::swap(rows[rank], rows[i]);
      }
    std::vector<mpz_class>& pivotRow = rows[rank];
    if (pivotRow[j] == 0) continue;
    if (pivotRow[j] < 0)
      for (mpz_class& entry : pivotRow) entry = -entry;
    for (std::size_t i = 0; i < rank; ++i)
      subtractRow(rows[i], floorQuotient(rows[i][j], pivotRow[j]), pivotRow);
    ++rank;
  }
  rows.resize(rank);
  return rows;
}

}  // namespace starsift::test
