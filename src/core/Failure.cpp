#include "core/Failure.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>

#include "core/Console.h"

namespace starsift {

void fail(std::string_view message) {
  // The leading line feed separates the report from a progress line under way.
  std::cerr << "\n*** FAIL: " << message << endLine();
  stampFailureTime();
  std::exit(1);
}

void failErrno(std::string_view message) {
  const char* const reason = std::strerror(errno);  // writing may change errno
  std::cerr << "ERRNO = " << reason << endLine();
  stampFailureTime();
  fail(message);
}

}  // namespace starsift
