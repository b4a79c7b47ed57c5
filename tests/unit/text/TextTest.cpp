#include "text/Text.h"

#include <gtest/gtest.h>

#include <string>

namespace starsift {
namespace {

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

TEST(EndsWith, ComparesTheCase) {
  EXPECT_TRUE(endsWith("a.sol", ".sol"));
  EXPECT_FALSE(endsWith("a.SOL", ".sol"));
}

TEST(EndsWith, IsFalseForASuffixLongerThanTheText) {
  EXPECT_FALSE(endsWith("sol", ".sol"));
  EXPECT_TRUE(endsWith(".sol", ".sol"));
  EXPECT_TRUE(endsWith("", ""));
}

}  // namespace
}  // namespace starsift
