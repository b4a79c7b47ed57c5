#include "core/InputText.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <string>
#include <utility>

#include "support/ScratchDir.h"

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

}  // namespace
}  // namespace starsift
