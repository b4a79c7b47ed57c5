#include "models/jobs/SolutionText.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "files/FileNames.h"
#include "models/jobs/BaseFiles.h"
#include "models/jobs/Explain.h"
#include "models/text/JsonText.h"
#include "models/text/ModelError.h"
#include "models/text/NumberText.h"
#include "models/text/Words.h"
#include "models/write/PlainModel.h"

namespace starsift {

namespace {

QQ objectiveValue(const Objective& objective, const std::vector<QQ>& x) {
  QQ value = objective.constant;
  for (std::size_t k = 0; k < objective.columns.size(); ++k)
    value += objective.coefficients[k] * x[objective.columns[k]];
  return value;
}

/// What the records are points of.
struct RecordSource {
  Problem problem;
  /// What solvers have of it.
  Model model;
  /// True if records have one component more, for the constant of the objective.
  bool hasConstant;
};

RecordSource sourceOfModel(const std::string& modelPath, const std::string& solPath,
                           const ImportOptions& options) {
  if (solPath == "-")
    throw ModelError(0, "no names lie beside standard input: BASE.opt is needed in place of MODEL");
  LoadedModel loaded = loadModel(modelPath, options.format, options.read);
  const NamesFile names = readBaseNames(fileNames(solPath).optFile);
  if (names.sourceDigest != loaded.digest)
    throw ModelError(0, solPath + ": its problem was made of another model than " + modelPath);
  Model model = loaded.model;
  return {problemOf(std::move(loaded.model)), std::move(model), names.hasConstantColumn};
}

/// A problem whose columns differ from those of the model that it goes out as is refused.
RecordSource sourceOfProblem(const std::string& optPath) {
  Problem problem = readBaseProblem(optPath);
  Model model = plainModel(problem);
  const std::vector<QQ> steps = columnSteps(problem);
  if (model.columnCount() != problem.model.columnCount() ||
      std::any_of(steps.begin(), steps.end(), [](const QQ& step) { return step != QQ::one(); }))
    throw ModelError(0, optPath +
                            ": its moduli, goals or decimal places are columns of their own in a "
                            "model, so that its records are no solutions of that");
  return {std::move(problem), std::move(model), hasConstantColumn(optPath)};
}

std::string miplibText(const Model& model, const QQ& objective, const std::vector<QQ>& x) {
  std::string text = "=obj= " + numberText(objective) + '\n';
  for (std::size_t j = 0; j < x.size(); ++j)
    text += std::string(model.columnNames[j]) + ' ' + numberText(x[j]) + '\n';
  return text;
}

std::string cbcText(const Model& model, const QQ& objective, const std::vector<QQ>& x) {
  std::string text = "Stopped - objective value " + decimalText(objective) + '\n';
  for (std::size_t j = 0; j < x.size(); ++j)
    text += std::to_string(j) + ' ' + std::string(model.columnNames[j]) + ' ' + decimalText(x[j]) +
            " 0\n";
  return text;
}

}  // namespace

SolutionForm solutionFormOf(std::string_view name) {
  if (name == "miplib") return SolutionForm::miplib;
  if (name == "cbc") return SolutionForm::cbc;
  throw ModelError(0, inQuotes(name) + " is no value of --for");
}

HandedRecords recordsOf(const std::string& modelPath, const std::string& solPath,
                        std::size_t record, const ImportOptions& options) {
  RecordSource source = modelPath.ends_with(".opt") ? sourceOfProblem(modelPath)
                                                    : sourceOfModel(modelPath, solPath, options);
  std::size_t malformed = 0;
  std::vector<StoredRecord> records = readRecords(
      readNamedText(solPath), source.model.columnCount(), source.hasConstant, malformed);
  if (records.empty() || record > records.size())
    throw ModelError(0, solPath + ": it has " + counted(records.size(), "record"));
  HandedRecords handed{modelPath, {}, solPath, {}};
  const PointCheck check(source.problem);
  for (std::size_t r = 0; r < records.size(); ++r) {
    if (record != 0 && r + 1 != record) continue;
    handed.records.push_back({r + 1, check.check(records[r].x).isRight(),
                              objectiveValue(source.model.objective, records[r].x),
                              std::move(records[r].x)});
  }
  handed.model = std::move(source.model);
  return handed;
}

std::string solutionText(const HandedRecords& handed, SolutionForm form) {
  std::string text;
  for (const HandedRecord& record : handed.records)
    text += form == SolutionForm::cbc ? cbcText(handed.model, record.objective, record.x)
                                      : miplibText(handed.model, record.objective, record.x);
  return text;
}

std::string solutionJson(const HandedRecords& handed) {
  JsonText json;
  json.beginObject().key("model").value(handed.modelPath);
  json.key("solutions").value(handed.solPath).key("records").beginArray();
  for (const HandedRecord& record : handed.records) {
    json.beginObject().key("number").value(record.number);
    json.key("right").value(record.isRight);
    json.key("objective").value(numberText(record.objective)).key("values").beginObject();
    for (std::size_t j = 0; j < record.x.size(); ++j)
      json.key(handed.model.columnNames[j]).value(numberText(record.x[j]));
    json.endObject().endObject();
  }
  json.endArray().endObject();
  return json.text() + '\n';
}

}  // namespace starsift
