// The jobs that look at records: explaining them, and handing them to solvers.
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

/// The records of the file at `path`; malformed ones are skipped, and counted in `malformed`.
/// ModelError for one without `columns` finite components; with `hasConstant` one more that is 1.
std::vector<StoredRecord> readRecords(const std::string& path, std::size_t columns,
                                      bool hasConstant, std::size_t& malformed);

/// The problem of a .opt file, with the names beside it, or of a model.
Problem loadProblem(const std::string& path, const ImportOptions& options);

/// Checks the files of records and of solvers among `files`. The problem is that of a model or .opt
/// file among them, or of the .opt file beside the first file of records.
JobReport explain(const std::vector<std::string>& files, const ImportOptions& options);

/// The records of `solPath` in the form of MIPLIB: "=obj=" and the value of the objective, then
/// names and values, exact decimals or fractions. `record` counts from 1; 0: all of them.
/// ModelError if there is no such record, or if the names beside the file belong to another model
/// than the one at `modelPath`.
std::string solutionText(const std::string& modelPath, const std::string& solPath,
                         std::size_t record, const ImportOptions& options);

}  // namespace starsift
