#include "core/HostTools.h"

#include <gtest/gtest.h>
#include <unistd.h>
#include <cstdio>
#include <fstream>
#include <string>
#include <utility>
#include <vector>

#include "text/Serializable.h"

namespace starsift {
namespace {

std::vector<std::string> pieces(std::string_view text, char separator) {
  const Array<std::string> parts = split(text, separator);
  return {parts.begin(), parts.end()};
}

using Pieces = std::vector<std::string>;

TEST(Split, CutsAtEachSeparator) {
  EXPECT_EQ(pieces("a|b||c", '|'), (Pieces{"a", "b", "", "c"}));
}

TEST(Split, TakesAMillionPieces) {
  EXPECT_EQ(pieces(std::string(1'000'000, '|'), '|').size(), 1'000'000U);
}

TEST(Split, GivesNothingForAnEmptyText) {
  EXPECT_EQ(pieces("", '|'), Pieces{});
}

TEST(Split, AddsNothingBehindALastSeparator) {
  EXPECT_EQ(pieces("a|", '|'), Pieces{"a"});
  EXPECT_EQ(pieces("|", '|'), Pieces{""});
}

TEST(Split, GivesATextWithoutSeparatorWhole) {
  EXPECT_EQ(pieces("abc", '|'), Pieces{"abc"});
}

TEST(Case, IsMappedCharacterByCharacter) {
  EXPECT_EQ(toLower("Ab-Z9"), "ab-z9");
  EXPECT_EQ(toUpper("Ab-z9"), "AB-Z9");
}

TEST(Case, LeavesBytesBeyondAsciiAlone) {
  EXPECT_EQ(toUpper("\xc3\xa4"), "\xc3\xa4");
}

TEST(RegexReplace, ReplacesAllMatches) {
  EXPECT_EQ(regexReplace("a1b22", "[0-9]+", "#"), "a#b#");
}

TEST(RegexReplace, CutsTheExtensionOfTheLastPathComponent) {
  const std::string extension = "\\.[^./]*$";
  EXPECT_EQ(regexReplace("dir.d/a.b.sol", extension, ""), "dir.d/a.b");
  EXPECT_EQ(regexReplace("dir.d/a", extension, ""), "dir.d/a");
  EXPECT_EQ(regexReplace(".sol", extension, ""), "");
}

/// An object whose text is as told, numbers included.
class Written : public Serializable {
 public:
  explicit Written(std::string text, long double number = 0)
      : Serializable(commaStyle()), text_(std::move(text)), number_(number) {}
  std::ostream& write(std::ostream& stream) const override {
    return number_ == 0 ? stream << text_ : stream << text_ << number_;
  }
  std::istream& read(std::istream& stream) override { return stream; }

 private:
  std::string text_;
  long double number_;
};

TEST(LimitedText, IsWholeWithoutALimit) {
  EXPECT_EQ(limitedText(Written("abcdefgh"), 0), "abcdefgh");
}

TEST(LimitedText, IsWholeUpToTheLimit) {
  EXPECT_EQ(limitedText(Written("abcdefgh"), 8), "abcdefgh");
}

TEST(LimitedText, KeepsBothEndsOfALongerText) {
  EXPECT_EQ(limitedText(Written("abcdefgh"), 7), "abc ... fgh");
  EXPECT_EQ(limitedText(Written("abcdefgh"), 1), " ... ");
}

TEST(LimitedText, ShowsSeventeenDigits) {
  EXPECT_EQ(limitedText(Written("", 12345678901234567.0L), 0), "12345678901234567");
  EXPECT_EQ(limitedText(Written("", 1.0L / 3), 0), "0.33333333333333333");
}

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

TEST(AvailableMemory, OfTheSwapSpaceHasALineOfItsOwn) {
  const ScratchFile file("MemAvailable: 8 kB\nSwapFree:   517 kB\n");
  EXPECT_EQ(freeSwapKibibytes(file.path()), 517);
  EXPECT_EQ(freeSwapKibibytes(ScratchFile("MemAvailable: 8 kB\n").path()), 0);
}

TEST(AddressSpace, IsTheFirstFigureInPages) {
  EXPECT_EQ(addressSpace(ScratchFile("3 2 1\n").path()), 3 * sysconf(_SC_PAGESIZE));
  EXPECT_EQ(addressSpace("/no/such/file"), 0);
  EXPECT_GT(addressSpace(), 1'000'000);
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
