#include "core/System.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>

namespace starsift {
namespace {

/// A file that exists as long as the object.
class ScratchFile {
 public:
  explicit ScratchFile(const std::string& content)
      : path_(testing::TempDir() + "system-" + std::to_string(getpid())) {
    std::ofstream(path_) << content;
  }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;
  ~ScratchFile() { std::remove(path_.c_str()); }
  const std::string& path() const { return path_; }

 private:
  std::string path_;
};

/// A statm file of a process with so many resident bytes.
std::string statm(long double residentBytes) {
  const auto pages =
      static_cast<long>(residentBytes / static_cast<long double>(sysconf(_SC_PAGESIZE)));
  return "99999999 " + std::to_string(pages) + " 12 1 0 34 0\n";
}

constexpr long double gibibyte = 1024.0L * 1024 * 1024;

TEST(ResidentMemory, IsRoundedToWholeGibibytes) {
  EXPECT_EQ(residentGibibytes(ScratchFile(statm(3 * gibibyte)).path()), 3);
  EXPECT_EQ(residentGibibytes(ScratchFile(statm(2.5L * gibibyte)).path()), 3);
  EXPECT_EQ(residentGibibytes(ScratchFile(statm(2.4L * gibibyte)).path()), 2);
}

TEST(ResidentMemory, OfASmallProcessIsZero) {
  EXPECT_EQ(residentGibibytes(), 0);
}

TEST(ResidentMemory, IsZeroWhenItCanNotBeRead) {
  EXPECT_EQ(residentGibibytes("/no/such/file"), 0);
  EXPECT_EQ(residentGibibytes(ScratchFile("12\n").path()), 0);
}

TEST(AvailableMemory, IsTheFigureOfItsLine) {
  const ScratchFile file(
      "MemTotal:       16000000 kB\nMemAvailable:    8123456 kB\nBuffers: 1 kB\n");
  EXPECT_EQ(availableKibibytes(file.path()), 8123456);
}

TEST(AvailableMemory, IsZeroWithoutSuchALine) {
  EXPECT_EQ(availableKibibytes(ScratchFile("MemTotal: 1 kB\n").path()), 0);
  EXPECT_EQ(availableKibibytes("/no/such/file"), 0);
}

TEST(AvailableMemory, OfThisMachineIsKnown) {
  EXPECT_GT(availableKibibytes(), 0);
}

}  // namespace
}  // namespace starsift
