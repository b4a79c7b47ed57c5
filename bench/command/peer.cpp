// The whole job of the command as a straightforward program over GMP's C++ classes: what the runs
// of the command are measured against. It knows the generated inputs of inputs.py, not every text
// that the command knows.
#include <cstdlib>
#include <iostream>

#include "peer/Stars.h"

int main(int count, char** arguments) {
  if (count != 2) return EXIT_FAILURE;
  const std::string solFile = arguments[1];
  const std::string stem = solFile.substr(0, solFile.rfind('.'));
  const peer::Problem problem(peer::fileText(stem + ".opt"));
  std::vector<peer::Star> stars = peer::readStars(solFile);
  peer::checkStars(problem, stars);
  peer::sortStars(stars);
  peer::removeDuplicates(stars, true);
  peer::writeStars(solFile, stars);
  // The file keeps stars that differ in their parameters; the report doesn't.
  peer::removeDuplicates(stars, false);
  peer::writeReport(std::cout, problem, stars);
  std::cout << '\n';
  return EXIT_SUCCESS;
}
