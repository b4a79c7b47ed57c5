// The choice of primes behind IndependentRows.h, accessible to tests: small primes fail
// often.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "algorithms/exact/IntegerRow.h"
#include "algorithms/exact/PrimeField.h"

namespace starsift::detail {

/// The 0-based rows that are independent of the kept rows above, over the rationals.
/// Rows have `columns` entries and are not zero. Empty if the prime is unlucky.
std::optional<std::vector<std::size_t>> provenSplit(std::span<const IntegerRow> rows,
                                                    std::size_t columns, const PrimeField& field);

/// As above, by the first prime from `prime` on that isn't unlucky.
std::vector<std::size_t> independentIntegerRows(std::span<const IntegerRow> rows,
                                                std::size_t columns, std::uint32_t prime);

}  // namespace starsift::detail
