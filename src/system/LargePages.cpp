#include "system/LargePages.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>

namespace starsift {

namespace {

/// From this many bytes on.
constexpr std::size_t largeBlock = std::size_t{64} << 20U;

}  // namespace

void preferLargePages(void* memory, std::size_t size) {
  if (size < largeBlock) return;
  const auto page = static_cast<std::uintptr_t>(sysconf(_SC_PAGESIZE));
  const auto skipped = (page - reinterpret_cast<std::uintptr_t>(memory) % page) % page;
  // Only a wish: without it the memory is as good.
  static_cast<void>(madvise(static_cast<char*>(memory) + skipped, size - skipped, MADV_HUGEPAGE));
}

}  // namespace starsift
