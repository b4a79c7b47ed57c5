#include "models/write/MpsWriter.h"

#include <array>
#include <string_view>

#include "models/text/NumberText.h"

namespace starsift {

namespace {

class MpsWriter {
 public:
  MpsWriter(const Model& model, const WritableNames& names) : model_(model), names_(names) {}

  std::string write();

 private:
  void writeRows();
  void writeColumns();
  void writeColumn(std::size_t j, std::size_t& nextCost);
  void writeMarker(bool begins);
  void writeRightSides();
  void writeRanges();
  void writeBounds();
  void writeBoundsOf(std::size_t j);
  /// True if a row of kind N is needed.
  bool hasObjective() const;
  void addLine(std::string_view first, std::string_view second, const QQ& value);
  void addBound(std::string_view kind, std::size_t j, const QQ* value);
  const QQ& rightSide(std::size_t i) const {
    return model_.senses[i] == RowSense::greater ? model_.rowLower[i] : model_.rowUpper[i];
  }

  const Model& model_;
  const WritableNames& names_;
  std::string text_;
  bool isBetweenMarkers_ = false;
};

bool MpsWriter::hasObjective() const {
  return model_.objective.exists || model_.rowCount() == 0;
}

void MpsWriter::addLine(std::string_view first, std::string_view second, const QQ& value) {
  ((text_ += "    ") += first) += "  ";
  (text_ += second) += "  ";
  appendNumber(text_, value);
  text_ += '\n';
}

void MpsWriter::writeRows() {
  constexpr std::array<std::string_view, 4> kinds{" E  ", " L  ", " G  ", " L  "};
  text_ += "ROWS\n";
  if (hasObjective()) text_ += " N  " + names_.objective + '\n';
  for (std::size_t i = 0; i < model_.rowCount(); ++i) {
    text_ += kinds[static_cast<std::size_t>(model_.senses[i])];
    (text_ += names_.rows[i]) += '\n';
  }
}

void MpsWriter::writeMarker(bool begins) {
  text_ += begins ? "    MARKER  'MARKER'  'INTORG'\n" : "    MARKER  'MARKER'  'INTEND'\n";
  isBetweenMarkers_ = begins;
}

void MpsWriter::writeColumn(std::size_t j, std::size_t& nextCost) {
  const Objective& objective = model_.objective;
  const std::string_view name = names_.columns[j];
  const bool hasCost = nextCost < objective.columns.size() && objective.columns[nextCost] == j;
  const bool isEmpty = model_.columnStart[j] == model_.columnStart[j + 1];
  if (hasCost)
    addLine(name, names_.objective, objective.coefficients[nextCost++]);
  else if (isEmpty)
    addLine(name, hasObjective() ? std::string_view(names_.objective) : names_.rows[0], QQ::zero());
  for (std::size_t k = model_.columnStart[j]; k < model_.columnStart[j + 1]; ++k)
    addLine(name, names_.rows[model_.entryRows[k]], model_.entryValues[k]);
}

void MpsWriter::writeColumns() {
  text_ += "COLUMNS\n";
  std::size_t nextCost = 0;
  for (std::size_t j = 0; j < model_.columnCount(); ++j) {
    const bool isInteger = model_.kinds[j] != ColumnKind::continuous;
    if (isInteger != isBetweenMarkers_) writeMarker(isInteger);
    writeColumn(j, nextCost);
  }
  if (isBetweenMarkers_) writeMarker(false);
}

void MpsWriter::writeRightSides() {
  text_ += "RHS\n";
  if (!model_.objective.constant.isZero())
    addLine("RHS", names_.objective, -model_.objective.constant);
  for (std::size_t i = 0; i < model_.rowCount(); ++i)
    if (!rightSide(i).isZero()) addLine("RHS", names_.rows[i], rightSide(i));
}

void MpsWriter::writeRanges() {
  bool isFirst = true;
  for (std::size_t i = 0; i < model_.rowCount(); ++i) {
    if (model_.senses[i] != RowSense::ranged) continue;
    if (isFirst) text_ += "RANGES\n";
    isFirst = false;
    addLine("RNG", names_.rows[i], model_.rowUpper[i] - model_.rowLower[i]);
  }
}

void MpsWriter::addBound(std::string_view kind, std::size_t j, const QQ* value) {
  (((text_ += ' ') += kind) += " BND  ") += names_.columns[j];
  if (value != nullptr) {
    text_ += "  ";
    appendNumber(text_, *value);
  }
  text_ += '\n';
}

void MpsWriter::writeBoundsOf(std::size_t j) {
  const QQ& lower = model_.lower[j];
  const QQ& upper = model_.upper[j];
  if (model_.kinds[j] == ColumnKind::binary && lower.isZero() && upper == QQ::one())
    return addBound("BV", j, nullptr);
  if (lower == upper) return addBound("FX", j, &lower);
  if (lower.isInf() && upper.isInf()) return addBound("FR", j, nullptr);
  const bool isInteger = model_.kinds[j] != ColumnKind::continuous;
  if (lower.isInf()) addBound("MI", j, nullptr);
  if (!lower.isInf() && !lower.isZero()) addBound("LO", j, &lower);
  if (!upper.isInf())
    addBound("UP", j, &upper);
  else if (isInteger)
    addBound("PL", j, nullptr);
}

void MpsWriter::writeBounds() {
  text_ += "BOUNDS\n";
  for (std::size_t j = 0; j < model_.columnCount(); ++j) writeBoundsOf(j);
}

std::string MpsWriter::write() {
  text_ = "NAME  " + model_.name + '\n';
  if (model_.objective.sense == ObjectiveSense::maximise) text_ += "OBJSENSE\n    MAX\n";
  writeRows();
  writeColumns();
  writeRightSides();
  writeRanges();
  writeBounds();
  return (text_ += "ENDATA\n");
}

}  // namespace

std::string mpsText(const Model& model, const WritableNames& names) {
  return MpsWriter(model, names).write();
}

}  // namespace starsift
