#include "Scenario.h"

#include "Target.h"

namespace starsift::fuzz {

namespace {

using oracle::Bound;
using oracle::Point;

mpz_class powerOfTen(unsigned exponent) {
  mpz_class result;
  mpz_ui_pow_ui(result.get_mpz_t(), 10, exponent);
  return result;
}

class Speller {
 public:
  explicit Speller(std::string_view bytes) : bytes_(bytes) {}

  Scenario scenario() {
    const std::size_t n = 1 + choice(4);
    solution_ = point(n);
    Scenario result;
    addRows(result.problem, n);
    for (const mpq_class& component : solution_) {
      result.problem.lower.push_back(bound(component, -1));
      result.problem.upper.push_back(bound(component, 1));
    }
    const bool withTargets = !result.problem.targets.empty();
    for (unsigned i = choice(16); i > 0; --i) result.records.push_back(record(withTargets));
    return result;
  }

 private:
  unsigned choice(unsigned count) { return takeChoice(bytes_, count); }

  /// Mostly a small integer; else a decimal, a fraction, or an integer around the
  /// limits of the number types.
  mpq_class number() {
    mpq_class digit(static_cast<int>(choice(19)) - 9);
    switch (choice(8)) {
      case 0:
        return digit / mpq_class(powerOfTen(1 + choice(18)));
      case 1:
        return digit / mpq_class(1 + choice(13));
      case 2:
        return mpq_class(powerOfTen(9 + choice(12))) + digit;
      case 3:
        return mpq_class(mpz_class(1) << (30 + choice(40))) + digit;
      case 4:
        return digit * 100 + choice(100);
      default:
        return digit;
    }
  }

  Point point(std::size_t n) {
    Point result(n);
    for (mpq_class& component : result) component = number();
    return result;
  }

  mpq_class valueAt(const Point& row) const {
    mpq_class sum = 0;
    for (std::size_t j = 0; j < row.size(); ++j) sum += row[j] * solution_[j];
    return sum;
  }

  /// The value moved in the direction of `sign`, or that infinity.
  Bound bound(const mpq_class& value, int sign) {
    const unsigned kind = choice(4);
    if (kind == 0) return {sign, 0};
    if (kind == 1) return {0, value};
    return {0, value + sign * abs(number())};
  }

  void addRows(oracle::Problem& problem, std::size_t n) {
    for (unsigned i = choice(4); i > 0; --i) {
      const int infinite = static_cast<int>(choice(3)) - 1;
      const mpq_class goal = number();
      problem.targets.push_back({{infinite, goal}, point(n)});
    }
    for (unsigned i = choice(3); i > 0; --i) {
      oracle::Equation equation{point(n), 0, choice(2) == 0 ? mpq_class(0) : number()};
      equation.value = valueAt(equation.row) + equation.modulus * static_cast<int>(choice(5));
      problem.equations.push_back(equation);
    }
    // At least one row, so that there are columns.
    for (unsigned i = 1 + choice(3); i > 0; --i) {
      oracle::Inequation row{point(n), {}, {}};
      const mpq_class value = valueAt(row.row);
      row.lower = bound(value, -1);
      row.upper = row.lower.infinite != 0 ? Bound{0, value} : bound(value, 1);
      problem.inequations.push_back(row);
    }
  }

  Point neighbour() {
    Point result = solution_;
    mpq_class& component = result[choice(static_cast<unsigned>(result.size()))];
    switch (choice(4)) {
      case 0:
        break;
      case 1:
        component += mpq_class(static_cast<int>(choice(9)) - 4) / mpq_class(powerOfTen(9)) /
                     mpq_class(1 + choice(3));
        break;
      default:
        component += number();
    }
    return result;
  }

  /// Version and parameters never contradict each other, which would leave the
  /// order of two stars open.
  oracle::Record record(bool withTargets) {
    oracle::Record result;
    result.x = neighbour();
    const unsigned version = choice(3);
    result.version = "2." + std::to_string(version);
    result.params = std::string(1, static_cast<char>('c' - version)) + (choice(2) != 0 ? "=1" : "");
    result.time = static_cast<long>(choice(5)) - 1;
    // What a check recomputes may be stale.
    if (withTargets) result.targetNorm = number();
    return result;
  }

  std::string_view bytes_;
  Point solution_;
};

}  // namespace

std::string Scenario::starsText() const {
  std::string text;
  for (const oracle::Record& record : records) text += oracle::recordText(record) + "\n";
  return text;
}

Scenario scenarioOf(std::string_view bytes) {
  return Speller(bytes).scenario();
}

}  // namespace starsift::fuzz
