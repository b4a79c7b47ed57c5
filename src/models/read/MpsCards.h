// Lines of MPS files taken apart: the free form by white space, the fixed form by columns.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace starsift {

enum class MpsForm { free, fixed };

/// The sections with data lines.
enum class MpsSection {
  none,
  objectiveSense,
  objectiveName,
  rows,
  columns,
  rightSides,
  ranges,
  bounds
};

/// One data line. All texts point into the line.
struct MpsCard {
  /// The kind of a row or bound.
  std::string_view code;
  /// The name of a row, of a column, or of a set of right sides, ranges or bounds; empty if the
  /// line has none and goes on with the one before.
  std::string_view first;
  /// Rows and values; of a bound the column and its value, which may be empty.
  std::vector<std::pair<std::string_view, std::string_view>> pairs;
  /// "'INTORG'" or another word if the line is a marker, else empty.
  std::string_view marker;
};

/// True if the word names a row, or a column in the section of bounds.
using NameTest = std::function<bool(std::string_view)>;

/// Takes a data line of the section apart into `card`. In the free form a word that begins with
/// "$" where a name of a pair may stand opens a comment unless it is a name. False for a line of
/// comment only. ModelError at `line`.
bool readMpsCard(std::string_view text, MpsForm form, MpsSection section, const NameTest& isName,
                 std::size_t line, MpsCard& card);

}  // namespace starsift
