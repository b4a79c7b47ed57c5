// The rows of an MPS file while it is read: kinds, right sides, ranges, and the objective among
// them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "models/record/Model.h"
#include "models/text/ModelNumber.h"

namespace starsift {

/// Until finish() the rows of the model are all lines of ROWS, those of kind N among them.
class MpsRows {
 public:
  MpsRows(Model& model, NumberReader& numbers) : model_(model), numbers_(numbers) {}

  /// ModelError for an unknown kind and a name that is there already.
  void append(std::string_view kind, std::string_view name, std::size_t line);
  /// Makes that row of kind N the objective; it may come later. ModelError for a second name.
  void setObjective(std::string_view name, std::size_t line);
  /// ModelError if the row has one already.
  void setRightSide(std::uint32_t row, std::string_view value, std::size_t line);
  void setRange(std::uint32_t row, std::string_view value, std::size_t line);

  /// Computes the bounds of the rows, moves the objective row out of them and removes all others
  /// of kind N, with remarks. The entries of the columns are complete.
  void finish();

 private:
  enum class Kind : std::uint8_t { free, equal, less, greater };

  struct Range {
    std::uint32_t row;
    QQ value;
  };

  std::optional<std::uint32_t> objectiveRow() const;
  void takeObjective(std::uint32_t row);
  void computeBounds();
  void applyRange(const Range& range);
  void removeFreeRows(std::optional<std::uint32_t> objective);

  Model& model_;
  NumberReader& numbers_;
  std::vector<Kind> kinds_;
  std::vector<std::size_t> freeRowLines_;
  std::vector<QQ> rightSides_;
  std::vector<bool> hasRightSide_;
  std::vector<bool> hasRange_;
  std::vector<Range> ranges_;
  std::string objectiveName_;
  std::size_t objectiveNameLine_ = 0;
  std::size_t objectiveSideLine_ = 0;
  bool isObjectiveNamed_ = false;
};

}  // namespace starsift
