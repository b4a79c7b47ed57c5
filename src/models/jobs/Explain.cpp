#include "models/jobs/Explain.h"

#include <algorithm>
#include <utility>

#include "files/FileNames.h"
#include "files/SolReader.h"
#include "models/jobs/BaseFiles.h"
#include "models/text/ModelError.h"
#include "models/text/NumberText.h"
#include "models/text/Words.h"
#include "text/InputText.h"

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
  TextCursor source(text);
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

SolutionReport explainRecords(const Problem& problem, const std::string& path, bool hasConstant) {
  SolutionReport report;
  report.path = path;
  std::size_t malformed = 0;
  const PointCheck check(problem);
  for (StoredRecord& stored :
       readRecords(path, problem.model.columnCount(), hasConstant, malformed)) {
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
std::string problemPath(const std::vector<std::string>& files) {
  const auto model = std::find_if(files.begin(), files.end(), isModelPath);
  return model != files.end() ? *model : fileNames(files.front()).optFile;
}

}  // namespace

Problem loadProblem(const std::string& path, const ImportOptions& options) {
  if (isProblemPath(path)) return readBaseProblem(path);
  return problemOf(loadModel(path, options.format, options.read).model);
}

std::vector<StoredRecord> readRecords(const std::string& path, std::size_t columns,
                                      bool hasConstant, std::size_t& malformed) {
  const std::optional<InputText> text = readFileText(path);
  if (!text) throw ModelError(0, path + ": there is no such file");
  std::vector<StoredRecord> records;
  TextCursor source(text->view());
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
    throw error.withPath(path);
  }
  return records;
}

JobReport explain(const std::vector<std::string>& files, const ImportOptions& options) {
  JobReport report;
  report.modelPath = problemPath(files);
  report.problem = loadProblem(report.modelPath, options);
  report.remarks = report.problem.model.remarks;
  const bool isProblem = isProblemPath(report.modelPath);
  const bool hasConstant = isProblem && hasConstantColumn(report.modelPath);
  const SolvedAs solved = isProblem ? SolvedAs::exported : SolvedAs::model;
  for (const std::string& file : files) {
    if (file == report.modelPath) continue;
    const std::string text(readModelText(file).view().substr(0, 4096));
    if (holdsRecords(text))
      report.solutions.push_back(explainRecords(report.problem, file, hasConstant));
    else
      report.solutions.push_back(
          std::move(readSolutions(report.problem, {file}, solved, options).front()));
  }
  return report;
}

}  // namespace starsift
