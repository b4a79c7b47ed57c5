#include "search/jump/JumpProblem.h"

#include <utility>

namespace starsift {

namespace {

/// Sums of some of such numbers are exact in double.
constexpr std::size_t mostBits = 52;

class Builder {
 public:
  explicit Builder(const IntegerProblem& problem) {
    for (const IntegerRange& range : problem.box) problem_.box.push_back(interval(range));
    for (const IntegerEquation& equation : problem.equations) addEquation(equation);
    for (const RangedForm& row : problem.ranges) {
      beginRow(interval(row.range));
      addEntries(row.form, 1);
    }
    if (problem.objective) addObjective(*problem.objective);
  }

  std::optional<JumpProblem> result() && {
    if (isTooLong_) return std::nullopt;
    problem_.columns = transposed(problem_.rows, problem_.box.size());
    return std::move(problem_);
  }

 private:
  double number(const ZZ& integer) {
    if (mpz_sizeinbase(integer.get(), 2) > mostBits) isTooLong_ = true;
    return mpz_get_d(integer.get());
  }

  NumberRange interval(const IntegerRange& range) {
    NumberRange result;
    if (range.lower) result.lower = number(*range.lower);
    if (range.upper) result.upper = number(*range.upper);
    return result;
  }

  void beginRow(const NumberRange& range) {
    problem_.rows.appendVector();
    problem_.rowRanges.push_back(range);
  }

  void addEntry(std::size_t column, double value) {
    problem_.rows.appendEntry({static_cast<std::uint32_t>(column), value});
  }

  void addEntries(const IntegerForm& form, double sign) {
    for (std::size_t j = 0; j < form.coefficients.size(); ++j)
      if (!form.coefficients[j].isZero()) addEntry(j, sign * number(form.coefficients[j]));
  }

  std::size_t addColumn(const NumberRange& range) {
    problem_.box.push_back(range);
    return problem_.box.size() - 1;
  }

  void addEquation(const IntegerEquation& equation) {
    const double value = -number(equation.form.constant);
    beginRow({value, value});
    addEntries(equation.form, 1);
    if (!equation.modulus.isZero()) addEntry(addColumn({}), -number(equation.modulus));
  }

  /// A column that is at least the magnitude of a form.
  std::size_t addMagnitude(const IntegerForm& form) {
    const std::size_t column = addColumn({0, NumberRange().upper});
    for (const double sign : {1.0, -1.0}) {
      beginRow({NumberRange().lower, -sign * number(form.constant)});
      addEntries(form, sign);
      addEntry(column, -1);
    }
    return column;
  }

  void addObjective(const IntegerObjective& objective) {
    std::vector<std::size_t> magnitudes;
    for (const IntegerForm& deviation : objective.deviations)
      magnitudes.push_back(addMagnitude(deviation));
    problem_.objectiveRow = problem_.rowRanges.size();
    problem_.objectiveConstant = number(objective.linear.constant);
    beginRow({});
    addEntries(objective.linear, 1);
    for (const std::size_t column : magnitudes) addEntry(column, 1);
  }

  JumpProblem problem_;
  bool isTooLong_ = false;
};

}  // namespace

std::optional<JumpProblem> jumpProblem(const IntegerProblem& problem) {
  return Builder(problem).result();
}

}  // namespace starsift
