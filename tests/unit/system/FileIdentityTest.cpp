#include "system/FileIdentity.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

/// The file was last written at that time.
void setTime(const std::string& path, long nanoseconds) {
  const struct timespec times[2] = {{1000, 0}, {1000, nanoseconds}};
  ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
}

TEST(FileIdentity, IsNothingWithoutFile) {
  const test::ScratchDir dir;
  EXPECT_EQ(fileIdentity(dir.file("p.sol")), std::nullopt);
}

TEST(FileIdentity, StaysAsLongAsNobodyWrites) {
  const test::ScratchDir dir;
  const std::string path = dir.write("p.sol", "[ 1 ]");
  const auto before = fileIdentity(path);
  EXPECT_NE(before, std::nullopt);
  EXPECT_EQ(dir.read("p.sol"), "[ 1 ]");
  EXPECT_EQ(fileIdentity(path), before);
}

TEST(FileIdentity, OfAnOpenFileIsThatOfItsPath) {
  const test::ScratchDir dir;
  const std::string path = dir.write("p.sol", "[ 1 ]");
  const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
  EXPECT_EQ(fileIdentity(descriptor), fileIdentity(path));
  close(descriptor);
  EXPECT_EQ(fileIdentity(-1), std::nullopt);
}

TEST(FileIdentity, ChangesWithTheSize) {
  const test::ScratchDir dir;
  const std::string path = dir.write("p.sol", "[ 1 ]");
  setTime(path, 1);
  const auto before = fileIdentity(path);
  dir.write("p.sol", "[ 1 2 ]");
  setTime(path, 1);
  EXPECT_NE(fileIdentity(path), before);
}

TEST(FileIdentity, ChangesWithTheTimeInNanoseconds) {
  const test::ScratchDir dir;
  const std::string path = dir.write("p.sol", "[ 1 ]");
  setTime(path, 1);
  const auto before = fileIdentity(path);
  setTime(path, 2);
  EXPECT_NE(fileIdentity(path), before);
}

TEST(FileIdentity, ChangesWithAFileInPlaceOfTheFile) {
  const test::ScratchDir dir;
  const std::string path = dir.write("p.sol", "[ 1 ]");
  setTime(path, 1);
  const auto before = fileIdentity(path);
  setTime(dir.write("q.sol", "[ 2 ]"), 1);
  std::filesystem::rename(dir.file("q.sol"), path);
  EXPECT_NE(fileIdentity(path), before);
}

}  // namespace
}  // namespace starsift
