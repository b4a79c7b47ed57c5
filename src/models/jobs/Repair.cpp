#include "models/jobs/Repair.h"

#include <algorithm>
#include <utility>

#include "models/check/ExactLp.h"
#include "models/record/RowBuilder.h"
#include "models/text/NumberText.h"
#include "models/text/Words.h"

namespace starsift {

namespace {

/// The problem with the integer columns fixed: over the continuous columns alone.
class FixedProblem {
 public:
  FixedProblem(const Problem& problem, const std::vector<QQ>& x);

  const Model& model() const { return builder_.model; }
  void dropObjective();
  /// `x` with the values of the continuous columns.
  std::vector<QQ> pointOf(std::vector<QQ> x, const std::vector<QQ>& values) const;

 private:
  void addColumns();
  void addRows(const std::vector<QQ>& x);
  void addObjective();

  const Problem& problem_;
  RowBuilder builder_;
  /// The continuous columns.
  std::vector<std::uint32_t> columns_;
};

FixedProblem::FixedProblem(const Problem& problem, const std::vector<QQ>& x) : problem_(problem) {
  addColumns();
  addObjective();
  addRows(x);
}

void FixedProblem::addColumns() {
  const Model& model = problem_.model;
  for (std::uint32_t j = 0; j < model.columnCount(); ++j) {
    if (model.kinds[j] != ColumnKind::continuous) continue;
    const std::uint32_t column = builder_.column(model.columnNames[j]);
    builder_.model.lower[column] = model.lower[j];
    builder_.model.upper[column] = model.upper[j];
    columns_.push_back(j);
  }
}

void FixedProblem::addObjective() {
  const Objective& objective = problem_.model.objective;
  LinearTerms terms;
  for (std::size_t k = 0; k < objective.columns.size(); ++k) {
    const auto place = std::lower_bound(columns_.begin(), columns_.end(), objective.columns[k]);
    if (place != columns_.end() && *place == objective.columns[k])
      builder_.addTerm(terms, static_cast<std::uint32_t>(place - columns_.begin()),
                       objective.coefficients[k]);
  }
  builder_.endTerms(terms);
  builder_.model.objective.sense = objective.sense;
  builder_.setObjective(std::move(terms));
}

void FixedProblem::addRows(const std::vector<QQ>& x) {
  const Model& model = problem_.model;
  const RowView view(model);
  NameTable names;
  for (std::size_t i = 0; i < model.rowCount(); ++i) {
    LinearTerms terms;
    QQ fixed;
    for (std::size_t k = view.start[i]; k < view.start[i + 1]; ++k) {
      const std::uint32_t column = view.columns[k];
      const QQ entry = model.entryValues[view.entries[k]];
      const auto place = std::lower_bound(columns_.begin(), columns_.end(), column);
      if (place != columns_.end() && *place == column)
        builder_.addTerm(terms, static_cast<std::uint32_t>(place - columns_.begin()), entry);
      else
        addProduct(fixed, entry, x[column]);
    }
    builder_.endTerms(terms);
    if (terms.columns.empty()) continue;
    names.add(model.rowNames[i]);
    const QQ& lower = model.rowLower[i];
    const QQ& upper = model.rowUpper[i];
    builder_.addRow(std::move(terms), model.senses[i], lower.isInf() ? lower : lower - fixed,
                    upper.isInf() ? upper : upper - fixed);
  }
  builder_.finish(std::move(names));
}

void FixedProblem::dropObjective() {
  builder_.model.objective.columns.clear();
  builder_.model.objective.coefficients.clear();
}

std::vector<QQ> FixedProblem::pointOf(std::vector<QQ> x, const std::vector<QQ>& values) const {
  for (std::size_t k = 0; k < columns_.size(); ++k) x[columns_[k]] = values[k];
  return x;
}

/// Each value within the bounds of its column, as near to `x` as they allow.
std::vector<QQ> clamped(const Model& model, const std::vector<QQ>& x) {
  std::vector<QQ> result = x;
  for (std::size_t j = 0; j < x.size(); ++j) {
    if (model.kinds[j] != ColumnKind::continuous) continue;
    if (result[j] < model.lower[j]) result[j] = model.lower[j];
    if (result[j] > model.upper[j]) result[j] = model.upper[j];
  }
  return result;
}

/// True if a violation is in integer columns alone.
bool isBeyondRepair(const Problem& problem, const RowView& view, const Violation& violation) {
  const Model& model = problem.model;
  if (violation.kind != ViolationKind::row)
    return model.kinds[violation.index] != ColumnKind::continuous;
  for (std::size_t k = view.start[violation.index]; k < view.start[violation.index + 1]; ++k)
    if (model.kinds[view.columns[k]] == ColumnKind::continuous) return false;
  return true;
}

std::string changeText(const Model& model, const std::vector<QQ>& before,
                       const std::vector<QQ>& after) {
  ValueChanges changes;
  for (std::uint32_t j = 0; j < before.size(); ++j)
    if (before[j] != after[j]) changes.add(j, abs(before[j] - after[j]));
  return "repaired: " + counted(changes.count, "value") + " changed, by at most " +
         shortText(changes.largest) + " (" + escaped(model.columnNames[changes.column]) + ")";
}

class Repair {
 public:
  explicit Repair(const Problem& problem)
      : problem_(problem), check_(problem), view_(problem.model) {}

  void run(RecordReport& record) const;

 private:
  bool replace(RecordReport& record, std::vector<QQ> x) const;
  LpResult solve(FixedProblem& fixed) const;

  const Problem& problem_;
  PointCheck check_;
  RowView view_;
};

bool Repair::replace(RecordReport& record, std::vector<QQ> x) const {
  PointReport report = check_.check(x);
  if (!report.isRight()) return false;
  record.repair = changeText(problem_.model, record.point.x, x);
  record.point.x = std::move(x);
  record.check = std::move(report);
  return true;
}

LpResult Repair::solve(FixedProblem& fixed) const {
  LpResult result = solveExactly(fixed.model());
  if (result.status != LpStatus::unbounded) return result;
  fixed.dropObjective();
  return solveExactly(fixed.model());
}

void Repair::run(RecordReport& record) const {
  if (record.check.isRight()) return;
  for (const Violation& violation : record.check.violations) {
    if (!isBeyondRepair(problem_, view_, violation)) continue;
    record.repair = "beyond repair: " + violationName(problem_.model, violation) +
                    " is broken by integers alone";
    return;
  }
  if (replace(record, clamped(problem_.model, record.point.x))) return;
  FixedProblem fixed(problem_, record.point.x);
  const LpResult result = solve(fixed);
  if (result.status == LpStatus::infeasible)
    record.repair = "beyond repair: there is no solution with these integers";
  else if (result.status != LpStatus::optimal)
    record.repair = "not repaired: " + result.reason;
  else if (!replace(record, fixed.pointOf(record.point.x, result.x)))
    record.repair = "not repaired: the values of esolver are no solution";
}

}  // namespace

void repairRecords(const Problem& problem, std::vector<SolutionReport>& solutions) {
  const Repair repair(problem);
  for (SolutionReport& solution : solutions)
    for (RecordReport& record : solution.records) repair.run(record);
}

}  // namespace starsift
