#include "library/ProblemText.h"

#include <algorithm>
#include <utility>

#include "library/Inside.h"
#include "models/text/NumberText.h"
#include "system/Failure.h"
#include "text/IntegerText.h"

namespace starsift {

namespace {

constexpr std::string_view title = "starsift problem 1";
constexpr std::string_view equation = "=";
constexpr std::string_view range = "<";

class Writer {
 public:
  std::string write(const ProblemRecord& problem) {
    text_ = title;
    for (const std::size_t count :
         {problem.variables.size(), problem.rows.size(), problem.targets.size()})
      add(count);
    for (const VariableRecord& variable : problem.variables) write(variable);
    for (const RowRecord& row : problem.rows) write(row);
    for (const TargetRecord& target : problem.targets) write(target);
    return std::move(text_) + '\n';
  }

 private:
  void write(const VariableRecord& variable) {
    begin(variable.lower);
    add(variable.upper);
    add(variable.decimals);
    addName(variable.name);
  }

  void write(const RowRecord& row) {
    text_ += '\n';
    text_ += row.isRange ? range : equation;
    add(row.lower);
    add(row.isRange ? row.upper : row.modulus);
    addName(row.name);
    add(row.terms);
  }

  void write(const TargetRecord& target) {
    begin(target.goal);
    add(target.threshold);
    add(target.terms);
  }

  void begin(const QQ& value) {
    text_ += '\n';
    appendNumber(text_, value);
  }

  void add(const QQ& value) {
    text_ += ' ';
    appendNumber(text_, value);
  }

  void add(std::size_t value) { text_ += ' ' + std::to_string(value); }

  void addName(const std::string& name) {
    add(name.size());
    text_ += ':' + name;
  }

  void add(const SparseRow& row) {
    add(row.variables.size());
    for (std::size_t k = 0; k < row.variables.size(); ++k) {
      add(row.variables[k]);
      add(row.coefficients[k]);
    }
  }

  std::string text_;
};

class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  ProblemRecord read() {
    require(rest_.starts_with(title));
    rest_.remove_prefix(title.size());
    ProblemRecord problem;
    const std::size_t variables = integer();
    const std::size_t rows = integer();
    const std::size_t targets = integer();
    for (std::size_t j = 0; j < variables; ++j) problem.variables.push_back(variable());
    for (std::size_t i = 0; i < rows; ++i) appendRow(problem, row(variables));
    for (std::size_t i = 0; i < targets; ++i) problem.targets.push_back(target(variables));
    require(rest_ == "\n");
    return problem;
  }

 private:
  static void require(bool isRight) {
    if (!isRight) fail("not the text of a problem");
  }

  VariableRecord variable() {
    VariableRecord result;
    result.lower = number();
    result.upper = number();
    result.decimals = number();
    result.name = name();
    return result;
  }

  RowRecord row(std::size_t variables) {
    RowRecord result;
    const std::string_view kind = word();
    require(kind == equation || kind == range);
    result.isRange = kind == range;
    result.lower = number();
    result.upper = result.isRange ? number() : result.lower;
    if (!result.isRange) result.modulus = number();
    result.name = name();
    result.terms = terms(variables);
    return result;
  }

  TargetRecord target(std::size_t variables) {
    TargetRecord result;
    result.goal = number();
    result.threshold = number();
    result.terms = terms(variables);
    return result;
  }

  SparseRow terms(std::size_t variables) {
    SparseRow result;
    const std::size_t count = integer();
    for (std::size_t k = 0; k < count; ++k) {
      const std::size_t variable = integer();
      require(variable < variables &&
              (result.variables.empty() || result.variables.back() < variable));
      result.variables.push_back(variable);
      result.coefficients.push_back(number());
    }
    return result;
  }

  /// The text behind a blank or line feed, up to the next one.
  std::string_view word() {
    require(rest_.size() > 1 && (rest_.front() == ' ' || rest_.front() == '\n'));
    rest_.remove_prefix(1);
    const std::size_t end = std::min(rest_.find_first_of(" \n"), rest_.size());
    const std::string_view result = rest_.substr(0, end);
    rest_.remove_prefix(end);
    return result;
  }

  QQ number() { return Inside::exact(Number(word())); }

  std::size_t integer() { return integerOf(word()); }

  static std::size_t integerOf(std::string_view text) {
    const std::optional<std::size_t> value = parseInteger<std::size_t>(text);
    require(value.has_value());
    return *value;
  }

  std::string name() {
    const std::size_t colon = rest_.find(':');
    require(colon != std::string_view::npos && rest_.front() == ' ');
    const std::size_t length = integerOf(rest_.substr(1, colon - 1));
    rest_.remove_prefix(colon + 1);
    require(length <= rest_.size());
    std::string result(rest_.substr(0, length));
    rest_.remove_prefix(length);
    return result;
  }

  std::string_view rest_;
};

}  // namespace

std::string problemText(const ProblemRecord& problem) {
  return Writer().write(problem);
}

ProblemRecord parseProblemText(std::string_view text) {
  return Reader(text).read();
}

}  // namespace starsift
