#include "system/WholeWrite.h"

#include <unistd.h>

#include "system/SystemCall.h"

namespace starsift {

bool writeAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count =
        uninterrupted([&] { return write(descriptor, text.data(), text.size()); });
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

bool syncFile(int descriptor) {
  return uninterrupted([&] { return fsync(descriptor); }) == 0;
}

}  // namespace starsift
