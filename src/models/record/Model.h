// The record of a linear model as its file has it: names, exact numbers, sparse rows.
//
//   minimise or maximise  objective x + constant
//   subject to            lower <= row x <= upper, for each row
//                         lower <= x <= upper, some columns integer
//
// Columns and rows have indices from 0 on, in the order of the file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "models/record/NameTable.h"
#include "models/record/NumberList.h"
#include "numbers/QQ.h"

namespace starsift {

enum class ColumnKind : std::uint8_t {
  continuous,
  integer,
  /// Declared as such: integer with bounds within 0..1.
  binary,
};

/// How the file wrote a row; its bounds are in rowLower and rowUpper.
enum class RowSense : std::uint8_t { equal, less, greater, ranged };

enum class ObjectiveSense : std::uint8_t { minimise, maximise };

/// What the user should know about the reading of a file.
struct ModelRemark {
  /// Counted from 1, 0 if the remark is about the file as a whole.
  std::size_t line;
  std::string text;
};

struct Objective {
  ObjectiveSense sense = ObjectiveSense::minimise;
  /// False if the file has none: any solution is as good as any other.
  bool exists = false;
  std::string name;
  QQ constant;
  /// The columns with a coefficient other than 0, ascending, and the coefficients.
  std::vector<std::uint32_t> columns;
  std::vector<QQ> coefficients;
};

struct Model {
  std::size_t columnCount() const { return columnNames.size(); }
  std::size_t rowCount() const { return rowNames.size(); }
  std::size_t entryCount() const { return entryRows.size(); }

  std::string name;
  Objective objective;

  NameTable columnNames;
  std::vector<ColumnKind> kinds;
  std::vector<QQ> lower;
  std::vector<QQ> upper;

  NameTable rowNames;
  std::vector<RowSense> senses;
  std::vector<QQ> rowLower;
  std::vector<QQ> rowUpper;

  /// The entries of column j other than 0 are entryRows[k] and entryValues[k] for
  /// columnStart[j] <= k < columnStart[j + 1], in the order of the file.
  std::vector<std::size_t> columnStart{0};
  std::vector<std::uint32_t> entryRows;
  NumberList entryValues;

  std::vector<ModelRemark> remarks;
  /// True for an .lp file, whose readers agree on the order of the columns.
  bool isFromLp = false;
};

/// The entries of a model by rows: those of row i are in the columns columns[k] at the index
/// entries[k] of Model::entryValues for start[i] <= k < start[i + 1], by ascending column.
struct RowView {
  explicit RowView(const Model& model);

  std::vector<std::size_t> start;
  std::vector<std::uint32_t> columns;
  std::vector<std::size_t> entries;
};

}  // namespace starsift
