#include "models/write/LpWriter.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "models/text/NumberText.h"

namespace starsift {

namespace {

/// Bytes after which a line of terms ends; some programs refuse longer lines than 255.
constexpr std::size_t lineLength = 100;

class LpWriter {
 public:
  LpWriter(const Model& model, const WritableNames& names)
      : model_(model), names_(names), view_(model) {}

  std::string write();

 private:
  void writeObjective();
  void writeRow(std::size_t i);
  void writeRow(std::size_t i, std::string_view name, RowSense sense);
  /// A name for the lower bound of a row with two, which no other row has.
  std::string lowerName(std::size_t i);
  void writeBounds();
  void writeBoundsOf(std::size_t j);
  void writeKinds(std::string_view keyword, ColumnKind kind);
  /// True if the columns come in their order when objective and rows are read.
  bool comesInOrder() const;
  void addTerm(const QQ& factor, std::string_view name);
  void beginLine(std::string_view text) {
    lineBegin_ = text_.size();
    text_ += text;
  }

  const Model& model_;
  const WritableNames& names_;
  RowView view_;
  NameTable lowerNames_;
  std::string text_;
  std::size_t lineBegin_ = 0;
};

bool LpWriter::comesInOrder() const {
  std::vector<bool> isSeen(model_.columnCount());
  std::size_t next = 0;
  const auto see = [&](std::uint32_t column) {
    if (isSeen[column]) return true;
    isSeen[column] = true;
    return column == next++;
  };
  return std::all_of(model_.objective.columns.begin(), model_.objective.columns.end(), see) &&
         std::all_of(view_.columns.begin(), view_.columns.end(), see) &&
         next == model_.columnCount();
}

void LpWriter::addTerm(const QQ& factor, std::string_view name) {
  if (text_.size() - lineBegin_ > lineLength) {
    text_ += '\n';
    beginLine("  ");
  }
  text_ += factor.sign() ? " + " : " - ";
  const QQ magnitude = abs(factor);
  if (magnitude != QQ::one()) {
    appendNumber(text_, magnitude);
    text_ += ' ';
  }
  text_ += name;
}

void LpWriter::writeObjective() {
  const Objective& objective = model_.objective;
  text_ += objective.sense == ObjectiveSense::maximise ? "Maximize\n" : "Minimize\n";
  beginLine(" ");
  text_ += names_.objective + ':';
  const bool isEmpty = objective.columns.empty() && objective.constant.isZero();
  if (comesInOrder() && isEmpty && model_.columnCount() > 0) {
    // Some programs refuse an objective without any term.
    addTerm(QQ::zero(), names_.columns[0]);
  } else if (comesInOrder()) {
    for (std::size_t k = 0; k < objective.columns.size(); ++k)
      addTerm(objective.coefficients[k], names_.columns[objective.columns[k]]);
  } else {
    // Columns count in the order in which they are read first.
    std::size_t k = 0;
    for (std::size_t j = 0; j < model_.columnCount(); ++j) {
      const bool hasCost = k < objective.columns.size() && objective.columns[k] == j;
      addTerm(hasCost ? objective.coefficients[k++] : QQ::zero(), names_.columns[j]);
    }
  }
  if (!objective.constant.isZero()) {
    text_ += objective.constant.sign() ? " + " : " - ";
    appendNumber(text_, abs(objective.constant));
  }
  text_ += '\n';
}

std::string LpWriter::lowerName(std::size_t i) {
  std::string name(names_.rows[i]);
  name += "_lower";
  while (names_.rows.find(name) || name == names_.objective || !lowerNames_.add(name).isNew)
    name += '_';
  return name;
}

void LpWriter::writeRow(std::size_t i) {
  if (model_.senses[i] != RowSense::ranged) return writeRow(i, names_.rows[i], model_.senses[i]);
  // GLPK refuses "1 <= x + y <= 3", and CBC takes it for another row without a word.
  const std::string lower = lowerName(i);
  writeRow(i, names_.rows[i], RowSense::less);
  // The reader joins the two rows by this line.
  (((text_ += "\\ range: ") += names_.rows[i]) += ' ') += lower;
  text_ += '\n';
  writeRow(i, lower, RowSense::greater);
}

void LpWriter::writeRow(std::size_t i, std::string_view name, RowSense sense) {
  beginLine(" ");
  ((text_ += name) += ':');
  for (std::size_t k = view_.start[i]; k < view_.start[i + 1]; ++k)
    addTerm(model_.entryValues[view_.entries[k]], names_.columns[view_.columns[k]]);
  if (view_.start[i] == view_.start[i + 1]) {
    if (model_.columnCount() > 0)
      addTerm(QQ::zero(), names_.columns[0]);
    else
      text_ += " 0";
  }
  text_ += sense == RowSense::equal ? " = " : sense == RowSense::greater ? " >= " : " <= ";
  appendNumber(text_, sense == RowSense::greater ? model_.rowLower[i] : model_.rowUpper[i]);
  text_ += '\n';
}

void LpWriter::writeBoundsOf(std::size_t j) {
  const QQ& lower = model_.lower[j];
  const QQ& upper = model_.upper[j];
  const bool isBinary = model_.kinds[j] == ColumnKind::binary;
  if (lower.isZero() && (isBinary ? upper == QQ::one() : upper.isInf())) return;
  text_ += ' ';
  if (lower == upper) {
    (text_ += names_.columns[j]) += " = ";
    appendNumber(text_, lower);
  } else if (lower.isInf() && upper.isInf()) {
    (text_ += names_.columns[j]) += " free";
  } else {
    appendNumber(text_, lower);
    (text_ += " <= ") += names_.columns[j];
    if (!upper.isInf()) {
      text_ += " <= ";
      appendNumber(text_, upper);
    }
  }
  text_ += '\n';
}

void LpWriter::writeBounds() {
  text_ += "Bounds\n";
  for (std::size_t j = 0; j < model_.columnCount(); ++j) writeBoundsOf(j);
}

void LpWriter::writeKinds(std::string_view keyword, ColumnKind kind) {
  bool isFirst = true;
  for (std::size_t j = 0; j < model_.columnCount(); ++j) {
    if (model_.kinds[j] != kind) continue;
    if (isFirst) (text_ += keyword) += '\n';
    isFirst = false;
    ((text_ += ' ') += names_.columns[j]) += '\n';
  }
}

std::string LpWriter::write() {
  if (!model_.name.empty()) text_ = "\\ " + model_.name + '\n';
  writeObjective();
  text_ += "Subject To\n";
  for (std::size_t i = 0; i < model_.rowCount(); ++i) writeRow(i);
  writeBounds();
  writeKinds("Generals", ColumnKind::integer);
  writeKinds("Binaries", ColumnKind::binary);
  return (text_ += "End\n");
}

}  // namespace

std::string lpText(const Model& model, const WritableNames& names) {
  return LpWriter(model, names).write();
}

}  // namespace starsift
