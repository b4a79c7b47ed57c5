#include "search/sieve/SieveKernels.h"

#include "search/enumeration/VectorVersions.h"

namespace starsift {

STARSIFT_BIT_COUNT_VERSIONS
std::size_t selectNear(const SimHash* hashes, std::size_t count, const SimHash& centre,
                       unsigned distance, std::uint32_t* indices) {
  std::size_t selected = 0;
  for (std::size_t i = 0; i < count; ++i) {
    unsigned between = 0;
    for (std::size_t k = 0; k < SimHash::words; ++k)
      between += static_cast<unsigned>(__builtin_popcountll(hashes[i].word[k] ^ centre.word[k]));
    // Without a branch: which are near is random.
    indices[selected] = static_cast<std::uint32_t>(i);
    selected += between < distance || between > SimHash::bits - distance ? 1 : 0;
  }
  return selected;
}

STARSIFT_VECTOR_VERSIONS
float innerProduct(const Block<float>* a, const Block<float>* b, std::size_t blocks) {
  Block<float> sums{};
  for (std::size_t i = 0; i < blocks; ++i)
    for (std::size_t k = 0; k < blockSize; ++k) sums.lane[k] += a[i].lane[k] * b[i].lane[k];
  const float(&s)[blockSize] = sums.lane;
  return ((s[0] + s[4]) + (s[2] + s[6])) + ((s[1] + s[5]) + (s[3] + s[7]));
}

STARSIFT_VECTOR_VERSIONS
std::size_t selectPairs(const SieveTile& tile, const Block<float>* rows, const float* lengths,
                        std::size_t count, std::size_t blocks, float bound, std::uint32_t* pairs) {
  std::size_t selected = 0;
  const float* const columns = tile.entries.data();
  for (std::size_t r = 0; r < count; ++r) {
    const float* const row = rows[r * blocks].lane;
    float sums[tileRows] = {};
    for (std::size_t j = 0; j < blocks * blockSize; ++j)
      for (std::size_t k = 0; k < tileRows; ++k) sums[k] += row[j] * columns[j * tileRows + k];
    const float rest = lengths[r] - bound;
    int near = 0;
    for (std::size_t k = 0; k < tileRows; ++k) near |= rest + tile.lengths[k] < 2 * sums[k] ? 1 : 0;
    if (near == 0) continue;
    for (std::size_t k = 0; k < tileRows; ++k)
      if (rest + tile.lengths[k] < 2 * sums[k])
        pairs[selected++] = static_cast<std::uint32_t>(r * tileRows + k);
  }
  return selected;
}

}  // namespace starsift
