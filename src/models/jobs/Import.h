// The job of bringing a model and solutions of it in: BASE.opt, BASE.names, records in BASE.sol.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "models/jobs/Reports.h"
#include "models/read/ModelReader.h"
#include "models/solutions/PointReader.h"
#include "models/write/OptWriter.h"

namespace starsift {

struct ImportOptions {
  /// Of the model, if its path doesn't say it.
  std::optional<ModelFormat> format;
  ReadOptions read;
  OptOptions opt;
  RoundingOptions rounding;
  /// Replaces files that aren't from this model.
  bool force = false;
  /// Repairs the points of solutions that are broken; see Repair.h.
  bool repair = false;
  /// Bytes that BASE.opt may have.
  std::uint64_t maxSize = 1'000'000'000;
};

/// A model as read and the digest of its unpacked text.
struct LoadedModel {
  Model model;
  std::string digest;
};

/// ModelError with its path if it can't be read as a linear model.
LoadedModel loadModel(const std::string& path, std::optional<ModelFormat> format,
                      const ReadOptions& options);

/// The text of the file at `path`; ModelError with its path if it can't be read.
ModelText readNamedText(const std::string& path);

/// Where the columns of solution files are those of a problem.
enum class SolvedAs {
  /// The model itself.
  model,
  /// What exportModel() makes of the problem.
  exported,
};

/// Reads and checks the solution files. ModelError with the path of one that can't be read.
std::vector<SolutionReport> readSolutions(const Problem& problem,
                                          const std::vector<std::string>& paths, SolvedAs solved,
                                          const ImportOptions& options);

/// Reads and checks the text of one solution file; the same errors.
SolutionReport readSolutionText(const Problem& problem, const ModelText& text, SolvedAs solved,
                                const ImportOptions& options);

/// Reads the model and the solutions, then writes the files of `base` (see NamesFile.h), all of
/// them or none. ModelError, and nothing is written, if one of the inputs is refused, if the files
/// of `base` belong to another model, and if BASE.opt would exceed its limit.
JobReport importModel(const std::string& modelPath, const std::vector<std::string>& solutionPaths,
                      const std::string& base, const ImportOptions& options);

/// Adds the points of solution files, which are about the exported model, to the records of the
/// problem. ModelError, and nothing is written, if one of the inputs is refused, and for --repair
/// of a problem with moduli or decimal places.
JobReport importSolutions(const std::string& optPath, const std::vector<std::string>& solutionPaths,
                          const ImportOptions& options);

}  // namespace starsift
