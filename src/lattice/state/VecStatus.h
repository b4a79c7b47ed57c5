// The bits of the status word of a basis vector: which of its data are valid.
#pragma once

#include <algorithm>
#include <cstdint>

#include "core/Array.h"

namespace starsift {

using StatusWord = std::uint16_t;

/// The whole word, not a bit: the vector depends on the vectors before it.
constexpr StatusWord ST_DEPENDENT = 0x01;
/// Row of mu, cLen and bSq are valid.
constexpr StatusWord ST_MU = 0x02;
/// Row of Q is valid; one of the next two bits says which factorisation wrote it.
constexpr StatusWord ST_Q = 0x04;
/// Row of L and the reflectors up to it are valid.
constexpr StatusWord ST_L = 0x08;
/// Row of Lr, _d and the elements of lqCache up to it are valid.
constexpr StatusWord ST_CACHED = 0x10;
/// Size-reduced against its predecessors.
constexpr StatusWord ST_SIZE_REDUCED = 0x20;
/// The Lovász test was made since the row, or a row before it, last changed.
constexpr StatusWord ST_SWAP_CHECKED = 0x40;

/// Computed by the full factorisation.
constexpr StatusWord ST_FULL_ROW = ST_MU | ST_Q | ST_L;
/// Computed by the reduced factorisation with its cache.
constexpr StatusWord ST_CACHED_ROW = ST_MU | ST_Q | ST_CACHED;
/// The bits that become invalid with the factors.
constexpr StatusWord ST_FACTORS = ST_Q | ST_L | ST_CACHED;

constexpr bool carries(StatusWord word, StatusWord bits) {
  return (word & bits) == bits;
}

constexpr StatusWord without(StatusWord word, StatusWord bits) {
  return static_cast<StatusWord>(word & ~bits);
}

/// The first row in from..to whose word lacks one of the bits, else to + 1, or `from` if that is
/// greater. A row after the last word lacks all bits.
inline Index firstWithout(const Array<StatusWord>& words, StatusWord bits, Index from, Index to) {
  const Index last = std::min(to, words.dimension());
  Index k = from;
  while (k <= last && carries(words[k], bits)) ++k;
  return k;
}

}  // namespace starsift
