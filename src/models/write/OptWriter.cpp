#include "models/write/OptWriter.h"

#include <string>

#include "models/text/ModelError.h"
#include "models/text/NumberText.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

/// Bytes of an entry other than 0, and of the bounds and decimals of a column.
constexpr std::uint64_t entryBytes = 6;
constexpr std::uint64_t columnBytes = 12;

/// The columns of the text: those of the model, and perhaps the constant.
class OptText {
 public:
  OptText(const Model& model, const OptOptions& options, const TextSink& sink)
      : model_(model), options_(options), sink_(sink), view_(model) {}

  void write(const OptRows& rows);

 private:
  bool hasTarget() const {
    return !model_.objective.columns.empty() ||
           (options_.addConstant && !model_.objective.constant.isZero());
  }
  void writeTarget();
  void writeRows(const std::vector<std::uint32_t>& rows);
  /// One number per row or column.
  template <class Number>
  void writeVector(std::size_t count, const Number& number, std::string_view constantNumber);
  void appendRow(std::uint32_t row);

  const Model& model_;
  const OptOptions& options_;
  const TextSink& sink_;
  RowView view_;
  std::string line_;
};

/// "0 " for the columns from `next` up to `column`, which is then the next one.
void appendZeros(std::string& line, std::size_t& next, std::size_t column) {
  for (; next < column; ++next) line += "0 ";
}

void OptText::writeTarget() {
  if (!hasTarget()) return sink_("[ ]  // nothing to optimise\n[ ]\n");
  const Objective& objective = model_.objective;
  sink_(objective.sense == ObjectiveSense::maximise ? "[ inf ]  // maximise\n"
                                                    : "[ -inf ]  // minimise\n");
  line_ = "[ [ ";
  std::size_t next = 0;
  for (std::size_t k = 0; k < objective.columns.size(); ++k) {
    appendZeros(line_, next, objective.columns[k]);
    appendNumber(line_, objective.coefficients[k]);
    line_ += ' ';
    ++next;
  }
  appendZeros(line_, next, model_.columnCount());
  if (options_.addConstant) {
    appendNumber(line_, objective.constant);
    line_ += ' ';
  }
  sink_(line_ += "] ]\n");
}

void OptText::appendRow(std::uint32_t row) {
  std::size_t next = 0;
  line_ += "[ ";
  for (std::size_t k = view_.start[row]; k < view_.start[row + 1]; ++k) {
    appendZeros(line_, next, view_.columns[k]);
    appendNumber(line_, model_.entryValues[view_.entries[k]]);
    line_ += ' ';
    ++next;
  }
  appendZeros(line_, next, model_.columnCount());
  line_ += options_.addConstant ? "0 ]" : "]";
}

void OptText::writeRows(const std::vector<std::uint32_t>& rows) {
  line_ = "[ ";
  for (const std::uint32_t row : rows) {
    appendRow(row);
    line_ += '\n';
    sink_(line_);
    line_.clear();
  }
  sink_(line_ += "]\n");
}

template <class Number>
void OptText::writeVector(std::size_t count, const Number& number,
                          std::string_view constantNumber) {
  line_ = "[ ";
  for (std::size_t i = 0; i < count; ++i) {
    appendNumber(line_, number(i));
    line_ += ' ';
  }
  if (options_.addConstant) line_ += constantNumber;
  sink_(line_ += "]\n");
}

void OptText::write(const OptRows& rows) {
  sink_("// " + sizeText(model_, rows, options_) + "; the names are in the .names file\n");
  writeTarget();
  writeRows(rows.equations);
  writeVector(
      rows.equations.size(), [&](std::size_t i) { return model_.rowLower[rows.equations[i]]; }, "");
  sink_("[ ]\n");
  writeRows(rows.inequations);
  writeVector(
      rows.inequations.size(), [&](std::size_t i) { return model_.rowLower[rows.inequations[i]]; },
      "");
  writeVector(
      rows.inequations.size(), [&](std::size_t i) { return model_.rowUpper[rows.inequations[i]]; },
      "");
  const std::size_t columns = model_.columnCount();
  writeVector(
      columns,
      [&](std::size_t j) {
        return QQ(model_.kinds[j] == ColumnKind::continuous ? options_.decimals : 0);
      },
      "0 ");
  writeVector(
      columns, [&](std::size_t j) { return model_.lower[j]; }, "1 ");
  writeVector(
      columns, [&](std::size_t j) { return model_.upper[j]; }, "1 ");
}

}  // namespace

std::string sizeText(const Model& model, const OptRows& rows, const OptOptions& options) {
  return counted(model.columnCount() + (options.addConstant ? 1 : 0), "variable") + ", " +
         counted(rows.equations.size(), "equation") + ", " +
         counted(rows.inequations.size(), "inequation");
}

OptRows optRows(const Model& model) {
  if (model.columnCount() == 0) throw ModelError(0, "the model has no columns");
  // The text says how many columns there are by its rows only.
  if (model.rowCount() == 0 && model.objective.columns.empty())
    throw ModelError(0, "the model has neither rows nor an objective");
  std::vector<bool> hasEntries(model.rowCount());
  for (const std::uint32_t row : model.entryRows) hasEntries[row] = true;
  OptRows rows;
  for (std::uint32_t i = 0; i < model.rowCount(); ++i) {
    const bool fitsZero = model.rowLower[i] <= QQ::zero() && model.rowUpper[i] >= QQ::zero();
    if (!hasEntries[i] && !fitsZero)
      throw ModelError(0, "there is no solution: the row " + inQuotes(model.rowNames[i]) +
                              " has no entries and 0 lies beyond its bounds");
    (model.senses[i] == RowSense::equal ? rows.equations : rows.inequations).push_back(i);
  }
  return rows;
}

std::uint64_t estimatedOptSize(const Model& model) {
  const std::uint64_t cells =
      static_cast<std::uint64_t>(model.rowCount() + 1) * model.columnCount();
  const std::uint64_t entries = model.entryCount() + model.objective.columns.size();
  return 2 * cells + entryBytes * entries + columnBytes * (model.rowCount() + model.columnCount());
}

void writeOpt(const Model& model, const OptRows& rows, const OptOptions& options,
              const TextSink& sink) {
  OptText(model, options, sink).write(rows);
}

}  // namespace starsift
