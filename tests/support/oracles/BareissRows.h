// Which rows are independent of those above, by fraction-free elimination over GMP's
// integers: slow, and without anything of the library.
#pragma once

#include <gmpxx.h>

#include <cstddef>
#include <vector>

namespace starsift::test {

using IntegerRows = std::vector<std::vector<mpz_class>>;

/// 0-based, ascending. All rows have the same length.
/// E. H. Bareiss, Math. Comp. 22 (1968).
std::vector<std::size_t> independentRowsByBareiss(const IntegerRows& rows);

/// Integers over the common denominator of each row.
IntegerRows scaledRows(const std::vector<std::vector<mpq_class>>& rows);

}  // namespace starsift::test
