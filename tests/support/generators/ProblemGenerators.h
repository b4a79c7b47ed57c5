// RapidCheck generators of problems with points around one of their solutions.
#pragma once

#include <rapidcheck.h>

#include <ostream>
#include <string>
#include <vector>

#include "support/oracles/StarOracle.h"

namespace starsift::test {

/// The numbers of one generated problem are all of one kind.
enum class NumberKind { integer, decimal, fraction };

/// A small number of the kind.
inline mpq_class arbitraryNumber(NumberKind kind) {
  const auto integer = *rc::gen::inRange(-9, 10);
  mpq_class value(integer);
  if (kind == NumberKind::decimal) value /= *rc::gen::element(1, 1, 10, 100, 1000);
  if (kind == NumberKind::fraction) value /= *rc::gen::element(1, 1, 2, 3, 7);
  return value;
}

inline oracle::Point arbitraryPoint(std::size_t n, NumberKind kind) {
  oracle::Point point(n);
  for (mpq_class& component : point) component = arbitraryNumber(kind);
  return point;
}

inline mpq_class valueAt(const oracle::Point& row, const oracle::Point& x) {
  mpq_class sum = 0;
  for (std::size_t j = 0; j < row.size(); ++j) sum += row[j] * x[j];
  return sum;
}

/// A distance that is often nothing.
inline mpq_class arbitrarySlack(NumberKind kind) {
  return *rc::gen::element(0, 1, 1) == 0 ? mpq_class(0) : mpq_class(abs(arbitraryNumber(kind)));
}

/// The value moved in the direction of `sign`, or that infinity.
inline oracle::Bound arbitraryBound(const mpq_class& value, int sign, NumberKind kind) {
  if (*rc::gen::inRange(0, 5) == 0) return {sign, 0};
  return {0, value + sign * arbitrarySlack(kind)};
}

/// All kinds of rows over n variables, all true at `solution`.
inline oracle::Problem arbitraryProblemAt(const oracle::Point& solution, NumberKind kind) {
  const std::size_t n = solution.size();
  oracle::Problem problem;
  for (int i = *rc::gen::inRange(0, 4); i > 0; --i) {
    const int infinite = *rc::gen::element(-1, 0, 1);
    problem.targets.push_back({{infinite, arbitraryNumber(kind)}, arbitraryPoint(n, kind)});
  }
  for (int i = *rc::gen::inRange(0, 3); i > 0; --i) {
    oracle::Equation equation{arbitraryPoint(n, kind), 0, arbitraryNumber(kind)};
    equation.value = valueAt(equation.row, solution) + equation.modulus * *rc::gen::inRange(-2, 3);
    problem.equations.push_back(equation);
  }
  // At least one row, so that there are columns.
  for (int i = *rc::gen::inRange(1, 4); i > 0; --i) {
    oracle::Inequation row{arbitraryPoint(n, kind), {}, {}};
    const mpq_class value = valueAt(row.row, solution);
    row.lower = arbitraryBound(value, -1, kind);
    row.upper = row.lower.infinite != 0 ? oracle::Bound{0, value} : arbitraryBound(value, 1, kind);
    problem.inequations.push_back(row);
  }
  for (const mpq_class& component : solution) {
    problem.lower.push_back(arbitraryBound(component, -1, kind));
    problem.upper.push_back(arbitraryBound(component, 1, kind));
  }
  return problem;
}

/// A point beside `solution`: the same, one component moved, or moved by about the
/// tolerance of equations.
inline oracle::Point arbitraryNeighbour(oracle::Point solution, NumberKind kind) {
  mpq_class& component = solution[*rc::gen::inRange<std::size_t>(0, solution.size())];
  const mpq_class tolerance(1, 1'000'000'000);
  switch (*rc::gen::inRange(0, 6)) {
    case 0:
      break;
    case 1:
      component += tolerance * *rc::gen::element(-2, -1, 1, 2);
      break;
    case 2:
      component += tolerance * *rc::gen::element(-1, 1) / *rc::gen::inRange(2, 6);
      break;
    default:
      component += arbitraryNumber(kind);
  }
  return solution;
}

/// A record of a star. Version and parameters never contradict each other, which
/// would leave the order of two stars open.
inline oracle::Record arbitraryRecord(const oracle::Point& solution, NumberKind kind,
                                      bool withTargets) {
  oracle::Record record;
  record.x = arbitraryNeighbour(solution, kind);
  const int version = *rc::gen::inRange(0, 3);
  record.version = "2." + std::to_string(version);
  record.params = std::string(1, static_cast<char>('c' - version)) + *rc::gen::element("", "=1");
  record.time = *rc::gen::element(-1, 0, 5, 5, 60);
  // What a check recomputes may be stale.
  if (withTargets) {
    record.targetNorm = arbitraryNumber(kind);
    record.targetValues = arbitraryPoint(2, kind);
    record.slackNorm = arbitraryNumber(kind);
  }
  return record;
}

/// A problem and records of points around one of its solutions.
struct Scenario {
  oracle::Problem problem;
  std::vector<oracle::Record> records;

  std::string starsText() const {
    std::string text;
    for (const oracle::Record& record : records) text += oracle::recordText(record) + "\n";
    return text;
  }
};

inline rc::Gen<Scenario> arbitraryScenario() {
  return rc::gen::exec([] {
    const auto kind =
        *rc::gen::element(NumberKind::integer, NumberKind::decimal, NumberKind::fraction);
    const auto n = *rc::gen::inRange<std::size_t>(1, 5);
    const oracle::Point solution = arbitraryPoint(n, kind);
    Scenario scenario{arbitraryProblemAt(solution, kind), {}};
    const bool withTargets = !scenario.problem.targets.empty();
    for (int i = *rc::gen::inRange(0, 20); i > 0; --i)
      scenario.records.push_back(arbitraryRecord(solution, kind, withTargets));
    return scenario;
  });
}

}  // namespace starsift::test

// How a counterexample is shown.

/// Without it the stream operator of GMP would be asked, which is in a library of
/// its own.
inline void showValue(const mpq_class& value, std::ostream& stream) {
  stream << value.get_str();
}

namespace starsift::test {

inline void showValue(const Scenario& scenario, std::ostream& stream) {
  stream << "\n" << oracle::problemText(scenario.problem) << "--\n" << scenario.starsText();
}

}  // namespace starsift::test
