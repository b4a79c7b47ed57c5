#include "models/read/ProblemReader.h"

#include <algorithm>
#include <utility>

#include "models/record/RowBuilder.h"
#include "models/text/ModelError.h"

namespace starsift {

namespace {

/// The entries of a dense row other than 0, in the first `columns` columns.
LinearTerms termsOf(const Vector<QQ>& row, std::size_t columns) {
  LinearTerms terms;
  for (std::size_t j = 0; j < columns; ++j) {
    const QQ& entry = row[static_cast<Index>(j + 1)];
    if (entry.isZero()) continue;
    terms.columns.push_back(static_cast<std::uint32_t>(j));
    terms.coefficients.push_back(entry);
  }
  return terms;
}

RowSense senseOf(const QQ& lower, const QQ& upper) {
  if (lower.isInf()) return RowSense::less;
  return upper.isInf() ? RowSense::greater : RowSense::ranged;
}

class Conversion {
 public:
  /// `names` may be null.
  Conversion(const Vanu<QQ>& source, const NamesFile* names);

  Problem run();

 private:
  void checkCounts() const;
  void addColumns();
  void addTargets();
  void addEquation(Index i);
  void addInequation(Index i);
  void addRows();
  void addNamedRows();

  const Vanu<QQ>& source_;
  const NamesFile* names_;
  std::size_t columns_;
  Problem problem_;
  RowBuilder builder_;
  NameTable rowNames_;
};

Conversion::Conversion(const Vanu<QQ>& source, const NamesFile* names)
    : source_(source), names_(names), columns_(static_cast<std::size_t>(source.rx.dimension())) {
  if (names != nullptr && names->hasConstantColumn) --columns_;
}

void Conversion::checkCounts() const {
  if (columns_ != names_->columnNames.size())
    throw ModelError(0, "the problem and its names differ in the number of variables");
  const auto rows = static_cast<std::size_t>(source_.Ag.rowCount() + source_.Au.rowCount());
  const auto equations = static_cast<std::size_t>(
      std::count(names_->senses.begin(), names_->senses.end(), RowSense::equal));
  if (rows != names_->rowNames.size() ||
      equations != static_cast<std::size_t>(source_.Ag.rowCount()))
    throw ModelError(0, "the problem and its names differ in the number of rows");
}

void Conversion::addColumns() {
  Model& model = builder_.model;
  for (std::size_t j = 0; j < columns_; ++j) {
    const auto index = static_cast<Index>(j + 1);
    builder_.column(names_ != nullptr ? std::string(names_->columnNames[j])
                                      : "x" + std::to_string(j + 1));
    model.lower[j] = source_.lx[index];
    model.upper[j] = source_.rx[index];
    if (names_ != nullptr)
      model.kinds[j] = names_->kinds[j];
    else if (source_.dx[index].isZero())
      model.kinds[j] = ColumnKind::integer;
  }
}

void Conversion::addTargets() {
  for (Index i = 1; i <= source_.dt.dimension(); ++i) {
    LinearTerms terms = termsOf(source_.At[i], columns_);
    problem_.targets.push_back(
        {source_.dt[i], source_.kt[i], std::move(terms.columns), std::move(terms.coefficients)});
  }
  Objective& objective = builder_.model.objective;
  if (names_ != nullptr) {
    objective = names_->objective;
  } else if (source_.dt.dimension() > 0) {
    objective.exists = true;
    objective.name = "obj";
    if (source_.dt[1].isInf() && source_.dt[1].sign()) objective.sense = ObjectiveSense::maximise;
  }
  if (problem_.targets.size() == 1 && problem_.targets[0].goal.isInf()) {
    objective.columns = problem_.targets[0].columns;
    objective.coefficients = problem_.targets[0].coefficients;
  }
}

void Conversion::addEquation(Index i) {
  builder_.addRow(termsOf(source_.Ag[i], columns_), RowSense::equal, source_.bg[i], source_.bg[i]);
  if (source_.qg.dimension() > 0) problem_.moduli.push_back(source_.qg[i]);
}

void Conversion::addInequation(Index i) {
  builder_.addRow(termsOf(source_.Au[i], columns_), senseOf(source_.lu[i], source_.ru[i]),
                  source_.lu[i], source_.ru[i]);
  if (source_.qg.dimension() > 0) problem_.moduli.emplace_back();
}

void Conversion::addRows() {
  for (Index i = 1; i <= source_.Ag.rowCount(); ++i) {
    addEquation(i);
    rowNames_.add("g" + std::to_string(i));
  }
  for (Index i = 1; i <= source_.Au.rowCount(); ++i) {
    addInequation(i);
    rowNames_.add("u" + std::to_string(i));
  }
}

void Conversion::addNamedRows() {
  Index equation = 0;
  Index inequation = 0;
  for (std::size_t i = 0; i < names_->rowNames.size(); ++i) {
    if (names_->senses[i] == RowSense::equal)
      addEquation(++equation);
    else
      addInequation(++inequation);
  }
  builder_.model.senses = names_->senses;
  builder_.model.name = names_->modelName;
  rowNames_ = names_->rowNames;
}

Problem Conversion::run() {
  if (names_ != nullptr) checkCounts();
  addColumns();
  addTargets();
  if (names_ != nullptr)
    addNamedRows();
  else
    addRows();
  builder_.finish(std::move(rowNames_));
  problem_.model = std::move(builder_.model);
  if (names_ == nullptr) problem_.decimals.assign(source_.dx.begin(), source_.dx.end());
  return std::move(problem_);
}

}  // namespace

Problem problemOf(const Vanu<QQ>& problem) {
  return Conversion(problem, nullptr).run();
}

Problem problemOf(const Vanu<QQ>& problem, const NamesFile& names) {
  return Conversion(problem, &names).run();
}

}  // namespace starsift
