// Determinants by fraction-free elimination over GMP's integers, without anything of
// the library.
#pragma once

#include <utility>

#include "support/oracles/BareissRows.h"

namespace starsift::test {

/// Of a square matrix. E. H. Bareiss, Math. Comp. 22 (1968).
inline mpz_class determinantByBareiss(IntegerRows rows) {
  mpz_class previous = 1;
  bool isOdd = false;
  for (std::size_t k = 0; k < rows.size(); ++k) {
    std::size_t pivot = k;
    while (pivot < rows.size() && rows[pivot][k] == 0) ++pivot;
    if (pivot == rows.size()) return 0;
    if (pivot != k) isOdd = !isOdd;
    std::swap(rows[pivot], rows[k]);
    for (std::size_t i = k + 1; i < rows.size(); ++i)
      for (std::size_t j = k + 1; j < rows.size(); ++j)
        rows[i][j] = (rows[i][j] * rows[k][k] - rows[i][k] * rows[k][j]) / previous;
    previous = rows[k][k];
  }
  return isOdd ? mpz_class(-previous) : previous;
}

}  // namespace starsift::test
