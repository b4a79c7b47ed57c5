#include "stars/LineOrder.h"

#include <algorithm>
#include <compare>
#include <string_view>

#include "core/HashedIndices.h"
#include "stars/VersionOrder.h"

namespace starsift {

namespace {

std::strong_ordering compareLines(const StarLine& a, const StarLine& b) {
  auto order = a.targetNorm <=> b.targetNorm;
  if (order == 0) order = a.slackNorm <=> b.slackNorm;
  if (order == 0) order = a.time <=> b.time;
  if (order == 0) order = b.versionRank <=> a.versionRank;
  if (order == 0) order = a.x().compare(b.x()) <=> 0;
  if (order == 0) order = a.params().compare(b.params()) <=> 0;
  return order;
}

void rankVersions(std::vector<StarLine>& lines) {
  std::vector<std::string_view> texts;
  texts.reserve(lines.size());
  for (const StarLine& line : lines) texts.push_back(line.version());
  const std::vector<std::size_t> ranks = versionRanks(texts);
  for (std::size_t i = 0; i < lines.size(); ++i)
    lines[i].versionRank = static_cast<std::uint32_t>(ranks[i]);
}

/// Finds, among the lines kept so far, the one that stands for the same star.
class LineTable {
 public:
  LineTable(const std::vector<StarLine>& lines, bool compareParams)
      : lines_(lines), compareParams_(compareParams) {
    table_.reserve(static_cast<Index>(lines.size()));
  }

  /// Enters the line at `index`, from 0 on, unless one that equals it is there.
  bool enter(std::size_t index) {
    const StarLine& line = lines_[index];
    const std::uint64_t hash = compareParams_ ? line.hash ^ hashOfText(line.params()) : line.hash;
    const auto isEqual = [&](Index other) { return equal(lines_[toPosition(other)], line); };
    const Index entered = static_cast<Index>(index) + 1;
    return table_.findOrEnter(hash, entered, isEqual) == entered;
  }

 private:
  /// The table counts from 1.
  static std::size_t toPosition(Index index) { return static_cast<std::size_t>(index - 1); }

  bool equal(const StarLine& a, const StarLine& b) const {
    return a.x() == b.x() && (!compareParams_ || a.params() == b.params());
  }

  const std::vector<StarLine>& lines_;
  bool compareParams_;
  HashedIndices table_;
};

}  // namespace

bool sortLines(std::vector<StarLine>& lines) {
  rankVersions(lines);
  const auto less = [](const StarLine& a, const StarLine& b) { return compareLines(a, b) < 0; };
  if (!std::is_sorted(lines.begin(), lines.end(), less))
    std::sort(lines.begin(), lines.end(), less);
  const auto isOpen = [](const StarLine& a, const StarLine& b) {
    return compareLines(a, b) == 0 && a.rest() != b.rest();
  };
  return std::adjacent_find(lines.begin(), lines.end(), isOpen) == lines.end();
}

void removeDuplicates(std::vector<StarLine>& lines, bool compareParams) {
  LineTable table(lines, compareParams);
  std::size_t kept = 0;
  std::vector<bool> isKept(lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) isKept[i] = table.enter(i);
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!isKept[i]) continue;
    if (kept != i) lines[kept] = std::move(lines[i]);
    ++kept;
  }
  lines.resize(kept);
}

}  // namespace starsift
