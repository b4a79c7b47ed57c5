// Hashes of directions: close directions have close hashes.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

namespace starsift {

/// One bit per hyperplane: on which side of it a vector lies.
struct SimHash {
  static constexpr std::size_t words = 4;
  static constexpr std::size_t bits = 64 * words;
  std::array<std::uint64_t, words> word{};
};

/// Hashes of vectors by hyperplanes, whose normal vectors are the sums of three random unit vectors
/// less three others. The Hamming distance of two hashes is close to 256 times their angle over pi.
///
/// M. Charikar, STOC 2002; L. Ducas et al., EUROCRYPT 2019.
class SimHasher {
 public:
  /// Of vectors with `dimension` entries, at least 1.
  SimHasher(std::size_t dimension, std::mt19937_64& random);

  SimHash operator()(const float* vector) const;

 private:
  static constexpr std::size_t halfEntries = 3;
  struct Plane {
    std::array<std::uint16_t, halfEntries> plus;
    std::array<std::uint16_t, halfEntries> minus;
  };

  std::vector<Plane> planes_;
};

}  // namespace starsift
