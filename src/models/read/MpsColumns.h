// The columns of an MPS file while it is read: which bounds were set, and what holds without them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "models/read/ReadOptions.h"
#include "models/record/Model.h"
#include "models/text/ModelNumber.h"

namespace starsift {

/// Columns that a convention of the reader concerns, for one remark about all of them.
struct ColumnTally {
  void add(std::size_t line, std::uint32_t column) {
    if (count++ == 0) {
      firstLine = line;
      firstColumn = column;
    }
  }

  std::size_t count = 0;
  std::size_t firstLine = 0;
  std::uint32_t firstColumn = 0;
};

/// Sets the bounds of the columns of a model that is being read.
class MpsColumns {
 public:
  MpsColumns(Model& model, NumberReader& numbers, const ReadOptions& options)
      : model_(model), numbers_(numbers), options_(options) {}

  /// Appends a column from 0 on, integer if it stands between markers.
  void append(bool isBetweenMarkers);

  /// Applies one line of BOUNDS. ModelError for an unknown kind, a bad value, a bound that is set
  /// twice.
  void setBound(std::string_view code, std::uint32_t column, std::string_view value,
                std::size_t line);

  /// Applies what holds for bounds that weren't set, and adds the remarks. ModelError for a column
  /// without any value.
  void finish();

 private:
  /// Bits of flags_.
  enum Flag : std::uint8_t { lowerIsSet = 1, upperIsSet = 2, isMarked = 4 };

  QQ boundOf(std::string_view value, std::uint32_t column, std::size_t line);
  void setSides(std::uint32_t column, unsigned sides, std::size_t line);
  void applyDefaults(std::uint32_t column);
  void remark(const ColumnTally& tally, const std::string& text);

  Model& model_;
  NumberReader& numbers_;
  const ReadOptions& options_;
  std::vector<std::uint8_t> flags_;
  /// The line of the last bound of a column, 0 without one; empty while no column has any.
  std::vector<std::size_t> lines_;
  ColumnTally infinite_;
  ColumnTally belowZero_;
  ColumnTally unbounded_;
};

}  // namespace starsift
