#include "ThrowingFailure.h"

#include "system/Failure.h"

namespace starsift {

// The linker takes these for those of the library.

void fail(std::string_view message) {
  throw test::FatalReport(std::string(message));
}

void failErrno(std::string_view message) {
  fail(message);
}

}  // namespace starsift
