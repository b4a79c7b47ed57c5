#include "core/Text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "core/Serializable.h"

namespace starsift {
namespace {

std::vector<std::string> pieces(std::string_view text, char separator) {
  const Array<std::string> parts = split(text, separator);
  return {parts.begin(), parts.end()};
}

using Pieces = std::vector<std::string>;

TEST(ReplaceAll, ReplacesEachOccurrenceFromLeftToRight) {
  EXPECT_EQ(replaceAll("a-b-c", "-", " + "), "a + b + c");
  EXPECT_EQ(replaceAll("aaa", "aa", "b"), "ba");
}

TEST(ReplaceAll, DoesNotSearchWhatItPutIn) {
  EXPECT_EQ(replaceAll("aa", "a", "aa"), "aaaa");
}

TEST(ReplaceAll, LeavesATextWithoutOccurrenceAlone) {
  EXPECT_EQ(replaceAll("abc", "x", "y"), "abc");
  EXPECT_EQ(replaceAll("", "x", "y"), "");
}

TEST(ReplaceAll, FindsAZeroCharacter) {
  EXPECT_EQ(replaceAll(std::string("a\0b", 3), std::string(1, '\0'), "0"), "a0b");
}

TEST(Trim, RemovesAllWhiteSpaceFromTheChosenEnd) {
  EXPECT_EQ(trimRight(" a b \t\n\r\f\v"), " a b");
  EXPECT_EQ(trimLeft(" \t\n\r\f\va b "), "a b ");
  EXPECT_EQ(trim("\n a b \n"), "a b");
}

TEST(Trim, TakesTheCharactersItIsGiven) {
  EXPECT_EQ(trim("xyaxyb x", "xy"), "axyb ");
  EXPECT_EQ(trim(" a ", ""), " a ");
}

TEST(Trim, LeavesNothingOfATextOfNothingElse) {
  EXPECT_EQ(trimRight(" \t"), "");
  EXPECT_EQ(trimLeft(" \t"), "");
  EXPECT_EQ(trim(""), "");
}

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

TEST(EndsWith, ComparesTheCase) {
  EXPECT_TRUE(endsWith("a.sol", ".sol"));
  EXPECT_FALSE(endsWith("a.SOL", ".sol"));
}

TEST(EndsWith, IsFalseForASuffixLongerThanTheText) {
  EXPECT_FALSE(endsWith("sol", ".sol"));
  EXPECT_TRUE(endsWith(".sol", ".sol"));
  EXPECT_TRUE(endsWith("", ""));
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

}  // namespace
}  // namespace starsift
