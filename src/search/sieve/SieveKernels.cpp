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
void innerProducts(const Block<float>* row, const Block<float>* rows, std::size_t count,
                   std::size_t blocks, float* products) {
  for (std::size_t r = 0; r < count; ++r) {
    Block<float> sums{};
    for (std::size_t i = 0; i < blocks; ++i)
      for (std::size_t k = 0; k < blockSize; ++k)
        sums.lane[k] += row[i].lane[k] * rows[r * blocks + i].lane[k];
    const float(&s)[blockSize] = sums.lane;
    products[r] = ((s[0] + s[4]) + (s[2] + s[6])) + ((s[1] + s[5]) + (s[3] + s[7]));
  }
}

}  // namespace starsift
