#include "app/Program.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>

#include "system/Console.h"
#include "system/Failure.h"
#include "system/Semaphore.h"

namespace starsift {

namespace {

[[noreturn]] void reportUncaught() {
  unlinkAllSemaphores();
  std::string name = "unknown exception";
  try {
    if (const std::exception_ptr current = std::current_exception())
      std::rethrow_exception(current);
  } catch (const std::exception& exception) {
    name = exception.what();
  } catch (...) {
    // An exception of another type has no name.
  }
  std::cerr << "terminate: " << name << std::endl;
  const std::string remark = failureRemark(name);
  if (!remark.empty()) std::cerr << remark << std::endl;
  std::abort();
}

std::string_view nameOf(std::string_view path) {
  return path.substr(path.rfind('/') + 1);
}

}  // namespace

void prepareProgram() {
  // Open for reading, so that writing fails as it did.
  int descriptor = 0;
  while (descriptor >= 0 && descriptor <= STDERR_FILENO) descriptor = open("/dev/null", O_RDONLY);
  if (descriptor > STDERR_FILENO) close(descriptor);
  failWithoutMemory();
  nameUncaughtExceptions();
}

void nameUncaughtExceptions() {
  std::set_terminate(reportUncaught);
}

void printUsage(std::string_view path, std::string_view arguments) {
  std::cout << "Usage: " << nameOf(path) << ' ' << arguments << endLine();
  stampOutputTime();
}

void printVersion(std::string_view path) {
  std::cout << nameOf(path) << ' ' << STARSIFT_VERSION << endLine();
  stampOutputTime();
}

int statusOfOutput(int status) {
  if (std::cout.flush()) return status;
  std::cerr << "*** Could not write the report" << std::endl;
  return EXIT_FAILURE;
}

}  // namespace starsift
