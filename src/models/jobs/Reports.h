// What the jobs of starport report, as data; ReportText.h and ReportJson.h have its texts.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "models/check/PointCheck.h"
#include "models/record/Problem.h"
#include "models/solutions/PointReader.h"

namespace starsift {

/// One point of a solution file and its check.
struct RecordReport {
  std::string status;
  /// 1 for the first point of the file.
  std::size_t number = 1;
  ReadPoint point;
  PointReport check;
  /// How the repair of the point ended, empty without one.
  std::string repair;
};

/// One solution file.
struct SolutionReport {
  bool isRight() const;

  std::string path;
  std::string solver;
  /// In the solver's words, if there is no solution in the file.
  std::string noSolution;
  std::vector<ModelRemark> remarks;
  std::vector<RecordReport> records;
};

/// A file that was written, and what it holds.
struct WrittenReport {
  std::string path;
  std::string content;
};

struct JobReport {
  /// True if no record is wrong.
  bool isRight() const;

  /// The model file, and the remarks on it.
  std::string modelPath;
  std::vector<ModelRemark> remarks;
  std::vector<WrittenReport> written;
  std::vector<SolutionReport> solutions;
  /// Where the records of the solutions were added, empty if they were only checked.
  std::string solPath;
  /// What the indices of the reports refer to.
  Problem problem;
};

}  // namespace starsift
