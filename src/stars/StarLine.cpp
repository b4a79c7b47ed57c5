#include "stars/StarLine.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace starsift {

namespace {

/// The processor goes on with long texts by itself.
void prefetchText(std::string_view text) {
  constexpr std::size_t cacheLine = 64;
  constexpr std::size_t most = 8 * cacheLine;
  for (std::size_t i = 0; i < std::min(text.size(), most); i += cacheLine)
    __builtin_prefetch(text.data() + i);
}

}  // namespace

void prefetch(const StarLine& line) {
  prefetchText(line.x());
  prefetchText(line.rest());
}

std::uint64_t hashOfText(std::string_view text) {
  constexpr std::uint64_t multiplier = 0x9E3779B97F4A7C15U;
  constexpr std::size_t word = sizeof(std::uint64_t);
  // Each multiplication depends on the one before it: four chains run in parallel.
  std::array<std::uint64_t, 4> chains{1, 2, 3, text.size()};
  std::array<std::uint64_t, 4> words{};
  const auto mix = [&] {
    for (std::size_t i = 0; i < chains.size(); ++i) {
      const std::uint64_t product = (chains[i] ^ words[i]) * multiplier;
      chains[i] = product ^ product >> 32U;
    }
  };
  for (; text.size() >= chains.size() * word; text.remove_prefix(chains.size() * word)) {
    std::memcpy(words.data(), text.data(), chains.size() * word);
    mix();
  }
  words.fill(0);
  if (!text.empty()) std::memcpy(words.data(), text.data(), text.size());
  mix();
  std::uint64_t hash = 0;
  for (const std::uint64_t chain : chains) hash = (hash ^ chain) * multiplier;
  return hash ^ hash >> 32U;
}

}  // namespace starsift
