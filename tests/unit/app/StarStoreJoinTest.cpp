// The solution file of a search that somebody else writes too.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

#include "app/RescueFile.h"
#include "app/StarStore.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/PreparedSearch.h"

namespace starsift {
namespace {

using testing::HasSubstr;
using testing::Not;
using Names = std::vector<std::string>;

class StarStoreJoinTest : public test::PreparedSearch {
 protected:
  /// x + 2 y between 2 and 9, both from 0 to 5.
  static constexpr std::string_view band =
      "[ ] [ ] [ ] [ ] [ ] [ [ 1 2 ] ] [ 2 ] [ 9 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]";

  void SetUp() override { prepare(band); }
};

/// A search that doesn't read the file at its start.
class StarStoreBenchmarkTest : public StarStoreJoinTest {
 protected:
  void SetUp() override { prepare(band, {"--bench=2"}); }
};

TEST_F(StarStoreJoinTest, KeepsWhatCameIntoTheFileSinceItWasRead) {
  StarStore stars(search_);
  dir_.write("p.sol", "[ 5 1 ] | 0 | [ ] | 0 | 7 | other | 1.0\n");
  find({1, 4});
  stars.save(search_);
  EXPECT_THAT(solFile(), HasSubstr("[ 1 4 ] | "));
  EXPECT_THAT(solFile(), HasSubstr("[ 5 1 ] | 0 | [ ] | 0 | 7 | other | 1.0\n"));
  EXPECT_EQ(dir_.names(), (Names{"p.opt", "p.sol"}));
}

TEST_F(StarStoreJoinTest, KeepsWhatCameIntoTheFileSinceItWasWritten) {
  StarStore stars(search_);
  find({1, 4});
  stars.save(search_);
  dir_.write("p.sol", "[ 5 1 ]\n[ 1/3 4 ]\n");
  std::ostringstream report;
  stars.save(search_);
  EXPECT_TRUE(stars.report(report));
  for (const char* star : {"[ 1 4 ]", "[ 5 1 ]", "[ 1/3 4 ]"}) {
    EXPECT_THAT(solFile(), HasSubstr(star));
    EXPECT_THAT(report.str(), HasSubstr(std::string("x = ") + star));
  }
}

TEST_F(StarStoreJoinTest, DropsWrongStarsThatCameIntoTheFile) {
  StarStore stars(search_);
  dir_.write("p.sol", "[ 5 5 ]\n[ 5 1 ]\n");
  find({1, 4});
  stars.save(search_);
  EXPECT_THAT(solFile(), Not(HasSubstr("[ 5 5 ]")));
  EXPECT_THAT(solFile(), HasSubstr("[ 5 1 ]"));
}

TEST_F(StarStoreBenchmarkTest, KeepsTheStarsOfTheFileThatItDidNotReadAtItsStart) {
  dir_.write("p.sol", "[ 5 5 ]\n[ 5 1 ] | 0 | [ ] | 0 | 7 | other | 1.0\n");
  StarStore stars(search_);
  find({1, 4});
  stars.save(search_);
  EXPECT_THAT(solFile(), Not(HasSubstr("[ 5 5 ]")));
  EXPECT_THAT(solFile(), HasSubstr("[ 1 4 ] | 0 | [ ] | 0 | 3 | "));
  EXPECT_THAT(solFile(), HasSubstr("[ 5 1 ] | 0 | [ ] | 0 | 7 | other | 1.0\n"));
  EXPECT_EQ(dir_.names(), (Names{"p.opt", "p.sol"}));
}

TEST_F(StarStoreBenchmarkTest, KeepsTheStarsOfTheFileIfItFindsNothing) {
  dir_.write("p.sol", "[ 5 1 ]\n");
  StarStore stars(search_);
  stars.save(search_);
  EXPECT_THAT(solFile(), HasSubstr("[ 5 1 ]"));
  std::ostringstream report;
  EXPECT_TRUE(stars.report(report));
}

TEST_F(StarStoreBenchmarkTest, LeavesABadFileAloneAndItsStarsBeside) {
  dir_.write("p.sol", "[ 1/0 4 ]\n");
  StarStore stars(search_);
  find({1, 4});
  EXPECT_FAILS_WITH(stars.save(search_), "QQ: division by zero1");
  EXPECT_EQ(solFile(), "[ 1/0 4 ]\n");
  ASSERT_EQ(dir_.names().size(), 3U);
  EXPECT_THAT(dir_.read(dir_.names()[2]), testing::StartsWith("[ 1 4 ] | 0 |"));
}

TEST_F(StarStoreJoinTest, LetsTwoSearchesKeepTheStarsOfBoth) {
  StarStore one(search_);
  StarStore other(search_);
  find({1, 4});
  one.save(search_);
  search_.standard().found.solutions.clear();
  find({2, 3});
  other.save(search_);
  search_.standard().found.solutions.clear();
  find({3, 2});
  one.save(search_);
  for (const char* star : {"[ 1 4 ]", "[ 2 3 ]", "[ 3 2 ]"})
    EXPECT_THAT(solFile(), HasSubstr(star));
}

TEST_F(StarStoreJoinTest, DoesNotReadItsOwnFileAgain) {
  StarStore stars(search_);
  find({1, 4});
  stars.save(search_);
  // As if nobody had written: with the time and the size of before.
  const std::string path = dir_.file("p.sol");
  const auto time = std::filesystem::last_write_time(path);
  std::string text = solFile();
  text.replace(text.find("[ 1 4 ]"), 7, "[ 5 1 ]");
  dir_.write("p.sol", text);
  std::filesystem::last_write_time(path, time);
  stars.save(search_);
  EXPECT_THAT(solFile(), Not(HasSubstr("[ 5 1 ]")));
}

TEST_F(StarStoreJoinTest, LeavesABadFileAloneAndItsStarsBeside) {
  StarStore stars(search_);
  find({1, 4});
  dir_.write("p.sol", "[ 1/0 4 ]\n");
  EXPECT_FAILS_WITH(stars.save(search_), "QQ: division by zero1");
  EXPECT_EQ(solFile(), "[ 1/0 4 ]\n");
  const Names names = dir_.names();
  ASSERT_EQ(names.size(), 3U);
  EXPECT_THAT(names[2], testing::StartsWith("p.sol.found."));
  EXPECT_THAT(dir_.read(names[2]), testing::StartsWith("[ 1 4 ] | 0 |"));
}

TEST_F(StarStoreJoinTest, NamesTheFileBesideOnlyWhileItIsThere) {
  find({1, 4});
  StarStore(search_).save(search_);
  YSolutionFile file;
  search_.withLive([&file](const auto& lattice) { file.takeProblem(lattice.file); });
  EXPECT_EQ(rescueRemark(), "");
  RescueFile rescue(file);
  EXPECT_EQ(rescueRemark(), "");
  file.addStars(search_.starsFiledAfter(0), search_.problemNumber());
  RescueFile full(file);
  EXPECT_EQ(rescueRemark(), "The stars of this search are in " + dir_.file(dir_.names()[2]) + ".");
  full.remove();
  EXPECT_EQ(rescueRemark(), "");
  EXPECT_EQ(dir_.names(), (Names{"p.opt", "p.sol"}));
}

}  // namespace
}  // namespace starsift
