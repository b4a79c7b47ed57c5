#include "models/jobs/ReportJson.h"

#include <array>
#include <string_view>

#include "models/text/JsonText.h"
#include "models/text/NumberText.h"

namespace starsift {

namespace {

class ReportJson {
 public:
  explicit ReportJson(const JobReport& report, bool showsRows)
      : report_(report), model_(report.problem.model), showsRows_(showsRows) {}

  std::string write();

 private:
  void addRemarks(const std::vector<ModelRemark>& remarks);
  void addWritten();
  void addSolution(const SolutionReport& solution);
  void addRecord(const RecordReport& record);
  void addChanges(std::string_view key, const ValueChanges& changes);
  void addViolations(const std::vector<Violation>& violations);
  /// The next two only if there are some.
  void addNearMisses(const PointReport& check);
  void addFractions(const ReadPoint& point);
  void addRows(const PointReport& check);

  const JobReport& report_;
  const Model& model_;
  bool showsRows_;
  JsonText json_;
};

void ReportJson::addRemarks(const std::vector<ModelRemark>& remarks) {
  json_.key("remarks").beginArray();
  for (const ModelRemark& remark : remarks) {
    json_.beginObject();
    if (remark.line > 0) json_.key("line").value(remark.line);
    json_.key("text").value(remark.text).endObject();
  }
  json_.endArray();
}

void ReportJson::addWritten() {
  json_.key("written").beginArray();
  for (const WrittenReport& written : report_.written)
    json_.beginObject()
        .key("file")
        .value(written.path)
        .key("content")
        .value(written.content)
        .endObject();
  json_.endArray();
}

void ReportJson::addChanges(std::string_view key, const ValueChanges& changes) {
  json_.key(key).beginObject().key("count").value(changes.count);
  if (changes.count > 0) {
    json_.key("largest").value(numberText(changes.largest));
    json_.key("column").value(model_.columnNames[changes.column]);
  }
  json_.endObject();
}

void ReportJson::addViolations(const std::vector<Violation>& violations) {
  constexpr std::array<std::string_view, 4> kinds{"row", "lower bound", "upper bound", "step"};
  json_.key("violations").beginArray();
  for (const Violation& violation : violations) {
    const bool isRow = violation.kind == ViolationKind::row;
    json_.beginObject().key("kind").value(kinds[static_cast<std::size_t>(violation.kind)]);
    json_.key("name").value((isRow ? model_.rowNames : model_.columnNames)[violation.index]);
    json_.key("amount").value(numberText(violation.amount)).endObject();
  }
  json_.endArray();
}

void ReportJson::addNearMisses(const PointReport& check) {
  if (check.nearlyMet == 0) return;
  json_.key("withinToleranceOnly").beginObject().key("equations").value(check.nearlyMet);
  json_.key("largest").value(numberText(check.largestNearMiss)).endObject();
}

void ReportJson::addFractions(const ReadPoint& point) {
  if (point.fractional.empty()) return;
  json_.key("fractionsKept").beginObject().key("count").value(point.fractional.size());
  json_.key("column").value(model_.columnNames[point.fractional.front()]).endObject();
}

void ReportJson::addRows(const PointReport& check) {
  json_.key("rows").beginObject();
  for (std::size_t i = 0; i < check.activities.size(); ++i)
    json_.key(model_.rowNames[i]).value(numberText(check.activities[i]));
  json_.endObject();
}

void ReportJson::addRecord(const RecordReport& record) {
  json_.beginObject().key("number").value(record.number);
  json_.key("status").value(record.status);
  json_.key("right").value(record.check.isRight());
  if (!record.repair.empty()) json_.key("repair").value(record.repair);
  json_.key("integers").value(record.point.integerCount);
  addChanges("rounded", record.point.rounded);
  addChanges("snapped", record.point.snapped);
  addFractions(record.point);
  addViolations(record.check.violations);
  addNearMisses(record.check);
  json_.key("targets").beginArray();
  for (const QQ& value : record.check.targetValues)
    json_.value(numberText(record.check.targetValues.size() == 1 ? value + model_.objective.constant
                                                                 : value));
  json_.endArray();
  if (showsRows_) addRows(record.check);
  json_.endObject();
}

void ReportJson::addSolution(const SolutionReport& solution) {
  json_.beginObject().key("file").value(solution.path);
  json_.key("solver").value(solution.solver);
  if (!solution.noSolution.empty()) json_.key("noSolution").value(solution.noSolution);
  addRemarks(solution.remarks);
  json_.key("records").beginArray();
  for (const RecordReport& record : solution.records) addRecord(record);
  json_.endArray().endObject();
}

std::string ReportJson::write() {
  json_.beginObject().key("model").value(report_.modelPath);
  addRemarks(report_.remarks);
  addWritten();
  if (!report_.solPath.empty()) json_.key("addedTo").value(report_.solPath);
  json_.key("solutions").beginArray();
  for (const SolutionReport& solution : report_.solutions) addSolution(solution);
  json_.endArray().endObject();
  return json_.text() + '\n';
}

}  // namespace

std::string reportJson(const JobReport& report, bool showsRows) {
  return ReportJson(report, showsRows).write();
}

}  // namespace starsift
