#include "files/ResultFile.h"

#include <sys/stat.h>
#include <unistd.h>
#include <csignal>

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/ScratchDir.h"
#include "support/fixtures/SizeLimit.h"
#include "support/fixtures/Unprivileged.h"
#include "system/Exceptions.h"
#include "system/Failure.h"

namespace starsift {
namespace {

using Names = std::vector<std::string>;
using test::limitFileSize;
using test::ScratchDir;

/// Longer than what is gathered in memory.
std::string longText() {
  return std::string(1'000'000, 'x') + "\n";
}

/// Fatal if the text can't be written.
void writeFile(const std::string& path, std::string_view text) {
  try {
    ResultFile file(path);
    file.write(text);
    file.commit();
  } catch (const WriteException& exception) {
    fail(exception.message());
  }
}

mode_t modeOf(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : ~mode_t{0};
}

uid_t ownerOf(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 ? status.st_uid : ~uid_t{0};
}

ino_t fileNumber(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 ? status.st_ino : 0;
}

/// In a child: runs without rights and ends with status 0.
[[noreturn]] void writeAsNobody(const std::string& path, std::string_view text) {
  test::becomeNobody();
  writeFile(path, text);
  std::exit(0);
}

TEST(ResultFile, NewFileHoldsTheText) {
  const ScratchDir scratch;
  ResultFile file(scratch.file("p.sol"));
  EXPECT_TRUE(file.isOpen());
  file.write("one, ");
  file.write("two\n");
  file.commit();
  EXPECT_EQ(scratch.read("p.sol"), "one, two\n");
  EXPECT_EQ(scratch.names(), Names{"p.sol"});
}

TEST(ResultFile, FileThatHasChangedSinceItWasReadStays) {
  const ScratchDir scratch;
  const std::string path = scratch.write("p.sol", "old\n");
  const auto expected = fileIdentity(path);
  scratch.write("p.sol", "newer\n");
  ResultFile file(path, expected);
  file.write("text\n");
  EXPECT_EQ(file.commit(), Commit::changed);
  ResultFile none(path, std::nullopt);
  EXPECT_EQ(none.commit(), Commit::changed);
  EXPECT_EQ(scratch.read("p.sol"), "newer\n");
  EXPECT_EQ(scratch.names(), Names{"p.sol"});
}

TEST(ResultFile, FileThatIsReplacedWhileTheTextIsWrittenStays) {
  const ScratchDir scratch;
  const std::string path = scratch.write("p.sol", "old\n");
  ResultFile file(path);
  file.write(longText());
  scratch.write("q.sol", "old\n");
  std::filesystem::rename(scratch.file("q.sol"), path);
  EXPECT_EQ(file.commit(), Commit::changed);
  EXPECT_EQ(scratch.read("p.sol"), "old\n");
  EXPECT_EQ(scratch.names(), Names{"p.sol"});
}

TEST(ResultFile, FileThatHoldsTheTextIsNotTouched) {
  const ScratchDir scratch;
  const std::string path = scratch.write("p.sol", longText());
  const ino_t number = fileNumber(path);
  writeFile(path, longText());
  EXPECT_EQ(fileNumber(path), number);
  EXPECT_EQ(scratch.names(), Names{"p.sol"});
}

TEST(ResultFile, FileThatBeginsWithTheTextIsReplaced) {
  const ScratchDir scratch;
  const std::string path = scratch.write("p.sol", longText() + "more");
  writeFile(path, longText());
  EXPECT_EQ(scratch.read("p.sol"), longText());
  writeFile(path, longText() + "more");
  EXPECT_EQ(scratch.read("p.sol"), longText() + "more");
}

TEST(ResultFile, KnowsTheFileThatItHasWritten) {
  const ScratchDir scratch;
  const std::string path = scratch.write("p.sol", "old\n");
  ResultFile file(path);
  EXPECT_EQ(file.identity(), fileIdentity(path));
  file.write("new\n");
  file.commit();
  EXPECT_EQ(file.identity(), fileIdentity(path));
  EXPECT_NE(file.identity(), std::nullopt);
}

TEST(ResultFile, KnowsThatItHasRemovedTheFile) {
  const ScratchDir scratch;
  ResultFile file(scratch.write("p.sol", "old\n"));
  file.commit();
  EXPECT_EQ(file.identity(), std::nullopt);
}

TEST(ResultFile, TextReplacesALongerOne) {
  const ScratchDir scratch;
  scratch.write("p.sol", longText());
  writeFile(scratch.file("p.sol"), "new\n");
  EXPECT_EQ(scratch.read("p.sol"), "new\n");
  EXPECT_EQ(scratch.names(), Names{"p.sol"});
}

TEST(ResultFile, LongTextInPiecesIsWhole) {
  const ScratchDir scratch;
  ResultFile file(scratch.file("p.sol"));
  const std::string text = longText();
  for (std::size_t i = 0; i < text.size(); i += 999) file.write(text.substr(i, 999));
  file.commit();
  EXPECT_EQ(scratch.read("p.sol"), text);
}

TEST(ResultFile, OldTextStaysUntilTheCommit) {
  const ScratchDir scratch;
  scratch.write("p.sol", "old\n");
  ResultFile file(scratch.file("p.sol"));
  file.write(longText());
  EXPECT_EQ(scratch.read("p.sol"), "old\n");
  file.commit();
  EXPECT_EQ(scratch.read("p.sol"), longText());
}

TEST(ResultFile, WithoutCommitNothingIsLeftBehind) {
  const ScratchDir scratch;
  scratch.write("p.sol", "old\n");
  {
    ResultFile file(scratch.file("p.sol"));
    file.write(longText());
  }
  EXPECT_EQ(scratch.read("p.sol"), "old\n");
  EXPECT_EQ(scratch.names(), Names{"p.sol"});
}

TEST(ResultFile, SecondCommitDoesNothing) {
  const ScratchDir scratch;
  ResultFile file(scratch.file("p.sol"));
  file.write("text\n");
  file.commit();
  EXPECT_FALSE(file.isOpen());
  file.write("more\n");
  file.commit();
  EXPECT_EQ(scratch.read("p.sol"), "text\n");
}

TEST(ResultFile, NewFileHasTheModeOfTheMask) {
  const ScratchDir scratch;
  const mode_t mask = umask(027);
  writeFile(scratch.file("p.sol"), "text\n");
  const mode_t now = umask(mask);
  EXPECT_EQ(now, 027U);
  EXPECT_EQ(modeOf(scratch.file("p.sol")), 0640U);
}

TEST(ResultFile, OldFileKeepsItsModeWhateverTheMask) {
  const ScratchDir scratch;
  chmod(scratch.write("p.sol", "old\n").c_str(), 0767);
  const mode_t mask = umask(077);
  writeFile(scratch.file("p.sol"), "text\n");
  umask(mask);
  EXPECT_EQ(modeOf(scratch.file("p.sol")), 0767U);
  EXPECT_EQ(scratch.read("p.sol"), "text\n");
}

TEST(ResultFile, RootLeavesTheFileToItsOwner) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root";
  const ScratchDir scratch;
  test::giveToNobody(scratch.write("p.sol", "old\n"));
  writeFile(scratch.file("p.sol"), "text\n");
  EXPECT_EQ(ownerOf(scratch.file("p.sol")), test::nobody);
  EXPECT_EQ(scratch.read("p.sol"), "text\n");
}

TEST(ResultFile, FileOfSomebodyElseStaysTheirs) {
  if (geteuid() != 0) GTEST_SKIP() << "needs root";
  const ScratchDir scratch;
  const std::string path = scratch.write("p.sol", "old\n");
  chmod(path.c_str(), 0666);
  EXPECT_EXIT(writeAsNobody(path, "text\n"), testing::ExitedWithCode(0), "");
  EXPECT_EQ(scratch.read("p.sol"), "text\n");
  EXPECT_EQ(ownerOf(path), 0U);
  EXPECT_EQ(scratch.names(), Names{"p.sol"});
}

TEST(ResultFile, TargetOfALinkIsReplaced) {
  const ScratchDir scratch;
  std::filesystem::create_directory(scratch.file("far"));
  scratch.write("far/target.sol", "old\n");
  std::filesystem::create_symlink("far/target.sol", scratch.file("p.sol"));
  writeFile(scratch.file("p.sol"), "text\n");
  EXPECT_EQ(std::filesystem::read_symlink(scratch.file("p.sol")), "far/target.sol");
  EXPECT_EQ(scratch.read("far/target.sol"), "text\n");
}

TEST(ResultFile, LinksAreFollowedToTheirEnd) {
  const ScratchDir scratch;
  std::filesystem::create_directory(scratch.file("far"));
  scratch.write("target.sol", "old\n");
  std::filesystem::create_symlink("../target.sol", scratch.file("far/second.sol"));
  std::filesystem::create_symlink(scratch.file("far/second.sol"), scratch.file("p.sol"));
  writeFile(scratch.file("p.sol"), "text\n");
  EXPECT_EQ(scratch.read("target.sol"), "text\n");
  EXPECT_TRUE(std::filesystem::is_symlink(scratch.file("p.sol")));
  EXPECT_TRUE(std::filesystem::is_symlink(scratch.file("far/second.sol")));
}

TEST(ResultFile, LinkToNothingGetsItsTarget) {
  const ScratchDir scratch;
  std::filesystem::create_symlink("target.sol", scratch.file("p.sol"));
  writeFile(scratch.file("p.sol"), "text\n");
  EXPECT_EQ(scratch.read("target.sol"), "text\n");
  EXPECT_TRUE(std::filesystem::is_symlink(scratch.file("p.sol")));
}

TEST(ResultFile, LinksInACircleAreLeftAlone) {
  const ScratchDir scratch;
  std::filesystem::create_symlink("q.sol", scratch.file("p.sol"));
  std::filesystem::create_symlink("p.sol", scratch.file("q.sol"));
  EXPECT_FALSE(ResultFile(scratch.file("p.sol")).isOpen());
  writeFile(scratch.file("p.sol"), "text\n");
  writeFile(scratch.file("p.sol"), "");
  EXPECT_EQ(scratch.names(), (Names{"p.sol", "q.sol"}));
  EXPECT_TRUE(std::filesystem::is_symlink(scratch.file("p.sol")));
  EXPECT_TRUE(std::filesystem::is_symlink(scratch.file("q.sol")));
}

TEST(ResultFile, EmptyTextRemovesTheFile) {
  const ScratchDir scratch;
  scratch.write("p.sol", "old\n");
  writeFile(scratch.file("p.sol"), "");
  EXPECT_EQ(scratch.names(), Names{});
}

TEST(ResultFile, EmptyTextCreatesNothing) {
  const ScratchDir scratch;
  writeFile(scratch.file("p.sol"), "");
  EXPECT_EQ(scratch.names(), Names{});
}

TEST(ResultFile, EmptyTextRemovesTheLinkAndNotItsTarget) {
  const ScratchDir scratch;
  scratch.write("target.sol", "old\n");
  std::filesystem::create_symlink("target.sol", scratch.file("p.sol"));
  writeFile(scratch.file("p.sol"), "");
  EXPECT_EQ(scratch.names(), Names{"target.sol"});
  EXPECT_EQ(scratch.read("target.sol"), "old\n");
}

TEST(ResultFile, DirectoryInItsPlaceIsLeftAlone) {
  const ScratchDir scratch;
  std::filesystem::create_directory(scratch.file("p.sol"));
  EXPECT_FALSE(ResultFile(scratch.file("p.sol")).isOpen());
  writeFile(scratch.file("p.sol"), "text\n");
  writeFile(scratch.file("p.sol"), "");
  EXPECT_TRUE(std::filesystem::is_directory(scratch.file("p.sol")));
  EXPECT_EQ(scratch.names(), Names{"p.sol"});
}

TEST(ResultFile, PipeInItsPlaceIsLeftAlone) {
  const ScratchDir scratch;
  ASSERT_EQ(mkfifo(scratch.file("p.sol").c_str(), 0666), 0);
  writeFile(scratch.file("p.sol"), "text\n");
  writeFile(scratch.file("p.sol"), "");
  EXPECT_TRUE(std::filesystem::is_fifo(scratch.file("p.sol")));
  EXPECT_EQ(scratch.names(), Names{"p.sol"});
}

TEST(ResultFile, MissingDirectoryIsNoWord) {
  const ScratchDir scratch;
  writeFile(scratch.file("missing/p.sol"), "text\n");
  EXPECT_EQ(scratch.names(), Names{});
}

TEST(ResultFile, FileInPlaceOfTheDirectoryIsNoWord) {
  const ScratchDir scratch;
  scratch.write("p", "file\n");
  writeFile(scratch.file("p/p.sol"), "text\n");
  EXPECT_EQ(scratch.read("p"), "file\n");
}

TEST(ResultFile, FileThatMayNotBeWrittenIsLeftAlone) {
  const ScratchDir scratch;
  const std::string path = scratch.write("p.sol", "old\n");
  test::giveToNobody(path);
  chmod(path.c_str(), 0444);
  EXPECT_EXIT(writeAsNobody(path, "text\n"), testing::ExitedWithCode(0), "");
  EXPECT_EXIT(writeAsNobody(path, ""), testing::ExitedWithCode(0), "");
  EXPECT_EQ(scratch.read("p.sol"), "old\n");
  EXPECT_EQ(scratch.names(), Names{"p.sol"});
}

/// A directory in which a user without rights can write p.sol and create nothing.
class ReadOnlyDirectory : public testing::Test {
 protected:
  ReadOnlyDirectory() {
    test::giveToNobody(path);
    close();
  }
  void close() const { chmod(scratch.path().c_str(), 0555); }

