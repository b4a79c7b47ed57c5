#include "models/jobs/SolutionText.h"

#include <utility>
#include <vector>

#include "files/FileNames.h"
#include "models/jobs/BaseFiles.h"
#include "models/jobs/Explain.h"
#include "models/text/ModelError.h"
#include "models/text/NumberText.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

QQ objectiveValue(const Model& model, const PointReport& report) {
  QQ value = model.objective.constant;
  if (!report.targetValues.empty()) value += report.targetValues.front();
  return value;
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

std::string solutionText(const std::string& modelPath, const std::string& solPath,
                         std::size_t record, SolutionForm form, const ImportOptions& options) {
  if (form == SolutionForm::cbc && record == 0)
    throw ModelError(0, "CBC starts from one record, not from all");
  LoadedModel loaded = loadModel(modelPath, options.format, options.read);
  const NamesFile names = readBaseNames(fileNames(solPath).optFile);
  if (names.sourceDigest != loaded.digest)
    throw ModelError(0, solPath + ": its problem was made of another model than " + modelPath);
  const Problem problem = problemOf(std::move(loaded.model));
  const Model& model = problem.model;
  std::size_t malformed = 0;
  const std::vector<StoredRecord> records =
      readRecords(solPath, model.columnCount(), names.hasConstantColumn, malformed);
  if (records.empty() || record > records.size())
    throw ModelError(0, solPath + ": it has " + counted(records.size(), "record"));
  const PointCheck check(problem);
  std::string text;
  for (std::size_t r = 0; r < records.size(); ++r) {
    if (record != 0 && r + 1 != record) continue;
    const std::vector<QQ>& x = records[r].x;
    const QQ objective = objectiveValue(model, check.check(x));
    text +=
        form == SolutionForm::cbc ? cbcText(model, objective, x) : miplibText(model, objective, x);
  }
  return text;
}

}  // namespace starsift
