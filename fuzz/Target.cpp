#include "Target.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>

#include "system/Failure.h"

namespace starsift::fuzz {

namespace {

void throwFailure(std::string_view message) {
  throw Failure{std::string(message)};
}

}  // namespace

void runOnce(std::string_view bytes) {
  // Here because the main of the fuzzer belongs to libFuzzer.
  setFailureHandler(throwFailure);
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

}  // namespace starsift::fuzz
