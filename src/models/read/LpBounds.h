// The bounds and kinds of columns of an LP file while it is read.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "models/read/LpLexer.h"
#include "models/read/ReadOptions.h"
#include "models/record/Model.h"

namespace starsift {

/// Columns must exist before they are named here. The last bound of a column wins.
class LpBounds {
 public:
  LpBounds(Model& model, const ReadOptions& options) : model_(model), options_(options) {}

  void setFree(std::uint32_t column, std::size_t line);
  /// column `relation` value: LpTokenKind::less, greater or equal. A value of large magnitude
  /// counts as infinite.
  void setBound(std::uint32_t column, LpTokenKind relation, QQ value, std::size_t line);
  void setKind(std::uint32_t column, ColumnKind kind, std::size_t line);

  /// Restricts binary columns and adds remarks. ModelError for a column without any value, and for
  /// a binary one with bounds beyond 0..1.
  void finish();

 private:
  enum Flag : std::uint8_t { lowerIsSet = 1, upperIsSet = 2 };

  void touch(std::uint32_t column, unsigned flags, std::size_t line);
  void restrictBinary(std::uint32_t column);

  Model& model_;
  const ReadOptions& options_;
  std::vector<std::uint8_t> flags_;
  /// The line of the last bound or kind of each column.
  std::vector<std::size_t> lines_;
  std::size_t infiniteBounds_ = 0;
  std::size_t firstInfinite_ = 0;
};

}  // namespace starsift
