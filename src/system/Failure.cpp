#include "system/Failure.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string>

#include "system/Console.h"
#include "system/FailureRemark.h"

namespace starsift {

void fail(std::string_view message) {
  // The leading line feed separates the report from a progress line under way.
  std::cerr << "\n*** FAIL: " << message << endLine();
  if (const std::string remark = failureRemark(message); !remark.empty())
    std::cerr << remark << endLine();
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
