#include "stars/VersionOrder.h"

#include <map>
#include <unordered_map>

namespace starsift {

std::vector<std::uint64_t> versionNumbers(std::string_view text) {
  std::vector<std::uint64_t> numbers{0};
  for (const char c : text) {
    if (c == '.')
      numbers.push_back(0);
    else
      numbers.back() = numbers.back() * 10 + static_cast<std::uint64_t>(c - '0');
  }
  while (!numbers.empty() && numbers.back() == 0) numbers.pop_back();
  return numbers;
}

std::vector<std::size_t> versionRanks(std::span<const std::string_view> texts) {
  // A file has many stars and few different version texts.
  std::unordered_map<std::string_view, std::size_t> different;
  std::vector<std::size_t> ranks;
  ranks.reserve(texts.size());
  for (const std::string_view text : texts)
    ranks.push_back(different.try_emplace(text, different.size()).first->second);
  std::map<std::vector<std::uint64_t>, std::size_t> order;
  for (const auto& [text, index] : different) order.emplace(versionNumbers(text), 0);
  std::size_t next = 0;
  for (auto& [numbers, rank] : order) rank = next++;
  std::vector<std::size_t> rankOfText(different.size());
  for (const auto& [text, index] : different) rankOfText[index] = order.at(versionNumbers(text));
  for (std::size_t& rank : ranks) rank = rankOfText[rank];
  return ranks;
}

}  // namespace starsift
