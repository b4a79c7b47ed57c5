#include "core/SerializableArray.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/LossyConversion.h"
#include "support/fixtures/TextOf.h"

namespace starsift {
namespace {

using test::textOf;
using Texts = SerializableArray<std::string>;

SerializableArray<long> numbers(std::initializer_list<long> elements,
                                const std::string& separators) {
  SerializableArray<long> array(separators, false, false);
  array.resize(static_cast<Index>(elements.size()), false);
  std::copy(elements.begin(), elements.end(), array.begin());
  return array;
}

Texts texts(std::initializer_list<std::string> elements, const std::string& separators) {
  Texts array(separators, false, false);
  array.resize(static_cast<Index>(elements.size()), false);
  std::copy(elements.begin(), elements.end(), array.begin());
  return array;
}

/// The items that a list with this setting reads from the text.
std::vector<std::string> itemsIn(const std::string& text, const std::string& separators,
                                 bool merge = false) {
  std::istringstream stream(text);
  Texts array(separators, merge, false);
  stream >> array;
  return {array.begin(), array.end()};
}

using Items = std::vector<std::string>;

/// An element of class type that reads a number and stays as it is without one.
struct Reading {
  long value = -1;
};
std::istream& operator>>(std::istream& stream, Reading& reading) {
  long value = 0;
  if (stream >> value) reading.value = value;
  return stream;
}
std::ostream& operator<<(std::ostream& stream, const Reading& reading) {
  return stream << reading.value;
}

TEST(Serializable, AppendsABlankToTheSeparators) {
  EXPECT_EQ(Texts(",", false, false).separators(), ", ");
  EXPECT_EQ(Texts("", false, false).separators(), " ");
  EXPECT_EQ(Texts(",\n", false, false).separators(), ",\n ");
}

TEST(Serializable, AppendsNoSecondBlank) {
  EXPECT_EQ(Texts(" ", false, false).separators(), " ");
  EXPECT_EQ(Texts(" ,", false, false).separators(), " ,");
}

TEST(Serializable, KeepsBothFlagsApart) {
  EXPECT_TRUE(Texts(",", true, false).mergeSeparators());
  EXPECT_FALSE(Texts(",", true, false).secondFlag());
  EXPECT_FALSE(Texts(",", false, true).mergeSeparators());
  EXPECT_TRUE(Texts(",", false, true).secondFlag());
}

TEST(Serializable, CopiesItsSettingWithTheContent) {
  const Texts source(";", true, true);
  const Texts copy(source);
  EXPECT_EQ(copy.separators(), "; ");
  Texts assigned(",", false, false);
  assigned = source;
  EXPECT_EQ(assigned.separators(), "; ");
  EXPECT_TRUE(assigned.mergeSeparators());
  EXPECT_TRUE(assigned.secondFlag());
}

TEST(Serializable, StaysUsableWhenItWasMovedFrom) {
  Texts source = texts({"a"}, ";");
  const Texts target(std::move(source));
  EXPECT_EQ(target.separators(), "; ");
  EXPECT_EQ(source.separators(), "; ");
  EXPECT_EQ(textOf(source), "[ ]");
}

TEST(Serializable, ExchangesItsSettingWithTheContentInAMoveAssignment) {
  Texts source = texts({"a", "b"}, ";");
  Texts target = texts({"c", "d"}, ":");
  target = std::move(source);
  EXPECT_EQ(textOf(target), "[ a;b ]");
  EXPECT_EQ(textOf(source), "[ c:d ]");
}

TEST(SerializableArray, WritesTheFirstSeparatorBetweenItems) {
  EXPECT_EQ(textOf(numbers({1, 2, 3}, ",")), "[ 1,2,3 ]");
  EXPECT_EQ(textOf(numbers({1, 2, 3}, ";,")), "[ 1;2;3 ]");
}

TEST(SerializableArray, WritesOneItemWithoutSeparator) {
  EXPECT_EQ(textOf(numbers({1}, ",")), "[ 1 ]");
}

TEST(SerializableArray, WritesAnEmptyListWithOneFrame) {
  EXPECT_EQ(textOf(numbers({}, ",")), "[ ]");
  EXPECT_EQ(textOf(numbers({}, ",\n")), "[\n]");
}

TEST(SerializableArray, FramesWithALineFeedWhereThatSeparates) {
  EXPECT_EQ(textOf(numbers({1, 2}, "\n")), "[\n1\n2\n]");
  EXPECT_EQ(textOf(numbers({1, 2}, ",\n")), "[\n1,2\n]");
}

TEST(SerializableArray, LeavesSlotZeroOut) {
  SerializableArray<long> array = numbers({1}, ",");
  array[0] = 9;
  EXPECT_EQ(textOf(array), "[ 1 ]");
}

TEST(SerializableArray, EscapesTheLaterSeparators) {
  EXPECT_EQ(textOf(texts({"a b;c"}, ",;")), "[ a\\ b\\;c ]");
}

TEST(SerializableArray, LeavesTheFirstSeparatorUnescaped) {
  EXPECT_EQ(textOf(texts({"a,b"}, ",")), "[ a,b ]");
}

TEST(SerializableArray, EscapesTheZeroCharacter) {
  EXPECT_EQ(textOf(texts({std::string("a\0b", 3)}, ",")), std::string("[ a\\\0b ]", 8));
}

TEST(SerializableArray, LeavesBackslashesAsTheyAre) {
  EXPECT_EQ(textOf(texts({"a\\b"}, ",")), "[ a\\b ]");
}

TEST(SerializableArray, ReadsWhatItWrote) {
  EXPECT_EQ(itemsIn("[ a,b,c ]", ","), (Items{"a", "b", "c"}));
  EXPECT_EQ(itemsIn("[\na\nb\n]", "\n"), (Items{"a", "b"}));
}

TEST(SerializableArray, ReadsAnEmptyList) {
  EXPECT_EQ(itemsIn("[ ]", ","), Items());
  EXPECT_EQ(itemsIn("[]", ","), Items());
}

TEST(SerializableArray, ReadsAListWithoutFrame) {
  EXPECT_EQ(itemsIn("[a,b]", ","), (Items{"a", "b"}));
}

TEST(SerializableArray, SkipsWhiteSpaceInFront) {
  EXPECT_EQ(itemsIn(" \t\r\n[ a ]", ","), (Items{"a"}));
}

TEST(SerializableArray, LeavesWhatStandsBehindTheList) {
  std::istringstream stream("[ 1,2 ] x");
  SerializableArray<long> array(",", false, false);
  stream >> array;
  EXPECT_EQ(stream.get(), ' ');
  EXPECT_EQ(array.dimension(), 2);
}

TEST(SerializableArray, ReadsAnItemWithTheFirstSeparatorAsTwo) {
  EXPECT_EQ(itemsIn(textOf(texts({"a,b"}, ",")), ","), (Items{"a", "b"}));
}

TEST(SerializableArray, ReadsAnItemWithALaterSeparatorAsOne) {
  EXPECT_EQ(itemsIn(textOf(texts({"a b;c", "d"}, ",;")), ",;"), (Items{"a b;c", "d"}));
}

TEST(SerializableArray, ReadsTheZeroCharacterBack) {
  const std::string text("a\0b", 3);
  EXPECT_EQ(itemsIn(textOf(texts({text}, ",")), ","), Items{text});
}

TEST(SerializableArray, TakesABracketBehindABackslashLiterally) {
  EXPECT_EQ(itemsIn("[ a\\]b ]", ","), Items{"a\\]b"});
}

TEST(SerializableArray, DropsOnlyTheFirstEmptyItem) {
  EXPECT_EQ(itemsIn("[ a,,b ]", ","), (Items{"a", "", "b"}));
  EXPECT_EQ(itemsIn("[ ,a ]", ","), (Items{"", "a"}));
  EXPECT_EQ(itemsIn("[,a ]", ","), (Items{"a"}));
}

TEST(SerializableArray, ConsumesOneSeparatorAtATime) {
  EXPECT_EQ(itemsIn("[ a, b ]", ","), (Items{"a", "", "b"}));
  EXPECT_EQ(itemsIn("[ a  b ]", ","), (Items{"a", "", "b"}));
}

TEST(SerializableArray, EndsAtABracketBehindASeparatorWithoutAFurtherItem) {
  EXPECT_EQ(itemsIn("[ a,]", ","), (Items{"a"}));
  EXPECT_EQ(itemsIn("[ a  ]", ","), (Items{"a"}));
}

TEST(SerializableArray, RunsItemsTogetherWhereSeparatorsMerge) {
  EXPECT_EQ(itemsIn("[ a  b,c ]", ",", true), Items{"abc"});
}

TEST(SerializableArray, SkipsCommentsWhereSeparatorsMerge) {
  EXPECT_EQ(itemsIn("[ a /* x */ b // y\n]", " \n", true), Items{"ab"});
  EXPECT_EQ(itemsIn("[ /**/ ]", " ", true), Items());
}

TEST(SerializableArray, TakesCommentsForTextWhereSeparatorsDoNotMerge) {
  EXPECT_EQ(itemsIn("[ /**/,// ]", ","), (Items{"/**/", "//"}));
}

TEST(SerializableArray, RefusesTextWithoutABracket) {
  EXPECT_FAILS_WITH(itemsIn("xyz", ","), "SerializableArray: no start found");
  EXPECT_FAILS_WITH(itemsIn("", ","), "SerializableArray: no start found");
  EXPECT_FAILS_WITH(itemsIn("/**/[ a ]", ","), "SerializableArray: no start found");
}

TEST(SerializableArray, RefusesAFailedStream) {
  std::istringstream stream("[ a ]");
  stream.setstate(std::ios_base::failbit);
  Texts array;
  EXPECT_FAILS_WITH(stream >> array, "SerializableArray: no start found");
}

TEST(SerializableArray, RefusesTextThatEndsInside) {
  EXPECT_FAILS_WITH(itemsIn("[", ","), "SerializableArray: no end found");
  EXPECT_FAILS_WITH(itemsIn("[ a", ","), "SerializableArray: no end found");
  EXPECT_FAILS_WITH(itemsIn("[ a,", ","), "SerializableArray: no end found");
  EXPECT_FAILS_WITH(itemsIn("[ a\\", ","), "SerializableArray: no end found");
  EXPECT_FAILS_WITH(itemsIn("[ a\\]", ","), "SerializableArray: no end found");
  EXPECT_FAILS_WITH(itemsIn("[ a", ",", true), "SerializableArray: no end found");
}

TEST(SerializableArray, RefusesACommentThatIsNeverClosed) {
  EXPECT_FAILS_WITH(itemsIn("[ a /* ]", ",", true), "comment is not closed");
}

TEST(SerializableArray, ForgetsWhatItHeldBefore) {
  std::istringstream stream("[ 5,x ]");
  SerializableArray<long> array = numbers({7, 8, 9}, ",");
  stream >> array;
  EXPECT_EQ(array.dimension(), 2);
  EXPECT_EQ(array[1], 5);
  EXPECT_EQ(array[2], 0);
}

TEST(SerializableArray, LeavesNoOldElementWhereTheTextHasNone) {
  std::istringstream stream("[ 5,x ]");
  SerializableArray<Reading> array;
  array.resize(2, false);
  array[2].value = 7;
  stream >> array;
  EXPECT_EQ(array[1].value, 5);
  EXPECT_EQ(array[2].value, -1);
}

TEST(SerializableArray, ReadsNoOldTextIntoAnEmptyItem) {
  std::istringstream stream("[ a,, ]");
  Texts array = texts({"x", "y", "z"}, ",");
  stream >> array;
  EXPECT_EQ(array[2], "");
}

TEST(SerializableArray, ConvertsWithItsSetting) {
  SerializableArray<long double> source(";", true, true);
  source.resize(1, false);
  source[1] = 4;
  SerializableArray<long> target(",", false, false);
  target.convertFrom(source, true);
  EXPECT_EQ(textOf(target), "[ 4 ]");
  EXPECT_EQ(target.separators(), "; ");
  EXPECT_TRUE(target.mergeSeparators());
}

TEST(SerializableArray, ReadsAMillionItems) {
  std::string text = "[ ";
  for (int i = 0; i < 1'000'000; ++i) text += "7,";
  text.back() = ' ';
  std::istringstream stream(text + "]");
  SerializableArray<long> array;
  stream >> array;
  EXPECT_EQ(array.dimension(), 1'000'000);
  EXPECT_EQ(array[1'000'000], 7);
}

TEST(SerializableArray, TakesAMegabyteOfBracketsForOneItem) {
  const std::string brackets(1'000'000, '[');
  EXPECT_EQ(itemsIn(brackets + "]", ","), Items{brackets.substr(1)});
}

TEST(SerializableArray, ReadsOneItemOfAMegabyteOfBackslashes) {
  const std::string text(1'000'000, '\\');
  EXPECT_EQ(itemsIn("[ " + text + "a ]", ","), Items{text + "a"});
}

}  // namespace
}  // namespace starsift
