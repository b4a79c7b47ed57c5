#include "models/write/PlainModel.h"

#include <map>
#include <string>
#include <utility>

#include "core/NumberTraits.h"
#include "models/record/RowBuilder.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

/// The terms of each row, as RowBuilder takes them.
std::vector<LinearTerms> rowTerms(const Model& model) {
  std::vector<LinearTerms> rows(model.rowCount());
  for (std::uint32_t j = 0; j < model.columnCount(); ++j) {
    for (std::size_t k = model.columnStart[j]; k < model.columnStart[j + 1]; ++k) {
      rows[model.entryRows[k]].columns.push_back(j);
      rows[model.entryRows[k]].coefficients.push_back(model.entryValues[k]);
    }
  }
  return rows;
}

class PlainModel {
 public:
  explicit PlainModel(Problem problem)
      : source_(std::move(problem)), rows_(rowTerms(source_.model)) {}

  Model build();

 private:
  std::uint32_t addColumn(std::string name, ColumnKind kind);
  void addRow(std::string name, LinearTerms terms, RowSense sense, QQ lower, QQ upper);
  void copyColumns();
  void scaleColumns();
  void copyRows();
  void addModulus(std::size_t row);
  void addTargets();
  void addGoal(std::size_t index, LinearTerms& objective);
  void addThreshold(std::size_t index);
  void tell(std::size_t count, const std::string& text);

  Problem source_;
  std::vector<LinearTerms> rows_;
  RowBuilder builder_;
  NameTable rowNames_;
  std::size_t moduli_ = 0;
  std::size_t goals_ = 0;
  std::size_t thresholds_ = 0;
};

std::uint32_t PlainModel::addColumn(std::string name, ColumnKind kind) {
  while (builder_.model.columnNames.find(name)) name += '_';
  const std::uint32_t column = builder_.column(name);
  builder_.model.kinds[column] = kind;
  return column;
}

void PlainModel::addRow(std::string name, LinearTerms terms, RowSense sense, QQ lower, QQ upper) {
  while (rowNames_.find(name)) name += '_';
  rowNames_.add(name);
  builder_.addRow(std::move(terms), sense, std::move(lower), std::move(upper));
}

void PlainModel::copyColumns() {
  const Model& model = source_.model;
  for (std::size_t j = 0; j < model.columnCount(); ++j) {
    builder_.column(model.columnNames[j]);
    builder_.model.kinds[j] = model.kinds[j];
    builder_.model.lower[j] = model.lower[j];
    builder_.model.upper[j] = model.upper[j];
  }
}

/// Counts the columns with decimal places in their steps from here on.
void PlainModel::scaleColumns() {
  const std::vector<QQ> steps = columnSteps(source_);
  std::size_t count = 0;
  for (std::size_t j = 0; j < steps.size(); ++j) {
    if (steps[j] == QQ::one()) continue;
    ++count;
    builder_.model.kinds[j] = ColumnKind::integer;
    if (!builder_.model.lower[j].isInf()) builder_.model.lower[j] /= steps[j];
    if (!builder_.model.upper[j].isInf()) builder_.model.upper[j] /= steps[j];
  }
  if (count == 0) return;
  const auto scale = [&steps](const std::vector<std::uint32_t>& columns, std::vector<QQ>& values) {
    for (std::size_t k = 0; k < columns.size(); ++k) values[k] *= steps[columns[k]];
  };
  for (LinearTerms& row : rows_) scale(row.columns, row.coefficients);
  for (Target& target : source_.targets) scale(target.columns, target.coefficients);
  tell(count, "variables with decimal places, which are integer columns of their steps");
}

void PlainModel::addModulus(std::size_t row) {
  const QQ& modulus = source_.moduli[row];
  const std::uint32_t column =
      addColumn("mod_" + std::string(source_.model.rowNames[row]), ColumnKind::integer);
  builder_.model.lower[column] = -QQ::infinity();
  rows_[row].columns.push_back(column);
  rows_[row].coefficients.push_back(-modulus);
  ++moduli_;
}

void PlainModel::copyRows() {
  const Model& model = source_.model;
  for (std::size_t i = 0; i < model.rowCount(); ++i) {
    if (!source_.moduli.empty() && !NumberTraits<QQ>::isZero(source_.moduli[i])) addModulus(i);
    addRow(std::string(model.rowNames[i]), std::move(rows_[i]), model.senses[i], model.rowLower[i],
           model.rowUpper[i]);
  }
}

