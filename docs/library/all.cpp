#include <starsift/starsift.h>

#include <iostream>

int main() {
  // Which x from 0 to 999 leave 2 divided by 3, 3 divided by 5 and 2 divided by 7?
  starsift::Problem problem;
  problem.addVariable(0, 999);
  problem.addCongruence({1}, 2, 3);
  problem.addCongruence({1}, 3, 5);
  problem.addCongruence({1}, 2, 7);

  starsift::Search search(problem);
  search.set("sol", 0);  // all of them
  std::size_t told = 0;
  search.onSolution([&told](const starsift::Solution&) { ++told; });
  const starsift::Search::Result result = search.run();

  std::cout << told << " solutions were told\n" << result.verdict << '\n';
  for (const starsift::Solution& solution : result.solutions)
    std::cout << solution.x[0].text() << ' ';
}
