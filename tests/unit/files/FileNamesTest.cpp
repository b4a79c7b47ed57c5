#include "files/FileNames.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

TEST(FileNames, ShareTheStemOfTheSolutionFile) {
  const FileNames names = fileNames("a.sol");
  EXPECT_EQ(names.optFile, "a.opt");
  EXPECT_EQ(names.solFile, "a.sol");
  EXPECT_EQ(names.latFile, "a.lat");
}

TEST(FileNames, KeepTheDotsOfDirectories) {
  EXPECT_EQ(fileNames("dir.d/a.sol").optFile, "dir.d/a.opt");
}

TEST(FileNames, LoseTheLastExtensionOnly) {
  EXPECT_EQ(fileNames("a.b.sol").optFile, "a.b.opt");
}

TEST(FileNames, OfAPathWithoutExtensionKeepAllOfIt) {
  EXPECT_EQ(fileNames("dir.d/a").optFile, "dir.d/a.opt");
}

TEST(FileNames, OfNothingButASuffixKeepIt) {
  EXPECT_EQ(fileNames(".sol").optFile, ".sol.opt");
  EXPECT_EQ(fileNames(".sol").solFile, ".sol.sol");
}

TEST(FileNames, OfASuffixInADirectoryLoseIt) {
  EXPECT_EQ(fileNames("dir/.sol").optFile, "dir/.opt");
}

TEST(FileNames, MayHaveAnEmptyExtension) {
  EXPECT_EQ(fileNames("a.").optFile, "a.opt");
}

TEST(FileNames, MayBeLongerThanAnyPath) {
  const std::string stem = "x." + std::string(500'000, 'a');
  EXPECT_EQ(fileNames(stem + ".sol").optFile, stem + ".opt");
}

}  // namespace
}  // namespace starsift
