// What a solver wrote, in any of the formats that are recognised by their content.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "models/record/Model.h"

namespace starsift {

/// The value of one column as it was written.
struct WrittenValue {
  /// The name of the column, or its number from 1 on.
  std::string column;
  std::string number;
  std::size_t line;
  /// The index from 0 on that stands beside the name, if the format has one.
  std::optional<std::uint32_t> index = std::nullopt;
};

struct ModelSize {
  std::size_t rows;
  std::size_t columns;
};

/// One point of a file.
struct WrittenPoint {
  /// In the words of the solver, empty if it says nothing.
  std::string status;
  std::vector<WrittenValue> values;
  /// The line at which the point begins.
  std::size_t line = 1;
  /// The size of the model that was solved, if the file says it.
  std::optional<ModelSize> size = std::nullopt;
};

/// What is known of a format.
struct SolverFormat {
  std::string_view name;
  /// Significant digits that the format writes; a number that needs more was rounded. 0: exact.
  std::size_t digits;
  /// Columns that are missing have the value 0.
  bool leavesZerosOut = false;
  /// The columns of the values are numbers.
  bool isByNumber = false;
  /// Columns that the model doesn't use may have values.
  bool namesUnusedColumns = false;
};

struct SolverFile {
  SolverFormat format{};
  std::vector<WrittenPoint> points;
  /// Set if the file says that there is no solution, in its words; then there are no points.
  std::string noSolution;
  std::vector<ModelRemark> remarks;
};

/// The index from 0 on of a column that is written as its number from 1 on; nothing if that isn't
/// one of `count` columns.
std::optional<std::uint32_t> indexOfNumber(std::string_view number, std::size_t count);

/// ModelError if the format isn't recognised, or the file is cut or malformed.
SolverFile readSolverFile(std::string_view text);

}  // namespace starsift
