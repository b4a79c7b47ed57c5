#include "Target.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>

#include "system/Failure.h"

namespace starsift {

// The linker takes these for those of the static library.

void fail(std::string_view message) {
  throw fuzz::Failure{std::string(message)};
}

void failErrno(std::string_view message) {
  fail(message);
}

namespace fuzz {

void runOnce(std::string_view bytes) {
  try {
    runTarget(bytes);
  } catch (const Failure&) {
    // Refused, as bad input may be.
  } catch (const std::bad_alloc&) {
    require(false, "input asks for no more memory than there is");
  } catch (const std::exception&) {
    // Refused, too.
  }
}

void require(bool holds, std::string_view claim) {
  if (holds) return;
  std::cerr << "does not hold: " << claim << std::endl;
  std::abort();
}

unsigned takeChoice(std::string_view& bytes, unsigned count) {
  if (bytes.empty()) return 0;
  const unsigned choice = static_cast<unsigned char>(bytes.front()) % count;
  bytes.remove_prefix(1);
  return choice;
}

}  // namespace fuzz

}  // namespace starsift
