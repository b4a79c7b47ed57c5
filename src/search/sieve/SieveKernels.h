// The inner loops of a sieve.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "search/enumeration/Blocks.h"
#include "search/sieve/SimHash.h"

namespace starsift {

/// Stores the indices of the hashes, 0-based, that are close to `centre` or to its opposite: with a
/// Hamming distance below `distance` or above 256 - distance. `indices` has room for all. Returns
/// their number.
std::size_t selectNear(const SimHash* hashes, std::size_t count, const SimHash& centre,
                       unsigned distance, std::uint32_t* indices);

/// The inner product of two rows. The order of the sums doesn't depend on the processor, nor does
/// it below.
float innerProduct(const Block<float>* a, const Block<float>* b, std::size_t blocks);

/// Rows that each other row is multiplied with while it is at hand.
constexpr std::size_t tileRows = 32;

/// Some rows side by side: their entries, one position behind the other, and their squared lengths.
struct SieveTile {
  /// Entry j of row k is at j * tileRows + k.
  std::vector<float> entries;
  std::array<float, tileRows> lengths;
};

/// Stores r * tileRows + k for each row r, 0-based, and row k of the tile whose difference has a
/// squared length below `bound`. The rows lie one behind the other. `pairs` has room for all.
/// Returns their number.
std::size_t selectPairs(const SieveTile& tile, const Block<float>* rows, const float* lengths,
                        std::size_t count, std::size_t blocks, float bound, std::uint32_t* pairs);

}  // namespace starsift
