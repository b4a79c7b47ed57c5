#include <starsift/starsift.h>

#include <iostream>

int main() {
  // Fill 1000 exactly with at most 40 pieces of each kind, at the greatest value.
  starsift::Problem problem;
  for (const char* kind : {"tea", "rice", "salt", "silk"}) problem.addVariable(0, 40, kind);
  problem.addEquation({12, 17, 23, 31}, 1000, "weight");
  problem.maximise({3, 5, 7, 9});

  const starsift::Search::Result result = starsift::Search(problem).run();

  const starsift::Solution& best = result.solutions.front();
  for (std::size_t j = 0; j < best.x.size(); ++j)
    std::cout << problem.variableName(j) << " = " << best.x[j].text() << '\n';
  std::cout << "value " << best.targetValues[0].text() << '\n' << result.verdict << '\n';
}
