#include "text/InputText.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <utility>

#include "support/fixtures/ScratchDir.h"
#include "support/fixtures/Unprivileged.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

TEST(InputText, HoldsEveryByteOfTheFile) {
  const test::ScratchDir folder;
  const std::string text("a\0b\r\n\xff\xfe", 7);
  const auto input = readFileText(folder.write("file", text));
  ASSERT_TRUE(input);
  EXPECT_EQ(input->view(), text);
}

TEST(InputText, HoldsAnEmptyFile) {
  const test::ScratchDir folder;
  const auto input = readFileText(folder.write("file", ""));
  ASSERT_TRUE(input);
  EXPECT_TRUE(input->view().empty());
}

TEST(InputText, HoldsALargeFile) {
  const test::ScratchDir folder;
  std::string text(5'000'000, 'x');
  text.back() = 'y';
  const auto input = readFileText(folder.write("file", text));
  ASSERT_TRUE(input);
  EXPECT_TRUE(input->view() == text);
}

TEST(InputText, KeepsItsBytesWhenItIsMoved) {
  const test::ScratchDir folder;
  auto input = readFileText(folder.write("file", "text"));
  ASSERT_TRUE(input);
  const InputText moved(std::move(*input));
  EXPECT_EQ(moved.view(), "text");
}

TEST(InputText, FollowsASymbolicLink) {
  const test::ScratchDir folder;
  folder.write("file", "text");
  std::filesystem::create_symlink("file", folder.file("link"));
  const auto input = readFileText(folder.file("link"));
  ASSERT_TRUE(input);
  EXPECT_EQ(input->view(), "text");
}

TEST(InputText, HasNothingOfAMissingFile) {
  const test::ScratchDir folder;
  EXPECT_FALSE(readFileText(folder.file("none")));
}

TEST(InputText, HasNothingOfADanglingLink) {
  const test::ScratchDir folder;
  std::filesystem::create_symlink("none", folder.file("link"));
  EXPECT_FALSE(readFileText(folder.file("link")));
}

TEST(InputText, HasNothingOfADirectory) {
  const test::ScratchDir folder;
  std::filesystem::create_directory(folder.file("folder"));
  EXPECT_FALSE(readFileText(folder.file("folder")));
}

TEST(InputText, DoesNotWaitForTheWriterOfAPipe) {
  const test::ScratchDir folder;
  ASSERT_EQ(mkfifo(folder.file("pipe").c_str(), 0600), 0);
  EXPECT_FALSE(readFileText(folder.file("pipe")));
}

TEST(InputText, HasNothingOfADeviceThatNeverEnds) {
  EXPECT_FALSE(readFileText("/dev/zero"));
}

TEST(InputText, HasNothingUnderAnEmptyName) {
  EXPECT_FALSE(readFileText(""));
}

TEST(InputText, HasNothingOfLinksInACircle) {
  const test::ScratchDir folder;
  std::filesystem::create_symlink("link", folder.file("link"));
  EXPECT_FALSE(readFileText(folder.file("link")));
}

TEST(InputText, HasNothingUnderANameThatIsTooLong) {
  EXPECT_FALSE(readFileText(std::string(300, 'x')));
}

TEST(InputText, HasNothingBehindAFileInPlaceOfADirectory) {
  const test::ScratchDir folder;
  folder.write("file", "text");
  EXPECT_FALSE(readFileText(folder.file("file/text")));
}

TEST(InputText, HasNothingOfASocket) {
  const test::ScratchDir folder;
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  folder.file("socket").copy(address.sun_path, sizeof(address.sun_path) - 1);
  const int listener = socket(AF_UNIX, SOCK_STREAM, 0);
  ASSERT_EQ(bind(listener, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
  EXPECT_FALSE(readFileText(folder.file("socket")));
  close(listener);
}

TEST(InputText, EndsWithTheFileWhateverSizeTheSystemSays) {
  struct stat status {};
  ASSERT_EQ(stat("/proc/self/smaps", &status), 0);
  ASSERT_EQ(status.st_size, 0);
  const auto input = readFileText("/proc/self/smaps");
  ASSERT_TRUE(input);
  EXPECT_TRUE(input->view().ends_with('\n'));
  EXPECT_NE(input->view().find("[stack]"), std::string_view::npos);
}

TEST(InputText, RefusesAFileWhoseReadingBreaksOff) {
  // The first page of a process is never mapped.
  EXPECT_THROW(readFileText("/proc/self/mem"), ReadException);
}

/// In a child: ends with status 0 when an unprivileged user's reading is refused.
[[noreturn]] void readAsNobody(const std::string& path) {
  test::becomeNobody();
  try {
    readFileText(path);
  } catch (const ReadException&) {
    std::exit(0);
  }
  std::exit(1);
}

TEST(InputText, RefusesAFileThatMayNotBeRead) {
  const test::ScratchDir folder;
  const std::string path = folder.write("file", "text");
  ASSERT_EQ(chmod(path.c_str(), 0), 0);
  EXPECT_EXIT(readAsNobody(path), testing::ExitedWithCode(0), "");
}

TEST(InputText, RefusesAPathThatMayNotBeSearched) {
  const test::ScratchDir folder;
  std::filesystem::create_directory(folder.file("closed"));
  ASSERT_EQ(chmod(folder.file("closed").c_str(), 0), 0);
  EXPECT_EXIT(readAsNobody(folder.file("closed/file")), testing::ExitedWithCode(0), "");
}

TEST(InputText, HasNothingOfADirectoryThatMayNotBeRead) {
  const test::ScratchDir folder;
  std::filesystem::create_directory(folder.file("closed"));
  ASSERT_EQ(chmod(folder.file("closed").c_str(), 0), 0);
  EXPECT_EXIT(readAsNobody(folder.file("closed")), testing::ExitedWithCode(1), "");
}

}  // namespace
}  // namespace starsift
