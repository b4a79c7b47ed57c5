// The job of explaining records, and how they are read.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "models/jobs/Import.h"
#include "models/jobs/Reports.h"

namespace starsift {

/// A record of a .sol file.
struct StoredRecord {
  std::vector<QQ> x;
  /// The text of its parameters.
  std::string origin;
};

/// The records of a file; malformed ones are skipped, and counted in `malformed`. ModelError for
/// one without `columns` finite components; with `hasConstant` one more that is 1.
std::vector<StoredRecord> readRecords(const ModelText& text, std::size_t columns, bool hasConstant,
                                      std::size_t& malformed);

/// The problem of a .opt file, with the names beside it, or of a model.
Problem loadProblem(const std::string& path, const ImportOptions& options);

/// Checks the files of records and of solvers among `files`; "-" is standard input. The problem is
/// that of a model or .opt file among them, of "-" if a format is given, or else of the .opt file
/// beside the first file.
JobReport explain(const std::vector<std::string>& files, const ImportOptions& options);

}  // namespace starsift
