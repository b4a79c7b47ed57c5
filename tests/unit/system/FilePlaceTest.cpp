#include "system/FilePlace.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>

#include "support/fixtures/ScratchDir.h"
#include "support/fixtures/Unprivileged.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using Names = std::vector<std::string>;

class FilePlaceTest : public testing::Test {
 protected:
  std::string makeFolder(const std::string& name) const {
    std::filesystem::create_directory(dir_.file(name));
    return dir_.file(name);
  }

  test::ScratchDir dir_;
};

TEST_F(FilePlaceTest, OfAFileIsTheFile) {
  const std::string path = dir_.write("p.sol", "text");
  const FilePlace place(path);
  EXPECT_TRUE(place.isReachable());
  EXPECT_EQ(place.path(), path);
  EXPECT_EQ(place.identity(), fileIdentity(path));
  EXPECT_EQ(fileIdentity(place.open(O_RDONLY).number()), fileIdentity(path));
}

TEST_F(FilePlaceTest, NeedsNoFile) {
  const FilePlace place(dir_.file("p.sol"));
  EXPECT_TRUE(place.isReachable());
  EXPECT_EQ(place.identity(), std::nullopt);
  EXPECT_FALSE(place.open(O_RDONLY).isOpen());
  EXPECT_EQ(errno, ENOENT);
}

TEST_F(FilePlaceTest, NeedsAFolder) {
  const FilePlace place(dir_.file("none/p.sol"));
  EXPECT_FALSE(place.isReachable());
  EXPECT_EQ(place.error(), ENOENT);
  dir_.write("file", "");
  EXPECT_EQ(FilePlace(dir_.file("file/p.sol")).error(), ENOTDIR);
  EXPECT_FALSE(FilePlace("").isReachable());
  EXPECT_FALSE(FilePlace(makeFolder("folder") + "/").isReachable());
}

TEST_F(FilePlaceTest, IsWhereLinksOfFoldersAndFilesLead) {
  makeFolder("far");
  const std::string target = dir_.write("far/target", "text");
  std::filesystem::create_directory_symlink("far", dir_.file("near"));
  std::filesystem::create_symlink("../near/target", dir_.file("far/link"));
  std::filesystem::create_symlink(dir_.file("near/./link"), dir_.file("p.sol"));
  EXPECT_EQ(FilePlace(dir_.file("p.sol")).identity(), fileIdentity(target));
}

TEST_F(FilePlaceTest, IsNowhereIfLinksRunInACircle) {
  std::filesystem::create_symlink("q.sol", dir_.file("p.sol"));
  std::filesystem::create_symlink("p.sol", dir_.file("q.sol"));
  EXPECT_EQ(FilePlace(dir_.file("p.sol")).error(), ELOOP);
}

TEST_F(FilePlaceTest, StaysInItsFolderWhateverBecomesOfThePath) {
  const std::string folder = makeFolder("folder");
  const std::string path = dir_.write("folder/p.sol", "text");
  const auto identity = fileIdentity(path);
  const FilePlace place(path);
  std::filesystem::rename(folder, dir_.file("moved"));
  makeFolder("folder");
  dir_.write("folder/p.sol", "other");
  EXPECT_EQ(place.identity(), identity);
}

TEST_F(FilePlaceTest, DoesNotFollowALinkThatTakesThePlaceOfTheFile) {
  const std::string path = dir_.write("p.sol", "text");
  const FilePlace place(path);
  std::filesystem::rename(path, dir_.file("target"));
  std::filesystem::create_symlink("target", path);
  EXPECT_FALSE(place.open(O_RDONLY).isOpen());
  EXPECT_EQ(errno, ELOOP);
}

TEST_F(FilePlaceTest, FollowsOfOthersNoLinkInASharedFolder) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root";
  dir_.write("target", "text");
  const std::string link = dir_.file("p.sol");
  std::filesystem::create_symlink("target", link);
  EXPECT_TRUE(FilePlace(link).identity());
  ASSERT_EQ(lchown(link.c_str(), test::nobody, test::nobody), 0);
  EXPECT_THROW(FilePlace{link}, LinkException);
  EXPECT_TRUE(FilePlace(link, Links::any).identity());
  chmod(dir_.path().c_str(), 01755);
  EXPECT_THROW(FilePlace{link}, LinkException);
  chmod(dir_.path().c_str(), 0755);
  EXPECT_TRUE(FilePlace(link).identity());
}

TEST_F(FilePlaceTest, CreatesFilesBesideAndRenamesThem) {
  const FilePlace place(dir_.write("p.sol", "old"));
  std::string name;
  {
    const Descriptor file = place.create("new.", 0600, name);
    ASSERT_TRUE(file.isOpen());
    ASSERT_EQ(write(file.number(), "new", 3), 3);
  }
  EXPECT_EQ(dir_.names(), (Names{name, "p.sol"}));
  EXPECT_EQ(name.size(), 10U);
  EXPECT_TRUE(place.replaceBy(name));
  EXPECT_EQ(dir_.read("p.sol"), "new");
  EXPECT_EQ(dir_.names(), Names{"p.sol"});
}

TEST_F(FilePlaceTest, RemovesTheLinkOfThePathAndNotItsTarget) {
  dir_.write("target", "text");
  std::filesystem::create_symlink("target", dir_.file("p.sol"));
  EXPECT_TRUE(FilePlace(dir_.file("p.sol")).unlinkPath());
  EXPECT_EQ(dir_.names(), Names{"target"});
}

}  // namespace
}  // namespace starsift
