// The job of handing stored records to solvers.
#pragma once

#include <string>
#include <string_view>

#include "models/jobs/Import.h"

namespace starsift {

/// In which form a record is written.
enum class SolutionForm {
  /// "=obj=" and the value of the objective, then names and values; several records one after the
  /// other. Solvers that read it take the missing columns as 0.
  miplib,
  /// A heading, then places from 0, names, values and 0, as CBC writes its solutions and reads a
  /// start (-mipstart). It reads doubles only, so that fractions without a decimal are rounded.
  cbc,
};

/// The form of that name; ModelError if there is none.
SolutionForm solutionFormOf(std::string_view name);

/// The records of `solPath`, all columns in their order, exact decimals or fractions but for CBC.
/// `record` counts from 1; 0: all of them, which CBC can't read. ModelError if there is no such
/// record, or if the names beside the file belong to another model than the one at `modelPath`.
std::string solutionText(const std::string& modelPath, const std::string& solPath,
                         std::size_t record, SolutionForm form, const ImportOptions& options);

}  // namespace starsift
