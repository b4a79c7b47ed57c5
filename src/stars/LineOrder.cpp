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

/// Lines that a table is asked for ahead of their turn.
constexpr std::size_t lookahead = 16;

/// Finds, among the lines entered so far, those that stand for the same point or star.
class LineTable {
 public:
  /// The lines stay where they are. Positions are from 0 on.
  explicit LineTable(const std::vector<StarLine>& lines) : lines_(lines) {
    points_.reserve(static_cast<Index>(lines.size()));
  }

  void prefetchPoint(std::size_t position) const { points_.prefetch(lines_[position].hash); }

  /// The position of the first line with the x of the one at `position`, which is that itself if
  /// none was entered before.
  std::size_t enterPoint(std::size_t position) {
    const StarLine& line = lines_[position];
    const auto isEqual = [&](Index other) { return at(other).x() == line.x(); };
    return toPosition(points_.findOrEnter(line.hash, toIndex(position), isEqual));
  }

  /// The line at `position` differs in its parameters from each line of its point that was
  /// entered, of which `first` is the first; enters it then.
  bool enterParams(std::size_t position, std::size_t first) {
    const StarLine& line = lines_[position];
    if (lines_[first].params() == line.params()) return false;
    const auto isEqual = [&](Index other) {
      return at(other).x() == line.x() && at(other).params() == line.params();
    };
    const std::uint64_t hash = line.hash ^ hashOfText(line.params());
    return others_.findOrEnter(hash, toIndex(position), isEqual) == toIndex(position);
  }

 private:
  /// The tables count from 1.
  static Index toIndex(std::size_t position) { return static_cast<Index>(position) + 1; }
  static std::size_t toPosition(Index index) { return static_cast<std::size_t>(index - 1); }
  const StarLine& at(Index index) const { return lines_[toPosition(index)]; }

  const std::vector<StarLine>& lines_;
  HashedIndices points_;
  /// Lines that differ from the first one of their point in their parameters: few as a rule.
  HashedIndices others_;
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

void removeDuplicates(std::vector<StarLine>& lines) {
  LineTable table(lines);
  std::vector<bool> isKept(lines.size());
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (i + lookahead < lines.size()) table.prefetchPoint(i + lookahead);
    const std::size_t first = table.enterPoint(i);
    lines[i].isFirstOfPoint = first == i;
    isKept[i] = first == i || table.enterParams(i, first);
  }
  std::size_t kept = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!isKept[i]) continue;
    if (kept != i) lines[kept] = std::move(lines[i]);
    ++kept;
  }
  lines.resize(kept);
}

}  // namespace starsift
