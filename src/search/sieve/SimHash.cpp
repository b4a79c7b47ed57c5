#include "search/sieve/SimHash.h"

namespace starsift {

SimHasher::SimHasher(std::size_t dimension, std::mt19937_64& random) : planes_(SimHash::bits) {
  const auto draw = [&] { return static_cast<std::uint16_t>(random() % dimension); };
  for (Plane& plane : planes_) {
    for (std::uint16_t& entry : plane.plus) entry = draw();
    for (std::uint16_t& entry : plane.minus) entry = draw();
  }
}

SimHash SimHasher::operator()(const float* vector) const {
  SimHash hash;
  for (std::size_t bit = 0; bit < SimHash::bits; ++bit) {
    const Plane& plane = planes_[bit];
    float side = 0;
    for (std::size_t i = 0; i < halfEntries; ++i)
      side += vector[plane.plus[i]] - vector[plane.minus[i]];
    // Without a branch: either side is as likely.
    hash.word[bit / 64] |= std::uint64_t{side > 0 ? 1U : 0U} << (bit % 64);
  }
  return hash;
}

}  // namespace starsift
