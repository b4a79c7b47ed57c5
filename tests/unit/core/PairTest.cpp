#include "core/Pair.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace starsift {

/// A conversion for these tests that loses what stands behind the point.
template <>
struct NumberConversion<short, long double> {
  static short convert(long double value) { return static_cast<short>(value); }
};
template <>
struct NumberConversion<long double, short> {
  static long double convert(short value) { return value; }
};

namespace {

TEST(Pair, StartsWithEmptyValues) {
  const Pair<long, std::string> pair;
  EXPECT_EQ(pair.left, 0);
  EXPECT_EQ(pair.right, "");
}

TEST(Pair, ConvertsBothValues) {
  Pair<short, short> target;
  target.convertFrom(Pair<long double, long double>(3, 4), true);
  EXPECT_EQ(target.left, 3);
  EXPECT_EQ(target.right, 4);
}

TEST(Pair, TellsWhenTheConversionOfTheLeftValueLosesSomething) {
  Pair<short, short> target;
  EXPECT_THROW(target.convertFrom(Pair<long double, long double>(3.5L, 4), true),
               PrecisionException);
}

TEST(Pair, TellsWhenAConversionLosesSomethingAndStaysAsItWas) {
  Pair<short, short> target(1, 2);
  try {
    target.convertFrom(Pair<long double, long double>(3, 4.5L), true);
    FAIL() << "4.5 went through";
  } catch (const PrecisionException& exception) {
    EXPECT_EQ(exception.message(), "Precision lost during conversion");
  }
  EXPECT_EQ(target.left, 1);
  EXPECT_EQ(target.right, 2);
}

TEST(Pair, LosesSilentlyWithoutTheCheck) {
  Pair<short, short> target;
  target.convertFrom(Pair<long double, long double>(3, 4.5L), false);
  EXPECT_EQ(target.right, 4);
}

TEST(SerializablePair, ReadsBackWhatItWrote) {
  const SerializablePair<long, long double> pair(-3, 0.5L);
  std::stringstream stream;
  stream << pair;
  EXPECT_EQ(stream.str(), "(-3, 0.5)");
  SerializablePair<long, long double> back;
  stream >> back;
  EXPECT_EQ(back.left, -3);
  EXPECT_EQ(back.right, 0.5L);
}

TEST(SerializablePair, TakesAnyDelimitersAndBlanks) {
  SerializablePair<long, long> pair;
  std::istringstream stream(" [ 1 ;2 ] 3");
  stream >> pair;
  EXPECT_EQ(pair.left, 1);
  EXPECT_EQ(pair.right, 2);
  long rest = 0;
  stream >> rest;
  EXPECT_EQ(rest, 3);
}

TEST(SerializablePair, HasTheCommaAsItsDelimiter) {
  EXPECT_EQ((SerializablePair<long, long>().separators()), ", ");
}

TEST(RightOrderPair, IsOrderedByItsRightValueAlone) {
  const RightOrderPair<long, long> a(9, 1);
  const RightOrderPair<long, long> b(1, 2);
  EXPECT_TRUE(a < b);
  EXPECT_TRUE(b > a);
  EXPECT_TRUE(a <= b);
  EXPECT_FALSE(a >= b);
  EXPECT_FALSE(a == b);
}

TEST(RightOrderPair, IsEqualToAnotherWithTheSameRightValue) {
  const RightOrderPair<long, long> a(9, 1);
  const RightOrderPair<long, long> b(1, 1);
  EXPECT_TRUE(a == b);
  EXPECT_FALSE(a < b);
  EXPECT_TRUE(a <= b);
  EXPECT_TRUE(a >= b);
}

TEST(RightOrderPair, HasTheTextOfAPair) {
  std::ostringstream stream;
  stream << RightOrderPair<long, std::string>(1, "a");
  EXPECT_EQ(stream.str(), "(1, a)");
}

}  // namespace
}  // namespace starsift
