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

TEST(Words, QuoteControlCharactersAndCutLongNames) {
  EXPECT_EQ(inQuotes("a\tb"), "\"a?b\"");
  EXPECT_EQ(inQuotes(std::string(61, 'x')), '"' + std::string(60, 'x') + "...\"");
}

}  // namespace
}  // namespace starsift
