#include "system/LargePages.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

namespace starsift {
namespace {

/// Pages of its own, as malloc() takes them for large blocks.
class FreshBlock {
 public:
  explicit FreshBlock(std::size_t size)
      : size_(size),
        memory_(static_cast<char*>(
            mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0))) {}
  FreshBlock(const FreshBlock&) = delete;
  FreshBlock& operator=(const FreshBlock&) = delete;
  ~FreshBlock() { munmap(memory_, size_); }

  char* data() const { return memory_; }

  /// The system knows the wish for large pages at `address`.
  static bool hasWish(const char* address) {
    std::ifstream maps("/proc/self/smaps");
    bool isHere = false;
    for (std::string line; std::getline(maps, line);) {
      std::uintptr_t from = 0;
      std::uintptr_t to = 0;
      char dash = 0;
      if (std::istringstream(line) >> std::hex >> from >> dash >> to && dash == '-')
        isHere = from <= reinterpret_cast<std::uintptr_t>(address) &&
                 reinterpret_cast<std::uintptr_t>(address) < to;
      if (isHere && line.rfind("VmFlags:", 0) == 0) return line.find(" hg") != std::string::npos;
    }
    return false;
  }

 private:
  std::size_t size_;
  char* memory_;
};

constexpr std::size_t large = std::size_t{80} << 20U;

class LargePages : public testing::Test {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists("/sys/kernel/mm/transparent_hugepage"))
      GTEST_SKIP() << "no large pages here";
  }
};

TEST_F(LargePages, AreAskedForLargeBlocksThatBeginAnywhere) {
  const FreshBlock block(large);
  preferLargePages(block.data() + 16, large - 16);
  EXPECT_TRUE(FreshBlock::hasWish(block.data() + large / 2));
}

TEST_F(LargePages, AreNotAskedForSmallBlocks) {
  const FreshBlock block(large);
  preferLargePages(block.data(), std::size_t{1} << 20U);
  EXPECT_FALSE(FreshBlock::hasWish(block.data()));
}

}  // namespace
}  // namespace starsift
