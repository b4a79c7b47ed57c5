#include "models/jobs/Import.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "files/FileNames.h"
#include "models/jobs/BaseFiles.h"
#include "models/jobs/Repair.h"
#include "models/solutions/ExportedColumns.h"
#include "models/solutions/SolverFile.h"
#include "models/text/ModelError.h"
#include "models/text/NumberText.h"
#include "models/text/Sha256.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

using PointSource = std::function<ReadPoint(const SolverFormat&, const WrittenPoint&)>;

PointSource pointSource(const Problem& problem, SolvedAs solved, const ImportOptions& options) {
  if (solved == SolvedAs::model)
    return [&](const SolverFormat& format, const WrittenPoint& point) {
      return readPoint(problem.model, format, point, options.rounding);
    };
  return [columns = ExportedColumns(problem, options.format), &options](const SolverFormat& format,
                                                                        const WrittenPoint& point) {
    return columns.read(format, point, options.rounding);
  };
}

SolutionReport readSolution(const PointCheck& check, const ModelText& text,
                            const PointSource& pointOf) {
  try {
    const SolverFile file = readSolverFile(text.view());
    SolutionReport report{
        text.path, std::string(file.format.name), file.noSolution, file.remarks, {}};
    for (const WrittenPoint& point : file.points) {
      RecordReport& record = report.records.emplace_back();
      record.status = point.status;
      record.number = report.records.size();
      record.point = pointOf(file.format, point);
      if (record.point.isByIndex)
        report.remarks.push_back({point.line,
                                  "CBC made up the column names x0, x1, ..., so that columns are "
                                  "taken by index"});
      record.check = check.check(record.point.x);
    }
    return report;
  } catch (const ModelError& error) {
    throw error.withPath(text.path);
  }
}

std::string megabytes(std::uint64_t bytes) {
  return shortText(QQ(static_cast<long>(bytes)) / QQ(1'000'000)) + " MB";
}

/// What a point has as a variable of BASE.opt and as its target values.
std::string recordOf(const Problem& problem, const SolutionReport& solution,
                     const RecordReport& record, bool addConstant) {
  std::vector<QQ> x = record.point.x;
  std::vector<QQ> targetValues = record.check.targetValues;
  if (addConstant) {
    x.emplace_back(1);
    for (QQ& value : targetValues) value += problem.model.objective.constant;
  }
  return recordText(problem, x, targetValues, solution.solver + ' ' + solution.path);
}

std::vector<std::string> recordsOf(const JobReport& report, bool hasConstant) {
  std::vector<std::string> records;
  for (const SolutionReport& solution : report.solutions)
    for (const RecordReport& record : solution.records)
      records.push_back(recordOf(report.problem, solution, record, hasConstant));
  return records;
}

/// The linear program that remains of such a problem isn't the whole of it.
void requireRepairable(const Problem& problem) {
  const auto isPositive = [](const QQ& value) { return value > QQ::zero(); };
  if (!problem.moduli.empty() ||
      std::any_of(problem.decimals.begin(), problem.decimals.end(), isPositive))
    throw ModelError(0, "--repair is not for problems with moduli or decimal places");
}

void addWrittenRemarks(const ImportOptions& options, JobReport& report) {
  const Model& model = report.problem.model;
  std::size_t continuous = 0;
  for (const ColumnKind kind : model.kinds)
    if (kind == ColumnKind::continuous) ++continuous;
  if (continuous > 0)
    report.remarks.push_back(
        {0, counted(continuous, "continuous column") + " with " +
                counted(static_cast<std::size_t>(options.opt.decimals), "decimal place") +
                ": starsift checks any value, starseek tries multiples only "
                "(--decimals)"});
  if (!model.objective.constant.isZero() && !options.opt.addConstant)
    report.remarks.push_back({0, "the constant " + numberText(model.objective.constant) +
                                     " of the objective stands in the names file only "
                                     "(--constant adds a variable for it)"});
}

}  // namespace

LoadedModel loadModel(const std::string& path, std::optional<ModelFormat> format,
                      const ReadOptions& options) {
  if (!format) format = formatOfPath(path);
  if (!format)
    throw ModelError(0, path +
                            ": the ending is none of .mps, .lp and .opb, also with .gz "
                            "(--format says what it is)");
  const ModelText text = readNamedText(path);
  return {readModel(text, *format, options), sha256(text.view())};
}

ModelText readNamedText(const std::string& path) {
  try {
    return readModelText(path);
  } catch (const ModelError& error) {
    throw error.withPath(path);
  }
}

std::vector<SolutionReport> readSolutions(const Problem& problem,
                                          const std::vector<std::string>& paths, SolvedAs solved,
                                          const ImportOptions& options) {
  const PointCheck check(problem);
  const PointSource pointOf = pointSource(problem, solved, options);
  std::vector<SolutionReport> reports;
  reports.reserve(paths.size());
  for (const std::string& path : paths)
    reports.push_back(readSolution(check, readNamedText(path), pointOf));
  return reports;
}

SolutionReport readSolutionText(const Problem& problem, const ModelText& text, SolvedAs solved,
                                const ImportOptions& options) {
  return readSolution(PointCheck(problem), text, pointSource(problem, solved, options));
}

JobReport importModel(const std::string& modelPath, const std::vector<std::string>& solutionPaths,
                      const std::string& base, const ImportOptions& options) {
  const BasePaths paths(base);
  LoadedModel loaded = loadModel(modelPath, options.format, options.read);
  JobReport report;
  report.modelPath = modelPath;
  report.remarks = loaded.model.remarks;
  report.problem = problemOf(std::move(loaded.model));
  const Model& model = report.problem.model;
  report.solutions = readSolutions(report.problem, solutionPaths, SolvedAs::model, options);
  if (options.repair) repairRecords(report.problem, report.solutions);
  if (!options.force) requireOwnFiles(paths, loaded.digest);
  const OptRows rows = optRows(model);
  const std::uint64_t size = estimatedOptSize(model);
  if (size > options.maxSize)
    throw ModelError(0, paths.opt + " would have " + megabytes(size) + ", more than the " +
                            megabytes(options.maxSize) + " of --max-size");
  const std::vector<std::string> records = recordsOf(report, options.opt.addConstant);
  NamesFile names = namesOf(model);
  names.source = modelPath;
  names.sourceDigest = loaded.digest;
  names.hasConstantColumn = options.opt.addConstant;
  addWrittenRemarks(options, report);
  writeBaseFiles(paths, model, rows, options.opt, std::move(names), records);
  report.written.push_back({paths.opt, sizeText(model, rows, options.opt)});
  if (!records.empty()) report.solPath = paths.sol;
  return report;
}

JobReport importSolutions(const std::string& optPath, const std::vector<std::string>& solutionPaths,
                          const ImportOptions& options) {
  JobReport report;
  report.modelPath = optPath;
  report.problem = readBaseProblem(optPath);
  if (options.repair) requireRepairable(report.problem);
  report.solutions = readSolutions(report.problem, solutionPaths, SolvedAs::exported, options);
  if (options.repair) repairRecords(report.problem, report.solutions);
  const std::vector<std::string> records = recordsOf(report, hasConstantColumn(optPath));
  if (records.empty()) return report;
  report.solPath = fileNames(optPath).solFile;
  addRecords(report.solPath, records);
  return report;
}

}  // namespace starsift