  ScratchDir scratch;
  std::string path = scratch.write("p.sol", "the old text\n");
};

/// Writes `text` so that it can be undone; `meanwhile` is called before that is done.
template <class Meanwhile>
void writeAndUndo(const std::string& path, std::string_view text, const Meanwhile& meanwhile) {
  ResultFile file(path);
  file.write(text);
  file.keepOld();
  EXPECT_EQ(file.commit(), Commit::written);
  meanwhile();
  file.undo();
}

TEST(ResultFile, OldFileComesBack) {
  const ScratchDir scratch;
  const std::string path = scratch.write("p.sol", "old");
  const ino_t before = fileNumber(path);
  writeAndUndo(path, "new", [&] { EXPECT_EQ(scratch.read("p.sol"), "new"); });
  EXPECT_EQ(scratch.read("p.sol"), "old");
  EXPECT_EQ(fileNumber(path), before);
  EXPECT_EQ(scratch.names(), Names{"p.sol"});
}

TEST(ResultFile, UndoneNewFileGoes) {
  const ScratchDir scratch;
  writeAndUndo(scratch.path() + "/p.sol", "new", [] {});
  EXPECT_EQ(scratch.names(), Names{});
}

TEST(ResultFile, FileThatHeldTheTextStaysWhenThatIsUndone) {
  const ScratchDir scratch;
  writeAndUndo(scratch.write("p.sol", "old"), "old", [] {});
  EXPECT_EQ(scratch.read("p.sol"), "old");
}

TEST(ResultFile, TextOfSomebodyElseIsNotUndone) {
  const ScratchDir scratch;
  writeAndUndo(scratch.write("p.sol", "old"), "new", [&] { scratch.write("p.sol", "theirs"); });
  EXPECT_EQ(scratch.read("p.sol"), "theirs");
  EXPECT_EQ(scratch.names(), Names{"p.sol"});
}

TEST_F(ReadOnlyDirectory, FileIsRewrittenInPlace) {
  const ino_t number = fileNumber(path);
  EXPECT_EXIT(writeAsNobody(path, "short\n"), testing::ExitedWithCode(0), "");
  EXPECT_EQ(scratch.read("p.sol"), "short\n");
  EXPECT_EQ(fileNumber(path), number);
  EXPECT_EQ(scratch.names(), Names{"p.sol"});
}

TEST_F(ReadOnlyDirectory, FileGrowsInPlace) {
  EXPECT_EXIT(writeAsNobody(path, longText()), testing::ExitedWithCode(0), "");
  EXPECT_EQ(scratch.read("p.sol"), longText());
}

TEST_F(ReadOnlyDirectory, EmptyTextEmptiesTheFile) {
  EXPECT_EXIT(writeAsNobody(path, ""), testing::ExitedWithCode(0), "");
  EXPECT_EQ(scratch.read("p.sol"), "");
}

TEST_F(ReadOnlyDirectory, NewFileCanNotBeMadeAndNothingIsSaid) {
  EXPECT_EXIT(writeAsNobody(scratch.file("q.sol"), "text\n"), testing::ExitedWithCode(0), "^$");
  EXPECT_EQ(scratch.names(), Names{"p.sol"});
}

TEST_F(ReadOnlyDirectory, UnwrittenFileStays) {
  const auto openWithoutCommit = [this] {
    test::becomeNobody();
    { ResultFile(path).write("text\n"); }
    std::exit(0);
  };
  EXPECT_EXIT(openWithoutCommit(), testing::ExitedWithCode(0), "");
  EXPECT_EQ(scratch.read("p.sol"), "the old text\n");
}

TEST_F(ReadOnlyDirectory, TextWithoutSpaceInPlaceLeavesTheOldOneWhole) {
  const auto writeBeyondTheLimit = [this] {
    test::becomeNobody();
    limitFileSize(4096);
    writeFile(path, longText());
  };
  EXPECT_FAILS_WITH(writeBeyondTheLimit(), "Could not write file: " + path);
  EXPECT_EQ(scratch.read("p.sol"), "the old text\n");
}

TEST_F(ReadOnlyDirectory, TextThatBreaksOffInPlaceIsTakenBack) {
  const std::string old = std::string(10'000, 'o') + "\n";
  scratch.write("p.sol", old);
  const auto writeBeyondTheLimit = [this] {
    test::becomeNobody();
    limitFileSize(4096);
    writeFile(path, std::string(8'000, 'n'));
  };
  EXPECT_FAILS_WITH(writeBeyondTheLimit(), "Could not write file: " + path);
  EXPECT_EQ(scratch.read("p.sol"), old);
}

TEST_F(ReadOnlyDirectory, TextThatCouldNotBePutBackIsNotTouched) {
  chmod(path.c_str(), 0222);
  EXPECT_FAILS_WITH(writeAsNobody(path, "text\n"), "Could not write file: " + path);
  chmod(path.c_str(), 0666);
  EXPECT_EQ(scratch.read("p.sol"), "the old text\n");
}

TEST_F(ReadOnlyDirectory, LinkThatCanNotGoGetsAnEmptyTarget) {
  chmod(scratch.path().c_str(), 0777);
  std::filesystem::create_directory(scratch.file("open"));
  test::giveToNobody(scratch.file("open"));
  test::giveToNobody(scratch.write("open/target.sol", "old\n"));
  std::filesystem::create_symlink("open/target.sol", scratch.file("link.sol"));
  close();
  EXPECT_EXIT(writeAsNobody(scratch.file("link.sol"), ""), testing::ExitedWithCode(0), "");
  EXPECT_EQ(scratch.read("open/target.sol"), "");
}

TEST(ResultFile, TextWithoutSpaceLeavesTheOldOne) {
  const ScratchDir scratch;
  const std::string path = scratch.write("p.sol", "old\n");
  const auto writeBeyondTheLimit = [&path] {
    limitFileSize(4096);
    writeFile(path, longText());
  };
  EXPECT_FAILS_WITH(writeBeyondTheLimit(), "Could not write file: " + path);
  EXPECT_EQ(scratch.read("p.sol"), "old\n");
  EXPECT_EQ(scratch.names(), Names{"p.sol"});
}

TEST(ResultFile, ShortTextWithoutSpaceLeavesTheOldOneToo) {
  const ScratchDir scratch;
  const std::string path = scratch.write("p.sol", "old\n");
  const auto writeBeyondTheLimit = [&path] {
    limitFileSize(4096);
    writeFile(path, std::string(4097, 'x'));
  };
  EXPECT_FAILS_WITH(writeBeyondTheLimit(), "Could not write file: " + path);
  EXPECT_EQ(scratch.read("p.sol"), "old\n");
  EXPECT_EQ(scratch.names(), Names{"p.sol"});
}

TEST(ResultFile, ReportNamesThePathAsItWasGiven) {
  const ScratchDir scratch;
  scratch.write("target.sol", "old\n");
  std::filesystem::create_symlink("target.sol", scratch.file("p.sol"));
  const auto writeBeyondTheLimit = [&scratch] {
    limitFileSize(4096);
    writeFile(scratch.file("p.sol"), longText());
  };
  EXPECT_FAILS_WITH(writeBeyondTheLimit(), "Could not write file: " + scratch.file("p.sol"));
  EXPECT_EQ(scratch.read("target.sol"), "old\n");
}

TEST(ResultFile, HandlingOfTheSizeSignalIsThatOfBefore) {
  const ScratchDir scratch;
  writeFile(scratch.file("p.sol"), "text\n");
  struct sigaction action {};
  sigaction(SIGXFSZ, nullptr, &action);
  EXPECT_EQ(action.sa_handler, SIG_DFL);
}

}  // namespace
}  // namespace starsift
