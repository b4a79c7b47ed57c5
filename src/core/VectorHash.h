// Hash of the components of a vector.
#pragma once

#include <array>
#include <cstddef>

#include "core/NumberTraits.h"
#include "core/Vector.h"

namespace starsift {

/// Hash of the components 1, 1 + step, 1 + 2 step ...; vectors that are identical in these
/// components have equal hashes. step >= 1.
template <class T>
std::size_t hashOf(const Vector<T>& x, Index step = 1) {
  constexpr std::size_t multiplier = 0x9E3779B97F4A7C15U;
  // Each multiplication depends on the one before it: four chains run in parallel.
  std::array<std::size_t, 4> chains{1, 2, 3, 4};
  std::size_t next = 0;
  for (Index i = 1; i <= x.dimension(); i += step) {
    std::size_t& chain = chains[next++ % chains.size()];
    chain = (chain ^ NumberTraits<T>::hash(x[i])) * multiplier;
  }
  std::size_t hash = 0;
  for (const std::size_t chain : chains) hash = (hash ^ chain ^ (chain >> 32U)) * multiplier;
  return hash ^ (hash >> 32U);
}

}  // namespace starsift
