#include "core/VectorText.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iomanip>
#include <sstream>
#include <string>
#include <vector>

#include "support/fixtures/VectorTextSuite.h"

namespace starsift {

namespace test {
INSTANTIATE_TYPED_TEST_SUITE_P(LongDouble, VectorTextOver, long double);
INSTANTIATE_TYPED_TEST_SUITE_P(Long, VectorTextOver, long);
INSTANTIATE_TYPED_TEST_SUITE_P(Short, VectorTextOver, short);
}  // namespace test

namespace {

using test::textOf;
using test::vectorIn;
using V = Vector<long double>;

TEST(VectorText, WritesInTheNumberFormatOfTheStream) {
  const V vector{1.0L / 3, 1234567};
  EXPECT_EQ(textOf(vector), "[ 0.333333 1.23457e+06 ]");
  std::ostringstream stream;
  stream << std::setprecision(fileDigits) << vector;
  EXPECT_EQ(stream.str(), "[ 0.33333333333333333 1234567 ]");
}

TEST(VectorText, AppendsLongVectorsOfAllKindsAsAStreamShowsThem) {
  V vector(700);
  for (Index i = 1; i <= vector.dimension(); ++i) {
    const auto value = static_cast<long double>(i);
    vector[i] = i % 50 == 7 ? 1 / value : (i % 3 - 1) * std::pow(value, static_cast<int>(i % 8));
  }
  std::ostringstream stream;
  stream << std::setprecision(fileDigits) << vector;
  std::string text;
  appendText(text, vector, fileDigits);
  EXPECT_EQ(text, stream.str());
}

TEST(VectorText, AppendsTheGivenNumberOfDigits) {
  const V vector{1.0L / 3, -0.0L, 1e20L};
  for (const int digits : {defaultDigits, fileDigits}) {
    std::ostringstream stream;
    stream << std::setprecision(digits) << vector;
    std::string text;
    appendText(text, vector, digits);
    EXPECT_EQ(text, stream.str());
  }
}

TEST(VectorText, ReadsDecimalsAndExponents) {
  EXPECT_EQ(textOf(vectorIn<long double>("[ .5 -1.25 5. 1e3 1E-2 +7 ]")),
            "[ 0.5 -1.25 5 1000 0.01 7 ]");
}

TEST(VectorText, ReadsNumbersThatTouch) {
  EXPECT_EQ(textOf(vectorIn<long double>("[1-2+3]")), "[ 1 -2 3 ]");
  EXPECT_EQ(textOf(vectorIn<long double>("[1.2.3]")), "[ 1.2 0.3 ]");
}

TEST(VectorText, KeepsANegativeZero) {
  EXPECT_TRUE(std::signbit(vectorIn<long double>("[ -0 ]")[1]));
}

TEST(VectorText, ReadsWhatItWroteOfInfinities) {
  EXPECT_EQ(textOf(vectorIn<long double>("[ inf -inf ]")), "[ inf -inf ]");
}

TEST(VectorText, RefusesWhatIsNoNumber) {
  EXPECT_FAILS_WITH(vectorIn<long double>("[ x ]"), "Vector: bad input");
  EXPECT_FAILS_WITH(vectorIn<long double>("[ - ]"), "Vector: bad input");
  EXPECT_FAILS_WITH(vectorIn<long double>("[ 1e ]"), "Vector: bad input");
  EXPECT_FAILS_WITH(vectorIn<long double>("[ 1,2 ]"), "Vector: bad input");
  EXPECT_FAILS_WITH(vectorIn<long double>("[ 1/2 ]"), "Vector: bad input");
  EXPECT_FAILS_WITH(vectorIn<long double>("[ 1 / ]"), "Vector: bad input");
  EXPECT_FAILS_WITH(vectorIn<long double>("[ nan ]"), "Vector: bad input");
  EXPECT_FAILS_WITH(vectorIn<long double>("[ +inf ]"), "Vector: bad input");
  EXPECT_FAILS_WITH(vectorIn<long double>("[ - inf ]"), "Vector: bad input");
  EXPECT_FAILS_WITH(vectorIn<long double>("[ [ 1 ] ]"), "Vector: bad input");
  EXPECT_FAILS_WITH(vectorIn<long double>("[ 1e9999 ]"), "Vector: bad input");
}

TEST(VectorText, RefusesANulByte) {
  EXPECT_FAILS_WITH(vectorIn<long double>(std::string("[ 1\0 ]", 6)), "Vector: bad input");
}

TEST(VectorText, RefusesTextThatEndsInside) {
  EXPECT_FAILS_WITH(vectorIn<long double>("["), "Vector: bad input");
  EXPECT_FAILS_WITH(vectorIn<long double>("[ 1 2"), "Vector: bad input");
  EXPECT_FAILS_WITH(vectorIn<long double>("[ 1 -"), "Vector: bad input");
  EXPECT_FAILS_WITH(vectorIn<long double>("[ 1 // ]"), "Vector: bad input");
}

TEST(VectorText, RefusesAMegabyteOfBrackets) {
  EXPECT_FAILS_WITH(vectorIn<long double>(std::string(1'000'000, '[')), "Vector: bad input");
}

TEST(VectorText, RefusesANumberBeyondTheRangeOfAnInteger) {
  EXPECT_FAILS_WITH(vectorIn<long>("[ 99999999999999999999 ]"), "Vector: bad input");
  EXPECT_FAILS_WITH(vectorIn<short>("[ 40000 ]"), "Vector: bad input");
}

TEST(ReadComponents, TellsABracketFromNone) {
  std::vector<long> components = {1};
  const auto readNumber = [](TextCursor& source, long& value) {
    return NumberTraits<long>::read(source, value);
  };
  TextCursor none("x");
  EXPECT_FALSE(readComponents(none, components, readNumber));
  EXPECT_TRUE(components.empty());
  TextCursor empty("[ ]");
  EXPECT_TRUE(readComponents(empty, components, readNumber));
}

TEST(ReadComponents, TakesTheGivenReaderOfNumbers) {
  std::vector<long> components;
  TextCursor source("[ a -a ]");
  EXPECT_TRUE(readComponents(source, components, [](TextCursor& from, long& value) {
    value = from.peek();
    from.take();
    return true;
  }));
  EXPECT_EQ(components, (std::vector<long>{'a', -'a'}));
}

}  // namespace
}  // namespace starsift
