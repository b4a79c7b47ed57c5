#include <starsift/starsift.h>

#include <iostream>
#include <vector>

int main() {
  const starsift::Problem problem = starsift::Problem::read("knapsack.opt");
  const std::vector<std::vector<starsift::Number>> points{
      {1, 4, 40, 0}, {0, 1, 36, 6}, {"1/2", 4, 40, 41}};

  for (const starsift::Verdict& verdict : starsift::check(problem, points)) {
    std::cout << (verdict.isSolution ? "a solution" : "no solution") << '\n';
    for (const starsift::Violation& violation : verdict.violations)
      std::cout << "  " << violation.name << " by " << violation.amount.text() << '\n';
  }
}
