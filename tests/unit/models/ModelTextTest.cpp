#include "models/text/ModelText.h"

#include <gtest/gtest.h>

#include "models/text/ModelError.h"
#include "models/text/ModelNumber.h"
#include "models/text/NumberText.h"
#include "models/text/Sha256.h"
#include "models/text/Words.h"

namespace starsift {
namespace {

TEST(Sha256, DigestsAreThoseOfTheStandard) {
  EXPECT_EQ(sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
  EXPECT_EQ(sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

TEST(ModelText, MissingFileIsRefused) {
  EXPECT_THROW(readModelText("/nowhere/at/all.mps"), ModelError);
}

TEST(ModelError, NamesPathAndLine) {
  EXPECT_STREQ(ModelError(3, "that is wrong").withPath("a.lp").what(), "a.lp:3: that is wrong");
  EXPECT_STREQ(ModelError(0, "that is wrong").withPath("a.lp").what(), "a.lp: that is wrong");
}

TEST(NumberReader, RefusesShortTextsOfTooManyDigitsInAll) {
  NumberReader numbers;
  const auto readMany = [&numbers] {
    for (int i = 0; i < 1001; ++i) numbers.read("1e100000", 1);
  };
  EXPECT_THROW(readMany(), ModelError);
}

TEST(NumberText, WritesDecimalsThatEndAndFractionsElse) {
  EXPECT_EQ(numberText(QQ(-1, 8)), "-0.125");
  EXPECT_EQ(numberText(QQ(1, 3)), "1/3");
  EXPECT_EQ(numberText(QQ(-7, 6)), "-7/6");
  EXPECT_EQ(numberText(QQ(5, 2)), "2.5");
  EXPECT_EQ(numberText(QQ(1, 1024)), "0.0009765625");
  EXPECT_EQ(numberText(-QQ::infinity()), "-inf");
}

TEST(NumberText, KnowsWhatADoubleHolds) {
  EXPECT_TRUE(isDouble(QQ(1, 1024)));
  EXPECT_FALSE(isDouble(QQ(1, 10)));
  EXPECT_TRUE(isDouble(QQ(9007199254740992L)));
  EXPECT_FALSE(isDouble(QQ(9007199254740993L)));
  EXPECT_TRUE(isDouble(*parseNumber("1e22")));
  EXPECT_FALSE(isDouble(*parseNumber("1e23")));
  EXPECT_FALSE(isDouble(*parseNumber("1e400")));
  EXPECT_TRUE(isDouble(QQ(0)));
}

TEST(Words, QuotePrintableTextAsItStands) {
  EXPECT_EQ(inQuotes("a \\x1b ~"), "\"a \\x1b ~\"");
  EXPECT_EQ(inQuotes("größe ≤ 𝔽"), "\"größe ≤ 𝔽\"");
  EXPECT_EQ(inQuotes("\xC2\xA0"), "\"\xC2\xA0\"");
}

TEST(Words, EscapeControlCharacters) {
  EXPECT_EQ(inQuotes("a\tb\x1b[2J\x7f"), "\"a\\x09b\\x1b[2J\\x7f\"");
  EXPECT_EQ(escaped(std::string_view("\0", 1)), "\\x00");
  // A terminal may take the C1 character CSI as it takes ESC and "[".
  EXPECT_EQ(escaped("\xC2\x9B"), "\\xc2\\x9b");
}

TEST(Words, EscapeBytesThatAreNoUtf8) {
  EXPECT_EQ(escaped("a\xff\xC3z"), "a\\xff\\xc3z");
  EXPECT_EQ(escaped("\xED\xA0\x80"), "\\xed\\xa0\\x80");
}

TEST(Words, CutExcerptsBetweenCharacters) {
  EXPECT_EQ(inQuotes(std::string(60, 'x')), '"' + std::string(60, 'x') + '"');
  EXPECT_EQ(inQuotes(std::string(61, 'x')), '"' + std::string(60, 'x') + "...\"");
  EXPECT_EQ(excerpt(std::string(59, 'x') + "ßy"), std::string(59, 'x') + "ß...");
  EXPECT_EQ(excerpt(std::string(57, 'x') + '\x1b'), std::string(57, 'x') + "...");
  EXPECT_EQ(escaped(std::string(61, 'x')), std::string(61, 'x'));
}

}  // namespace
}  // namespace starsift
