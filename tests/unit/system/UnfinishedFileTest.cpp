#include "system/UnfinishedFile.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <optional>

#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

using Names = std::vector<std::string>;

class UnfinishedFileTest : public testing::Test {
 protected:
  test::ScratchDir dir_;
  FilePlace place_{dir_.write("p.sol", "old")};
};

TEST_F(UnfinishedFileTest, IsGoneAtTheEndOfItsLifetime) {
  {
    const UnfinishedFile file(place_, 0600);
    EXPECT_TRUE(file.isOpen());
    EXPECT_EQ(dir_.names().size(), 2U);
  }
  EXPECT_EQ(dir_.names(), Names{"p.sol"});
  EXPECT_EQ(dir_.read("p.sol"), "old");
}

TEST_F(UnfinishedFileTest, TakesTheNameOfTheOldOne) {
  {
    UnfinishedFile file(place_, 0600);
    ASSERT_EQ(write(file.descriptor(), "new", 3), 3);
    EXPECT_TRUE(file.close());
    EXPECT_TRUE(file.replaceOld());
  }
  EXPECT_EQ(dir_.names(), Names{"p.sol"});
  EXPECT_EQ(dir_.read("p.sol"), "new");
}

TEST_F(UnfinishedFileTest, BringsTheOldOneBack) {
  UnfinishedFile kept(place_, UnfinishedFile::Kept::oldFile);
  EXPECT_TRUE(kept.exists());
  {
    UnfinishedFile file(place_, 0600);
    EXPECT_TRUE(file.replaceOld());
  }
  EXPECT_EQ(dir_.read("p.sol"), "");
  EXPECT_TRUE(kept.replaceOld());
  EXPECT_EQ(dir_.names(), Names{"p.sol"});
  EXPECT_EQ(dir_.read("p.sol"), "old");
}

TEST_F(UnfinishedFileTest, KeepsTheOldOneForItsLifetimeOnly) {
  {
    const UnfinishedFile kept(place_, UnfinishedFile::Kept::oldFile);
    EXPECT_EQ(dir_.names().size(), 2U);
  }
  EXPECT_EQ(dir_.names(), Names{"p.sol"});
}

TEST_F(UnfinishedFileTest, KeepsNothingIfThereIsNoOldOne) {
  const FilePlace empty(dir_.path() + "/q.sol");
  const UnfinishedFile kept(empty, UnfinishedFile::Kept::oldFile);
  EXPECT_FALSE(kept.exists());
}

TEST_F(UnfinishedFileTest, IsOneOfSeveralThatGoInAnyOrder) {
  std::optional<UnfinishedFile> files[3];
  for (auto& file : files) file.emplace(place_, 0600);
  EXPECT_EQ(dir_.names().size(), 4U);
  files[1].reset();
  EXPECT_EQ(dir_.names().size(), 3U);
  EXPECT_TRUE(files[2]->replaceOld());
  files[0].reset();
  files[2].reset();
  EXPECT_EQ(dir_.names(), Names{"p.sol"});
}

TEST_F(UnfinishedFileTest, IsGoneWhenTheProcessEndsWithoutDestructors) {
  const auto endWithTwo = [this] {
    const UnfinishedFile one(place_, 0600);
    const UnfinishedFile two(place_, 0600);
    std::exit(0);
  };
  EXPECT_EXIT(endWithTwo(), testing::ExitedWithCode(0), "");
  EXPECT_EQ(dir_.names(), Names{"p.sol"});
}

TEST_F(UnfinishedFileTest, StaysWhenAChildOfTheProcessEnds) {
  const UnfinishedFile file(place_, 0600);
  EXPECT_EXIT(std::exit(0), testing::ExitedWithCode(0), "");
  EXPECT_EQ(dir_.names().size(), 2U);
}

}  // namespace
}  // namespace starsift
