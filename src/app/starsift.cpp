// The command: checks the stars of a solution file against its problem and rewrites the file in
// canonical form.
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <iostream>
#include <string>

#include "app/Program.h"
#include "app/Sift.h"
#include "app/SiftStatus.h"
#include "app/StatusLine.h"
#include "system/Console.h"
#include "system/Signals.h"
#include "text/Text.h"

namespace starsift {
namespace {

/// A run that takes longer shows how far it is.
constexpr std::chrono::seconds patience{2};

void sift(const std::string& solFile, StatusLine::Clock::time_point start) {
  StatusLine line(errorTerminal(), start + patience - StatusLine::interval,
                  [] { return statusWidth(STDERR_FILENO); });
  const ClearedStream output(std::cout, line);
  const ClearedStream errors(std::cerr, line);
  // Never destroyed: the process ends.
  static auto& lattice = *new YLattice<long double>;
  siftStars(lattice, solFile, std::cout, [&line](const ReadProgress& progress) {
    const auto now = StatusLine::Clock::now();
    if (line.isDue(now)) line.draw(siftStatus(progress), now);
  });
}

}  // namespace
}  // namespace starsift

/// Usage: starsift file.sol. Of two arguments the last one counts.
int main(int count, char** arguments) {
  const auto start = starsift::StatusLine::Clock::now();
  starsift::prepareProgram();
  const std::string solFile = count > 1 ? arguments[count - 1] : "";
  if (count < 2 || count > 3 || !starsift::endsWith(solFile, ".sol")) {
    starsift::printUsage(count > 0 ? arguments[0] : "", "*.sol");
    return starsift::statusOfOutput(EXIT_FAILURE);
  }
  starsift::unlinkSemaphoresOnSignals();
  starsift::unwinding([&] { starsift::sift(solFile, start); });
  std::cout << starsift::endLine();
  starsift::stampOutputTime();
  return starsift::statusOfOutput(EXIT_SUCCESS);
}
