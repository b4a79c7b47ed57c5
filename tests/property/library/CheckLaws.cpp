// Checks and searches of the library on small problems, against whole numbers counted by hand, and
// the texts of problems.
#include <gtest/gtest.h>
#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <starsift/starsift.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace starsift {
namespace {

using Integers = std::vector<int>;

/// row x = lower, congruent to it modulo `modulus`, or lower <= row x <= upper.
struct PlainRow {
  Integers coefficients;
  int lower = 0;
  int upper = 0;
  int modulus = 0;
  bool isRange = false;
};

struct PlainProblem {
  Integers lower;
  Integers upper;
  std::vector<PlainRow> rows;
  Integers target;
};

int product(const Integers& row, const Integers& x) {
  int sum = 0;
  for (std::size_t j = 0; j < x.size(); ++j) sum += row[j] * x[j];
  return sum;
}

/// By how much a row is broken; 0 if it holds.
int amount(const PlainRow& row, const Integers& x) {
  const int value = product(row.coefficients, x);
  if (row.isRange) return std::max({row.lower - value, value - row.upper, 0});
  const int miss = std::abs(value - row.lower);
  if (row.modulus == 0) return miss;
  return std::min(miss % row.modulus, row.modulus - miss % row.modulus);
}

/// The amounts of all that is broken, the largest first.
Integers amounts(const PlainProblem& problem, const Integers& x) {
  Integers result;
  for (const PlainRow& row : problem.rows) result.push_back(amount(row, x));
  for (std::size_t j = 0; j < x.size(); ++j) {
    result.push_back(std::max(problem.lower[j] - x[j], 0));
    result.push_back(std::max(x[j] - problem.upper[j], 0));
  }
  std::erase(result, 0);
  std::sort(result.rbegin(), result.rend());
  return result;
}

rc::Gen<PlainRow> rowOf(std::size_t variables) {
  return rc::gen::exec([variables] {
    PlainRow row;
    row.coefficients =
        *rc::gen::container<Integers>(variables, rc::gen::inRange(-9, 10)).as("coefficients");
    row.lower = *rc::gen::inRange(-20, 30);
    row.upper = row.lower + *rc::gen::inRange(0, 20);
    row.isRange = *rc::gen::arbitrary<bool>();
    row.modulus = *rc::gen::element(0, 0, 2, 3, 7);
    return row;
  });
}

rc::Gen<PlainProblem> anyProblem() {
  return rc::gen::exec([] {
    PlainProblem problem;
    const auto variables = *rc::gen::inRange<std::size_t>(1, 4);
    problem.lower = *rc::gen::container<Integers>(variables, rc::gen::inRange(-4, 3));
    for (const int lower : problem.lower) problem.upper.push_back(lower + *rc::gen::inRange(0, 6));
    problem.rows =
        *rc::gen::container<std::vector<PlainRow>>(*rc::gen::inRange(0, 3), rowOf(variables));
    problem.target = *rc::gen::container<Integers>(variables, rc::gen::inRange(-5, 6));
    return problem;
  });
}

Problem built(const PlainProblem& plain) {
  Problem problem;
  for (std::size_t j = 0; j < plain.lower.size(); ++j)
    problem.addVariable(plain.lower[j], plain.upper[j]);
  for (const PlainRow& row : plain.rows) {
    if (row.isRange)
      problem.addRange(row.coefficients, row.lower, row.upper);
    else if (row.modulus == 0)
      problem.addEquation(row.coefficients, row.lower);
    else
      problem.addCongruence(row.coefficients, row.lower, row.modulus);
  }
  problem.minimise(plain.target);
  return problem;
}

/// All points of the box, in the order of an odometer.
std::vector<Integers> boxOf(const PlainProblem& problem) {
  std::vector<Integers> points{problem.lower};
  for (std::size_t j = 0; j < problem.lower.size(); ++j) {
    const std::vector<Integers> before = points;
    for (int value = problem.lower[j] + 1; value <= problem.upper[j]; ++value)
      for (Integers point : before) {
        point[j] = value;
        points.push_back(point);
      }
  }
  return points;
}

std::vector<Number> numbers(const Integers& x) {
  return {x.begin(), x.end()};
}

RC_GTEST_PROP(LibraryLaws, CheckNamesEachAmountOfAPoint, ()) {
  const PlainProblem plain = *anyProblem();
  const auto x = *rc::gen::container<Integers>(plain.lower.size(), rc::gen::inRange(-6, 9));
  const Integers expected = amounts(plain, x);
  const Verdict verdict = check(built(plain), numbers(x));
  RC_ASSERT(verdict.isSolution == expected.empty());
  RC_ASSERT(verdict.violations.size() == expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i)
    RC_ASSERT(verdict.violations[i].amount == Number(expected[i]));
  if (verdict.isSolution) RC_ASSERT(verdict.targetNorm == Number(product(plain.target, x)));
}

RC_GTEST_PROP(LibraryLaws, MachineIntegersHaveTheVerdictOfNumbers, ()) {
  const PlainProblem plain = *anyProblem();
  const auto x = *rc::gen::container<Integers>(plain.lower.size(), rc::gen::inRange(-6, 9));
  const std::vector<std::int64_t> words(x.begin(), x.end());
  Checker checker(built(plain));
  const Verdict byWords = checker.check(words);
  const Verdict byNumbers = checker.check(numbers(x));
  RC_ASSERT(byWords.isSolution == byNumbers.isSolution);
  RC_ASSERT(byWords.targetValues == byNumbers.targetValues);
  RC_ASSERT(byWords.violations.size() == byNumbers.violations.size());
}

RC_GTEST_PROP(LibraryLaws, SearchFindsWhatTheBoxHas, ()) {
  const PlainProblem plain = *anyProblem();
  std::set<std::vector<Number>> expected;
  for (const Integers& x : boxOf(plain))
    if (amounts(plain, x).empty()) expected.insert(numbers(x));
  const Search::Result result = Search(built(plain)).set("sol", 0).set("rtime", 60).run();
  std::set<std::vector<Number>> found;
  for (const Solution& solution : result.solutions) found.insert(solution.x);
  RC_ASSERT(found == expected);
  RC_ASSERT(result.proof ==
            (expected.empty() ? Search::Proof::infeasible : Search::Proof::allFound));
}

RC_GTEST_PROP(LibraryLaws, RecordsComeBackFromTheirText, ()) {
  const PlainProblem plain = *anyProblem();
  const Problem problem = built(plain);
  std::vector<Solution> solutions;
  for (const Integers& x : boxOf(plain)) {
    Solution& solution = solutions.emplace_back();
    solution.x = numbers(x);
  }
  const std::string text = problem.toSol(solutions);
  const std::vector<Solution> read = problem.fromSol(text);
  for (const Solution& solution : read) RC_ASSERT(check(problem, solution.x).isSolution);
  RC_ASSERT(problem.toSol(read) == text);
  const auto right = std::count_if(solutions.begin(), solutions.end(), [&](const Solution& s) {
    return check(problem, s.x).isSolution;
  });
  RC_ASSERT(read.size() == static_cast<std::size_t>(right));
}

RC_GTEST_PROP(LibraryLaws, ProblemsComeBackFromTheirText, ()) {
  const PlainProblem plain = *anyProblem();
  const auto x = *rc::gen::container<Integers>(plain.lower.size(), rc::gen::inRange(-6, 9));
  const Problem problem = built(plain);
  const Problem again = Problem::fromText(problem.toText());
  RC_ASSERT(again.toOpt() == problem.toOpt());
  const Verdict verdict = check(problem, numbers(x));
  const Verdict verdictAgain = check(again, numbers(x));
  RC_ASSERT(verdictAgain.violations.size() == verdict.violations.size());
  for (std::size_t i = 0; i < verdict.violations.size(); ++i)
    RC_ASSERT(verdictAgain.violations[i].name == verdict.violations[i].name);
}

RC_GTEST_PROP(LibraryLaws, OtherTextsAreRefusedOrThoseOfAProblem, ()) {
  constexpr std::string_view characters = " \n0123456789:/=<.-+einfx";
  std::string text = built(*anyProblem()).toText();
  for (int i = *rc::gen::inRange(1, 4); i > 0; --i)
    text[*rc::gen::inRange<std::size_t>(0, text.size())] =
        characters[*rc::gen::inRange<std::size_t>(0, characters.size())];
  try {
    const std::string read = Problem::fromText(text).toText();
    RC_ASSERT(Problem::fromText(read).toText() == read);
  } catch (const Error&) {
    // Most are refused.
  }
}

}  // namespace
}  // namespace starsift
