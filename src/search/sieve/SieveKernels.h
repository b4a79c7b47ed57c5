// The inner loops of a sieve.
#pragma once

#include <cstddef>
#include <cstdint>

#include "search/enumeration/Blocks.h"
#include "search/sieve/SimHash.h"

namespace starsift {

/// Stores the indices of the hashes, 0-based, that are close to `centre` or to its opposite: with a
/// Hamming distance below `distance` or above 256 - distance. `indices` has room for all. Returns
/// their number.
std::size_t selectNear(const SimHash* hashes, std::size_t count, const SimHash& centre,
                       unsigned distance, std::uint32_t* indices);

/// Stores the inner products of `row` with `count` rows of `blocks` blocks, which lie one behind
/// the other. The order of the sums doesn't depend on the processor.
void innerProducts(const Block<float>* row, const Block<float>* rows, std::size_t count,
                   std::size_t blocks, float* products);

}  // namespace starsift
