#include <map>
#include <utility>

#include "library/Hosted.h"
#include "library/Inside.h"
#include "library/ProblemText.h"
#include "models/text/Words.h"
#include "problem/OptReader.h"
#include "system/Failure.h"

namespace starsift {
inline namespace v1 {

namespace {

constexpr int mostDecimals = 18;

/// The terms in the order of their variables. Fatal as the header says; `name` is that of the row.
SparseRow checkedTerms(const ProblemRecord& problem, const Row& row, const std::string& name) {
  const std::size_t count = problem.variables.size();
  if (row.isDense() && row.terms().size() != count)
    fail(name + ": " + counted(row.terms().size(), "coefficient") + " for " +
         counted(count, "variable"));
  std::map<std::size_t, QQ> sums;
  for (const Term& term : row.terms()) {
    if (term.variable >= count)
      fail(name + ": there is no variable " + std::to_string(term.variable));
    if (term.coefficient.isInfinite()) fail(name + ": an infinite coefficient");
    sums[term.variable] += Inside::exact(term.coefficient);
  }
  SparseRow terms;
  for (auto& [variable, sum] : sums) {
    if (sum.isZero()) continue;
    terms.variables.push_back(variable);
    terms.coefficients.push_back(std::move(sum));
  }
  return terms;
}

/// The name that a report has for a row that would be the next of its kind.
std::string reportedName(const ProblemRecord& problem, bool isRange, std::string_view name) {
  return "row " +
         nameOf({{}, {}, {}, {}, isRange, nextOrdinal(problem, isRange), std::string(name)});
}

std::string reportedTarget(const ProblemRecord& problem) {
  return "target " + std::to_string(problem.targets.size() + 1);
}

void requireFinite(const Number& value, const std::string& name) {
  if (value.isInfinite()) fail(name + ": an infinite value");
}

std::size_t appendTarget(ProblemRecord& problem, const Row& target, const QQ& goal) {
  problem.targets.push_back({checkedTerms(problem, target, reportedTarget(problem)), goal, goal});
  return problem.targets.size() - 1;
}

}  // namespace

Row::Row(std::initializer_list<Number> coefficients)
    : Row(std::span<const Number>(coefficients.begin(), coefficients.size())) {}

Row::Row(std::vector<Term> terms) : terms_(std::move(terms)) {}

Row Row::sparse(std::span<const Term> terms) {
  return Row(std::vector<Term>(terms.begin(), terms.end()));
}

Row Row::sparse(std::initializer_list<Term> terms) {
  return Row(std::vector<Term>(terms));
}

Problem::Problem() : record_(std::make_unique<Record>()) {}
Problem::Problem(const Problem& other) : record_(std::make_unique<Record>(*other.record_)) {}
Problem::Problem(Problem&& other) noexcept = default;
Problem& Problem::operator=(const Problem& other) {
  *this = Problem(other);
  return *this;
}
Problem& Problem::operator=(Problem&& other) noexcept = default;
Problem::~Problem() = default;

Problem Problem::fromOpt(std::string_view text) {
  return hosted([text] {
    Problem result;
    *result.record_ = {recordOf(parseProblem(std::string(text)))};
    return result;
  });
}

Problem Problem::read(const std::string& path) {
  return hosted([&path] {
    Vanu<QQ> problem;
    problem.optFile = path;
    readOpt(problem);
    Problem result;
    *result.record_ = {recordOf(problem)};
    return result;
  });
}

std::size_t Problem::addVariable(const Number& lower, const Number& upper, std::string_view name,
                                 int decimals) {
  return hosted([&] {
    VariableRecord variable{Inside::exact(lower), Inside::exact(upper), QQ(decimals),
                            std::string(name)};
    const std::size_t index = record_->variables.size();
    const std::string reported =
        "variable " + (name.empty() ? "x" + std::to_string(index + 1) : std::string(name));
    if (variable.upper < variable.lower)
      fail(reported + ": the upper bound is below the lower one");
    if (variable.lower == QQ::infinity() || variable.upper == -QQ::infinity())
      fail(reported + ": no finite value is within the bounds");
    if (decimals < 0 || decimals > mostDecimals) fail(reported + ": decimals are from 0 to 18");
    record_->variables.push_back(std::move(variable));
    return index;
  });
}

std::size_t Problem::addEquation(const Row& row, const Number& value, std::string_view name) {
  return hosted([&] {
    const std::string reported = reportedName(*record_, false, name);
    requireFinite(value, reported);
    const QQ exact = Inside::exact(value);
    appendRow(*record_, {checkedTerms(*record_, row, reported), exact, exact, QQ::zero(), false, 0,
                         std::string(name)});
    return record_->rows.size() - 1;
  });
}

std::size_t Problem::addCongruence(const Row& row, const Number& value, const Number& modulus,
                                   std::string_view name) {
  return hosted([&] {
    const std::string reported = reportedName(*record_, false, name);
    requireFinite(value, reported);
    const QQ exact = Inside::exact(value);
    const QQ exactModulus = Inside::exact(modulus);
    if (exactModulus.isInf() || NumberTraits<QQ>::isZero(exactModulus))
      fail(reported + ": the modulus is 0 or infinite");
    appendRow(*record_, {checkedTerms(*record_, row, reported), exact, exact, exactModulus, false,
                         0, std::string(name)});
    return record_->rows.size() - 1;
  });
}

std::size_t Problem::addRange(const Row& row, const Number& lower, const Number& upper,
                              std::string_view name) {
  return hosted([&] {
    const std::string reported = reportedName(*record_, true, name);
    if (upper < lower) fail(reported + ": the upper bound is below the lower one");
    if (lower.isInfinite() && upper.isInfinite()) fail(reported + ": no bound is finite");
    appendRow(*record_, {checkedTerms(*record_, row, reported), Inside::exact(lower),
                         Inside::exact(upper), QQ::zero(), true, 0, std::string(name)});
    return record_->rows.size() - 1;
  });
}

std::size_t Problem::maximise(const Row& target) {
  return hosted([&] { return appendTarget(*record_, target, QQ::infinity()); });
}

std::size_t Problem::minimise(const Row& target) {
  return hosted([&] { return appendTarget(*record_, target, -QQ::infinity()); });
}

std::size_t Problem::approach(const Row& target, const Number& value) {
  return hosted([&] {
    requireFinite(value, reportedTarget(*record_));
    return appendTarget(*record_, target, Inside::exact(value));
  });
}

std::size_t Problem::variableCount() const noexcept {
  return record_->variables.size();
}

std::size_t Problem::rowCount() const noexcept {
  return record_->rows.size();
}

std::size_t Problem::targetCount() const noexcept {
  return record_->targets.size();
}

std::string Problem::variableName(std::size_t variable) const {
  if (variable >= variableCount()) throw Error("there is no variable " + std::to_string(variable));
  return starsift::variableName(*record_, variable);
}

std::string Problem::rowName(std::size_t row) const {
  if (row >= rowCount()) throw Error("there is no row " + std::to_string(row));
  return nameOf(record_->rows[row]);
}

std::string Problem::toOpt() const {
  return hosted([this] { return optText(*record_); });
}

std::string Problem::toText() const {
  return hosted([this] { return problemText(*record_); });
}

Problem Problem::fromText(std::string_view text) {
  return hosted([text] {
    Problem result;
    *result.record_ = {parseProblemText(text)};
    return result;
  });
}

}  // namespace v1
}  // namespace starsift
