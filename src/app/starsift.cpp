// The command: re-validates the stars of a solution file against its problem and
// rewrites the file in canonical form.
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

#include "app/Sift.h"
#include "core/Console.h"
#include "core/EndingSignals.h"
#include "core/Semaphore.h"
#include "core/Text.h"

namespace starsift {
namespace {

std::string programName(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

void printUsage(const std::string& path) {
  std::cout << "Usage: " << programName(path) << " *.sol" << endLine();
  stampOutputTime();
}

/// Names the exception that nobody caught before the process aborts.
[[noreturn]] void reportUncaught() {
  unlinkAllSemaphores();
  std::string name = "unknown exception";
  try {
    if (const std::exception_ptr current = std::current_exception())
      std::rethrow_exception(current);
  } catch (const std::exception& exception) {
    name = exception.what();
  } catch (...) {
    // It has no name.
  }
  std::cerr << "terminate: " << name << std::endl;
  std::abort();
}

/// Without a handler above it an exception would end the process on the spot, and
/// the unfinished new file would stay beside the old one.
void siftUnwinding(const std::string& solFile) {
  // Never destroyed: the process ends, and to free the stars one by one takes as
  // long as to sort them.
  static auto& lattice = *new YLattice<long double>;
  try {
    siftStars(lattice, solFile, std::cout);
  } catch (...) {
    throw;
  }
}

}  // namespace
}  // namespace starsift

/// Usage: starsift file.sol. Of two arguments the last one counts.
int main(int count, char** arguments) {
  std::set_terminate(starsift::reportUncaught);
  const std::string solFile = count > 1 ? arguments[count - 1] : "";
  if (count < 2 || count > 3 || !starsift::endsWith(solFile, ".sol")) {
    starsift::printUsage(count > 0 ? arguments[0] : "");
    return EXIT_FAILURE;
  }
  starsift::unlinkSemaphoresOnSignals();
  starsift::siftUnwinding(solFile);
  std::cout << starsift::endLine();
  starsift::stampOutputTime();
  return EXIT_SUCCESS;
}
