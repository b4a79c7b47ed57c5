#include "models/jobs/ReportText.h"

#include <ostream>
#include <string>

#include "models/text/NumberText.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

void writeRemarks(std::ostream& stream, const std::string& path,
                  const std::vector<ModelRemark>& remarks) {
  for (const ModelRemark& remark : remarks) {
    stream << path << ':';
    if (remark.line > 0) stream << remark.line << ':';
    stream << ' ' << remark.text << '\n';
  }
}

/// " (HiGHS, Optimal)", empty if nothing is known.
std::string sourceText(const SolutionReport& solution, const RecordReport& record) {
  const bool hasBoth = !solution.solver.empty() && !record.status.empty();
  const std::string text = solution.solver + (hasBoth ? ", " : "") + excerpt(record.status);
  return text.empty() ? "" : " (" + text + ")";
}

std::string changesText(const Model& model, const ValueChanges& changes) {
  return ", by at most " + shortText(changes.largest) + " (" +
         escaped(model.columnNames[changes.column]) + ")";
}

/// What was changed of the written values, each part followed by "; ".
std::string roundingText(const Model& model, const ReadPoint& point) {
  std::string text;
  if (point.rounded.count > 0)
    text += std::to_string(point.rounded.count) + " of " + counted(point.integerCount, "integer") +
            " rounded" + changesText(model, point.rounded) + "; ";
  if (point.snapped.count > 0)
    text += counted(point.snapped.count, "value") + " put on a bound" +
            changesText(model, point.snapped) + "; ";
  if (!point.fractional.empty())
    text += counted(point.fractional.size(), "integer column") + " with a fraction kept (" +
            escaped(model.columnNames[point.fractional.front()]) + "); ";
  if (point.unused > 0) text += counted(point.unused, "unused column") + " left out; ";
  return text;
}

/// Of the equations that hold within the tolerance only, one at least.
std::string nearMissesText(const PointReport& check) {
  return "within the tolerance only: " + counted(check.nearlyMet, "equation") + ", by at most " +
         shortText(check.largestNearMiss);
}

std::string verdictText(const Model& model, const PointReport& check) {
  if (check.isRight()) return check.nearlyMet > 0 ? "right, " + nearMissesText(check) : "right";
  const Violation& first = check.violations.front();
  std::string text = "broken: " + violationName(model, first) + " by " + shortText(first.amount);
  if (check.violations.size() > 1)
    text += " and " + std::to_string(check.violations.size() - 1) + " more";
  return text;
}

void writeRecordLine(std::ostream& stream, const JobReport& report, const SolutionReport& solution,
                     const RecordReport& record) {
  const Model& model = report.problem.model;
  const std::string count = solution.records.size() == 1
                                ? "1 record"
                                : "record " + std::to_string(record.number) + " of " +
                                      std::to_string(solution.records.size());
  if (!report.solPath.empty()) stream << report.solPath << ": ";
  stream << count << " of " << solution.path << sourceText(solution, record) << ": "
         << roundingText(model, record.point);
  if (!record.repair.empty()) stream << record.repair << "; ";
  stream << verdictText(model, record.check) << '\n';
}

void writeTargets(std::ostream& stream, const JobReport& report, const PointReport& check) {
  for (std::size_t t = 0; t < check.targetValues.size(); ++t) {
    const bool isOnly = check.targetValues.size() == 1;
    stream << "  "
           << (isOnly && !report.problem.model.objective.name.empty()
                   ? "objective " + escaped(report.problem.model.objective.name)
                   : "target " + std::to_string(t + 1))
           << ": "
           << numberText(isOnly ? check.targetValues[t] + report.problem.model.objective.constant
                                : check.targetValues[t])
           << '\n';
  }
}

void writeRecord(std::ostream& stream, const JobReport& report, const SolutionReport& solution,
                 const RecordReport& record, bool showsRows) {
  const Model& model = report.problem.model;
  const PointReport& check = record.check;
  stream << solution.path << ": record " << record.number << sourceText(solution, record) << ": "
         << (check.isRight() ? "right" : "wrong, " + counted(check.violations.size(), "violation"))
         << '\n';
  const std::string rounding = roundingText(model, record.point);
  if (!rounding.empty()) stream << "  " << rounding.substr(0, rounding.size() - 2) << '\n';
  for (const Violation& violation : check.violations)
    stream << "  " << violationName(model, violation) << " by " << numberText(violation.amount)
           << '\n';
  if (check.nearlyMet > 0) stream << "  " << nearMissesText(check) << '\n';
  writeTargets(stream, report, check);
  if (!showsRows) return;
  for (std::size_t i = 0; i < check.activities.size(); ++i)
    stream << "  row " << escaped(model.rowNames[i]) << ": " << numberText(check.activities[i])
           << '\n';
}

/// The solution files one after the other, each record by `writeOne(solution, record)`.
template <class WriteOne>
void writeSolutions(std::ostream& stream, const JobReport& report, const WriteOne& writeOne) {
  for (const SolutionReport& solution : report.solutions) {
    writeRemarks(stream, solution.path, solution.remarks);
    if (!solution.noSolution.empty())
      stream << solution.path << ": no solution (" << solution.solver << ": "
             << excerpt(solution.noSolution) << ")\n";
    for (const RecordReport& record : solution.records) writeOne(solution, record);
  }
}

}  // namespace

void writeReport(std::ostream& stream, const JobReport& report) {
  writeRemarks(stream, report.modelPath, report.remarks);
  for (const WrittenReport& written : report.written)
    stream << written.path << ": " << written.content << '\n';
  writeSolutions(stream, report, [&](const SolutionReport& solution, const RecordReport& record) {
    writeRecordLine(stream, report, solution, record);
  });
}

void writeExplanation(std::ostream& stream, const JobReport& report, bool showsRows) {
  writeRemarks(stream, report.modelPath, report.remarks);
  writeSolutions(stream, report, [&](const SolutionReport& solution, const RecordReport& record) {
    writeRecord(stream, report, solution, record, showsRows);
  });
}

}  // namespace starsift
