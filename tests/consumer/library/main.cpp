// The smallest program that checks a point and searches for a better one.
#include <starsift/starsift.h>

#include <iostream>
#include <vector>

int main() {
  starsift::Problem problem;
  for (int i = 0; i < 3; ++i) problem.addVariable(0, 9);
  problem.addEquation({"1/2", 3, 5}, 29);
  problem.maximise({1, 1, 1});

  const std::vector<starsift::Number> point{1, 3, 4};
  const starsift::Verdict verdict = starsift::check(problem, point);
  std::cout << verdict.violations.at(0).name << " by " << verdict.violations[0].amount.text()
            << '\n';

  const starsift::Search::Result result = starsift::Search(problem).run();
  for (const starsift::Number& component : result.solutions.at(0).x)
    std::cout << component.text() << ' ';
  std::cout << '\n' << result.verdict << '\n';

  try {
    starsift::Problem::fromOpt("[ ");
  } catch (const starsift::Error& error) {
    std::cout << error.what() << '\n';
  }
}
