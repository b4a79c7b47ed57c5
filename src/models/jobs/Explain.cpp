#include "models/jobs/Explain.h"

#include <algorithm>
#include <utility>

#include "files/FileNames.h"
#include "files/SolReader.h"
#include "models/jobs/BaseFiles.h"
#include "models/text/ModelError.h"
#include "models/text/NumberText.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

bool isProblemPath(const std::string& path) {
  return path.ends_with(".opt");
}

bool isModelPath(const std::string& path) {
  return isProblemPath(path) || formatOfPath(path).has_value();
}

/// True if the text begins as a file of records does: with a vector or a comment.
bool holdsRecords(std::string_view text) {
  TextCursor source(text.substr(0, 4096));
  skipWithComments(source);
  return source.peek() == '[';
}

std::vector<QQ> pointOf(const Star<QQ>& star, std::size_t columns, bool hasConstant) {
  std::vector<QQ> x(star.begin(), star.end());
  if (x.size() != columns + (hasConstant ? 1 : 0))
    throw ModelError(0, "a record has " + counted(x.size(), "component") + ", the problem " +
                            counted(columns, "variable"));
  if (std::any_of(x.begin(), x.end(), [](const QQ& value) { return value.isInf(); }))
    throw ModelError(0, "a record has an infinite component");
  if (hasConstant) {
    if (x.back() != QQ::one())
      throw ModelError(0, "the variable of the constant is not 1 in a record");
    x.pop_back();
  }
  return x;
}

SolutionReport explainRecords(const Problem& problem, const ModelText& text, bool hasConstant) {
  SolutionReport report;
  report.path = text.path;
  std::size_t malformed = 0;
  const PointCheck check(problem);
  for (StoredRecord& stored :
       readRecords(text, problem.model.columnCount(), hasConstant, malformed)) {
    RecordReport& record = report.records.emplace_back();
    record.number = report.records.size();
    record.status = std::move(stored.origin);
    record.point.x = std::move(stored.x);
    record.check = check.check(record.point.x);
  }
  if (malformed > 0)
    report.remarks.push_back(
        {0, "malformed records, which are skipped: " + std::to_string(malformed)});
  return report;
}

/// The path of the problem among the files, or that beside the first of them.
std::string problemPath(const std::vector<std::string>& files, bool isFormatGiven) {
  const auto model = std::find_if(files.begin(), files.end(), isModelPath);
  if (model != files.end()) return *model;
  if (isFormatGiven && std::find(files.begin(), files.end(), "-") != files.end()) return "-";
  if (files.front() == "-")
    throw ModelError(0,
                     "no problem lies beside standard input, so MODEL or BASE.opt is missing "
                     "(--format says that standard input is MODEL)");
  return fileNames(files.front()).optFile;
}

}  // namespace

Problem loadProblem(const std::string& path, const ImportOptions& options) {
  if (isProblemPath(path)) return readBaseProblem(path);
  return problemOf(loadModel(path, options.format, options.read).model);
}

std::vector<StoredRecord> readRecords(const ModelText& text, std::size_t columns, bool hasConstant,
                                      std::size_t& malformed) {
  std::vector<StoredRecord> records;
  TextCursor source(text.view());
  try {
    for (skipWithComments(source); !source.atEnd(); skipWithComments(source)) {
      const std::size_t before = source.rest().size();
      Star<QQ> star;
      readStar(star, source);
      if (source.rest().size() == before) {
        std::string_view rest = source.rest();
        takeLine(rest);
        source.advance(before - rest.size());
      }
      if (star.dimension() == 0)
        ++malformed;
      else
        records.push_back({pointOf(star, columns, hasConstant), star.paramsText});
    }
  } catch (const ModelError& error) {
    throw error.withPath(text.path);
  }
  return records;
}

JobReport explain(const std::vector<std::string>& files, const ImportOptions& options) {
  JobReport report;
  report.modelPath = problemPath(files, options.format.has_value());
  report.problem = loadProblem(report.modelPath, options);
  report.remarks = report.problem.model.remarks;
  const bool isProblem = isProblemPath(report.modelPath);
  const bool hasConstant = isProblem && hasConstantColumn(report.modelPath);
  const SolvedAs solved = isProblem ? SolvedAs::exported : SolvedAs::model;
  for (const std::string& file : files) {
    if (file == report.modelPath) continue;
    const ModelText text = readNamedText(file);
    report.solutions.push_back(holdsRecords(text.view())
                                   ? explainRecords(report.problem, text, hasConstant)
                                   : readSolutionText(report.problem, text, solved, options));
  }
  return report;
}

}  // namespace starsift
