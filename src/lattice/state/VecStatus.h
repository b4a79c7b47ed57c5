// What is known of a basis vector: the bits of its status word.
#pragma once

#include <algorithm>
#include <cstdint>

#include "core/Array.h"

namespace starsift {

using StatusWord = std::uint16_t;

/// The whole word, not a bit: the vector depends on those before it.
constexpr StatusWord ST_DEPENDENT = 0x01;
/// Row of mu, cLen and bSq are valid.
constexpr StatusWord ST_MU = 0x02;
/// Row of Q is valid; one of the next two bits tells whose it is.
constexpr StatusWord ST_Q = 0x04;
/// Row of L and the reflectors up to it are valid.
constexpr StatusWord ST_L = 0x08;
/// Row of Lr, _d and the elements of lqCache up to it are valid.
constexpr StatusWord ST_CACHED = 0x10;
/// Size-reduced against its predecessors.
constexpr StatusWord ST_SIZE_REDUCED = 0x20;
/// The exchange test was made in this pass.
constexpr StatusWord ST_SWAP_CHECKED = 0x40;

/// Done by the full factorisation.
constexpr StatusWord ST_FULL_ROW = ST_MU | ST_Q | ST_L;
/// Done by the reduced factorisation with its cache.
constexpr StatusWord ST_CACHED_ROW = ST_MU | ST_Q | ST_CACHED;
/// What a row loses with the factors.
constexpr StatusWord ST_FACTORS = ST_Q | ST_L | ST_CACHED;

constexpr bool carries(StatusWord word, StatusWord bits) {
  return (word & bits) == bits;
}

constexpr StatusWord without(StatusWord word, StatusWord bits) {
  return static_cast<StatusWord>(word & ~bits);
}

/// The first row from..to whose word lacks one of the bits, else to + 1, or `from` when that
/// is beyond. A row behind the last word lacks them all.
inline Index firstWithout(const Array<StatusWord>& words, StatusWord bits, Index from, Index to) {
  const Index last = std::min(to, words.dimension());
  Index k = from;
  while (k <= last && carries(words[k], bits)) ++k;
  return k;
}

}  // namespace starsift