void PlainModel::addGoal(std::size_t index, LinearTerms& objective) {
  const Target& target = source_.targets[index];
  const std::string name = "goal_" + std::to_string(index + 1);
  LinearTerms terms{target.columns, target.coefficients, {}};
  const std::uint32_t above = addColumn(name + "_above", ColumnKind::continuous);
  const std::uint32_t below = addColumn(name + "_below", ColumnKind::continuous);
  for (const auto& [column, factor] : {std::pair(above, QQ(-1)), std::pair(below, QQ(1))}) {
    terms.columns.push_back(column);
    terms.coefficients.push_back(factor);
    builder_.addTerm(objective, column, QQ(1));
  }
  addRow(name, std::move(terms), RowSense::equal, target.goal, target.goal);
  ++goals_;
}

void PlainModel::addThreshold(std::size_t index) {
  const Target& target = source_.targets[index];
  if (target.threshold.isInf() || target.threshold == target.goal) return;
  const std::string name = "threshold_" + std::to_string(index + 1);
  LinearTerms terms{target.columns, target.coefficients, {}};
  if (target.goal.isInf()) {
    const bool isMaximum = target.goal.sign();
    addRow(name, std::move(terms), isMaximum ? RowSense::greater : RowSense::less,
           isMaximum ? target.threshold : -QQ::infinity(),
           isMaximum ? QQ::infinity() : target.threshold);
  } else {
    const QQ distance = abs(target.threshold - target.goal);
    addRow(name, std::move(terms), RowSense::ranged, target.goal - distance,
           target.goal + distance);
  }
  ++thresholds_;
}

/// The norm of a star: maximised targets count negatively, finite goals by the distance to them.
void PlainModel::addTargets() {
  Objective& objective = builder_.model.objective;
  objective = std::move(source_.model.objective);
  objective.columns.clear();
  objective.coefficients.clear();
  const bool isSingle = source_.targets.size() == 1 && source_.targets[0].goal.isInf();
  if (!source_.targets.empty()) objective.exists = true;
  if (isSingle)
    objective.sense =
        source_.targets[0].goal.sign() ? ObjectiveSense::maximise : ObjectiveSense::minimise;
  else if (!source_.targets.empty())
    objective.sense = ObjectiveSense::minimise;
  LinearTerms sum;
  for (std::size_t t = 0; t < source_.targets.size(); ++t) {
    const Target& target = source_.targets[t];
    if (!target.goal.isInf()) {
      addGoal(t, sum);
    } else {
      const bool isNegated = !isSingle && target.goal.sign();
      for (std::size_t k = 0; k < target.columns.size(); ++k)
        builder_.addTerm(sum, target.columns[k],
                         isNegated ? -target.coefficients[k] : target.coefficients[k]);
    }
    addThreshold(t);
  }
  builder_.endTerms(sum);
  builder_.setObjective(std::move(sum));
  if (source_.targets.size() > 1)
    tell(source_.targets.size(), "targets, which are added up to one objective");
}

void PlainModel::tell(std::size_t count, const std::string& text) {
  if (count > 0) builder_.model.remarks.push_back({0, text + ": " + std::to_string(count)});
}

Model PlainModel::build() {
  builder_.model.name = source_.model.name;
  copyColumns();
  scaleColumns();
  copyRows();
  addTargets();
  tell(moduli_, "moduli, which become integer columns");
  tell(goals_, "finite goals, which become rows with two deviations");
  tell(thresholds_, "thresholds, which become rows");
  builder_.finish(std::move(rowNames_));
  return std::move(builder_.model);
}

}  // namespace

std::vector<QQ> columnSteps(const Problem& problem) {
  std::vector<QQ> steps(problem.model.columnCount(), QQ(1));
  for (std::size_t j = 0; j < problem.decimals.size(); ++j)
    for (QQ i(1); i <= problem.decimals[j]; i += QQ::one()) steps[j] /= QQ::ten();
  return steps;
}

Model plainModel(Problem problem) {
  return PlainModel(std::move(problem)).build();
}

}  // namespace starsift
