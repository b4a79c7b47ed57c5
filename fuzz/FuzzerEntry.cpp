// The entry that libFuzzer's main calls for each input.
#include <cstddef>
#include <cstdint>

#include "Target.h"

// NOLINTNEXTLINE(readability-identifier-naming): the name is libFuzzer's.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  starsift::fuzz::runOnce({reinterpret_cast<const char*>(data), size});
  return 0;
}
