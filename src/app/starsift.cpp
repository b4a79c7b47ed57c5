// The command: checks the stars of a solution file against its problem and rewrites the file in
// canonical form.
#include <cstdlib>
#include <iostream>
#include <string>

#include "app/Program.h"
#include "app/Sift.h"
#include "system/Console.h"
#include "system/Signals.h"
#include "text/Text.h"

/// Usage: starsift file.sol. Of two arguments the last one counts.
int main(int count, char** arguments) {
  starsift::prepareProgram();
  const std::string solFile = count > 1 ? arguments[count - 1] : "";
  if (count < 2 || count > 3 || !starsift::endsWith(solFile, ".sol")) {
    starsift::printUsage(count > 0 ? arguments[0] : "", "*.sol");
    return starsift::statusOfOutput(EXIT_FAILURE);
  }
  starsift::unlinkSemaphoresOnSignals();
  // Never destroyed: the process ends, and freeing the stars one by one takes as long as sorting
  // them.
  static auto& lattice = *starsift::unwinding([] { return new starsift::YLattice<long double>; });
  starsift::unwinding([&solFile] { starsift::siftStars(lattice, solFile, std::cout); });
  std::cout << starsift::endLine();
  starsift::stampOutputTime();
  return starsift::statusOfOutput(EXIT_SUCCESS);
}
