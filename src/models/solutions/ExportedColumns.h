// The way back from the model that a problem was exported as: what a solver says of its columns is
// turned into a point of the problem.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "models/read/ModelReader.h"
#include "models/record/Problem.h"
#include "models/solutions/PointReader.h"

namespace starsift {

/// The columns of plainModel(problem), those of the problem first. The columns of moduli and
/// deviations follow from the others, so that their values are left aside, whatever they are.
class ExportedColumns {
 public:
  /// `format`: of the file that was exported, if names that differ between the formats are to be
  /// read as that one's.
  ExportedColumns(const Problem& problem, std::optional<ModelFormat> format);

  /// As readPoint(), but the point is one of the problem; what was changed is counted in the units
  /// of the file, which are steps for variables with decimal places.
  ReadPoint read(const SolverFormat& format, const WrittenPoint& point,
                 const RoundingOptions& options) const;

 private:
  /// The index of the column in the exported model; nothing for an unknown one.
  std::optional<std::uint32_t> find(const SolverFormat& format, const WrittenValue& value) const;

  /// Names of columns and rows, and senses, of the exported model; without entries.
  Model plain_;
  /// The columns of the problem in it; without rows.
  Model columns_;
  /// True unless it went out in another format.
  bool mayBeLp_;
  /// What one unit of these is worth.
  std::vector<QQ> steps_;
  /// All names as they are written, by format.
  std::vector<NameTable> names_;
};

}  // namespace starsift
