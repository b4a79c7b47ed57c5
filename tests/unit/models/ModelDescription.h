// A model as readable lines, for comparison with what a test expects.
#pragma once

#include <string>

#include "models/record/Model.h"
#include "models/text/NumberText.h"

namespace starsift::test {

inline void appendTerm(std::string& text, const QQ& factor, std::string_view column) {
  const bool isFirst = text.empty();
  if (isFirst)
    text += factor.sign() ? "" : "-";
  else
    text += factor.sign() ? " + " : " - ";
  const QQ magnitude = abs(factor);
  if (magnitude != QQ(1)) text += numberText(magnitude) + ' ';
  text += column;
}

inline std::string objectiveText(const Model& model) {
  const Objective& objective = model.objective;
  if (!objective.exists) return "no objective\n";
  std::string terms;
  for (std::size_t k = 0; k < objective.columns.size(); ++k)
    appendTerm(terms, objective.coefficients[k], model.columnNames[objective.columns[k]]);
  if (!objective.constant.isZero() || terms.empty()) {
    const bool isNegative = !terms.empty() && !objective.constant.sign();
    if (!terms.empty()) terms += isNegative ? " - " : " + ";
    terms += numberText(isNegative ? -objective.constant : objective.constant);
  }
  const bool isMaximum = objective.sense == ObjectiveSense::maximise;
  return std::string(isMaximum ? "max " : "min ") + objective.name + ": " + terms + "\n";
}

inline std::string rowText(const Model& model, const RowView& view, std::size_t i) {
  std::string terms;
  for (std::size_t k = view.start[i]; k < view.start[i + 1]; ++k)
    appendTerm(terms, model.entryValues[view.entries[k]], model.columnNames[view.columns[k]]);
  if (terms.empty()) terms = "0";
  const std::string lower = numberText(model.rowLower[i]);
  const std::string upper = numberText(model.rowUpper[i]);
  switch (model.senses[i]) {
    case RowSense::equal:
      return terms + " = " + lower;
    case RowSense::less:
      return terms + " <= " + upper;
    case RowSense::greater:
      return terms + " >= " + lower;
    case RowSense::ranged:
      break;
  }
  return lower + " <= " + terms + " <= " + upper;
}

/// "continuous" isn't written; remarks come last, with the lines that they are about.
inline std::string modelText(const Model& model) {
  std::string text = model.name.empty() ? "" : "name " + model.name + "\n";
  text += objectiveText(model);
  const RowView view(model);
  for (std::size_t i = 0; i < model.rowCount(); ++i)
    text += std::string(model.rowNames[i]) + ": " + rowText(model, view, i) + "\n";
  for (std::size_t j = 0; j < model.columnCount(); ++j) {
    text += model.columnNames[j];
    if (model.kinds[j] == ColumnKind::integer) text += " integer";
    if (model.kinds[j] == ColumnKind::binary) text += " binary";
    text += " in [" + numberText(model.lower[j]) + ", " + numberText(model.upper[j]) + "]\n";
  }
  for (const ModelRemark& remark : model.remarks)
    text += "told " + std::to_string(remark.line) + ": " + remark.text + "\n";
  return text;
}

}  // namespace starsift::test
