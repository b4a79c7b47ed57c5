#include "library/ProblemRecord.h"

#include <algorithm>
#include <utility>

#include "models/text/NumberText.h"
#include "problem/OptReader.h"
#include "system/Failure.h"
#include "text/TextCursor.h"

namespace starsift {

namespace {

/// The items of a .opt file, one by one.
class OptText {
 public:
  explicit OptText(const ProblemRecord& problem) : problem_(problem) {
    for (const RowRecord& row : problem.rows) (row.isRange ? ranges_ : equations_).push_back(&row);
  }

  std::string write() {
    writeTargets();
    writeEquations();
    matrix(ranges_);
    vector(ranges_, [](const RowRecord* row) -> const QQ& { return row->lower; });
    vector(ranges_, [](const RowRecord* row) -> const QQ& { return row->upper; });
    vector(problem_.variables, [](const VariableRecord& v) -> const QQ& { return v.decimals; });
    vector(problem_.variables, [](const VariableRecord& v) -> const QQ& { return v.lower; });
    vector(problem_.variables, [](const VariableRecord& v) -> const QQ& { return v.upper; });
    return std::move(text_);
  }

 private:
  void writeTargets() {
    std::vector<const TargetRecord*> targets;
    for (const TargetRecord& target : problem_.targets) targets.push_back(&target);
    vector(targets, [](const TargetRecord* target) -> const QQ& { return target->goal; });
    const auto differs = [](const TargetRecord* target) {
      return target->threshold != target->goal;
    };
    if (std::any_of(targets.begin(), targets.end(), differs)) {
      text_ += "= ";
      vector(targets, [](const TargetRecord* target) -> const QQ& { return target->threshold; });
    }
    matrix(targets);
  }

  void writeEquations() {
    matrix(equations_);
    vector(equations_, [](const RowRecord* row) -> const QQ& { return row->lower; });
    const auto isCongruence = [](const RowRecord* row) { return !row->modulus.isZero(); };
    if (std::any_of(equations_.begin(), equations_.end(), isCongruence))
      vector(equations_, [](const RowRecord* row) -> const QQ& { return row->modulus; });
    else
      text_ += "[ ]\n";
  }

  /// One number of each item.
  template <class Items, class Number>
  void vector(const Items& items, const Number& number) {
    text_ += "[ ";
    for (const auto& item : items) {
      appendNumber(text_, number(item));
      text_ += ' ';
    }
    text_ += "]\n";
  }

  template <class Rows>
  void matrix(const Rows& rows) {
    text_ += "[ ";
    for (const auto* row : rows) writeRow(row->terms);
    text_ += "]\n";
  }

  void writeRow(const SparseRow& row) {
    text_ += "[ ";
    std::size_t next = 0;
    for (std::size_t k = 0; k < row.variables.size(); ++k) {
      for (; next < row.variables[k]; ++next) text_ += "0 ";
      appendNumber(text_, row.coefficients[k]);
      text_ += ' ';
      ++next;
    }
    for (; next < problem_.variables.size(); ++next) text_ += "0 ";
    text_ += "]\n";
  }

  const ProblemRecord& problem_;
  std::vector<const RowRecord*> equations_;
  std::vector<const RowRecord*> ranges_;
  std::string text_;
};

SparseRow sparse(const Vector<QQ>& row) {
  SparseRow result;
  for (Index j = 1; j <= row.dimension(); ++j) {
    if (row[j].isZero()) continue;
    result.variables.push_back(static_cast<std::size_t>(j - 1));
    result.coefficients.push_back(row[j]);
  }
  return result;
}

}  // namespace

std::string variableName(const ProblemRecord& problem, std::size_t variable) {
  const std::string& name = problem.variables[variable].name;
  return name.empty() ? "x" + std::to_string(variable + 1) : name;
}

std::string nameOf(const RowRecord& row) {
  return row.name.empty() ? (row.isRange ? "u" : "g") + std::to_string(row.ordinal) : row.name;
}

std::size_t nextOrdinal(const ProblemRecord& problem, bool isRange) {
  return 1 + (isRange ? problem.rangeCount : problem.rows.size() - problem.rangeCount);
}

void appendRow(ProblemRecord& problem, RowRecord row) {
  row.ordinal = nextOrdinal(problem, row.isRange);
  if (row.isRange) ++problem.rangeCount;
  problem.rows.push_back(std::move(row));
}

std::vector<std::size_t> rowsByKind(const ProblemRecord& problem) {
  std::vector<std::size_t> order;
  for (const bool isRange : {false, true})
    for (std::size_t i = 0; i < problem.rows.size(); ++i)
      if (problem.rows[i].isRange == isRange) order.push_back(i);
  return order;
}

std::string optText(const ProblemRecord& problem) {
  if (problem.variables.empty()) fail("the problem has no variables");
  if (problem.rows.empty() && problem.targets.empty())
    fail("the problem has neither rows nor targets");
  return OptText(problem).write();
}

Vanu<QQ> vanuOf(const ProblemRecord& problem) {
  return parseProblem(optText(problem));
}

Vanu<QQ> parseProblem(const std::string& text) {
  Vanu<QQ> problem;
  TextCursor source(text);
  parseOpt(source, problem);
  problem.updateFixedTargets();
  return problem;
}

ProblemRecord recordOf(const Vanu<QQ>& problem) {
  ProblemRecord record;
  for (Index j = 1; j <= problem.rx.dimension(); ++j)
    record.variables.push_back({problem.lx[j], problem.rx[j], problem.dx[j], ""});
  for (Index i = 1; i <= problem.Ag.rowCount(); ++i)
    appendRow(record, {sparse(problem.Ag[i]), problem.bg[i], problem.bg[i],
                       problem.qg.isSet() ? problem.qg[i] : QQ::zero(), false, 0, ""});
  for (Index i = 1; i <= problem.Au.rowCount(); ++i)
    appendRow(record,
              {sparse(problem.Au[i]), problem.lu[i], problem.ru[i], QQ::zero(), true, 0, ""});
  for (Index i = 1; i <= problem.At.rowCount(); ++i)
    record.targets.push_back({sparse(problem.At[i]), problem.dt[i], problem.kt[i]});
  return record;
}

}  // namespace starsift
