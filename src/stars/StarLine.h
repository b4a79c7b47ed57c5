// A right star as the line that stands for it in a solution file, without its vector.
#pragma once

#include <cstdint>
#include <string_view>

#include "numbers/QQ.h"

namespace starsift {

/// One line in canonical form, without its line feed, in two pieces: equal points have equal texts.
/// About a hundred bytes beside the texts, which belong to somebody else and must outlive the line.
struct StarLine {
  std::string_view x() const { return {xText, xSize}; }
  /// Everything behind x.
  std::string_view rest() const { return {restText, restSize}; }
  std::string_view params() const { return {restText + paramsStart, paramsSize}; }
  /// May be empty.
  std::string_view version() const { return {restText + restSize - versionSize, versionSize}; }

  const char* xText = nullptr;
  const char* restText = nullptr;
  std::uint32_t xSize = 0;
  std::uint32_t restSize = 0;
  std::uint32_t paramsStart = 0;
  std::uint32_t paramsSize = 0;
  /// The version ends the line.
  std::uint32_t versionSize = 0;
  /// Position of the version among those of all lines: higher is a higher version.
  std::uint32_t versionRank = 0;
  /// Seconds as unsigned, so that an unknown time, -1, comes last.
  std::uint64_t time = 0;
  /// Of the text of x.
  std::uint64_t hash = 0;
  QQ targetNorm;
  QQ slackNorm;
  /// A component has more than six characters, so that a report in long double may round it.
  bool hasLongNumbers = false;
  /// No line before it has the same x; see removeDuplicates().
  bool isFirstOfPoint = false;
};

/// Has the processor load the texts of a line, or their first parts.
void prefetch(const StarLine& line);

/// Hash of a text for the search for equal ones.
std::uint64_t hashOfText(std::string_view text);

}  // namespace starsift
