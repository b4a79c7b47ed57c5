#include "core/NumberTraits.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iomanip>
#include <limits>
#include <optional>
#include <sstream>
#include <string>

#include "system/Exceptions.h"

namespace starsift {
namespace {

using Traits = NumberTraits<long double>;

constexpr long double infinity = std::numeric_limits<long double>::infinity();
constexpr long double nan = std::numeric_limits<long double>::quiet_NaN();

template <class T>
std::optional<T> numberIn(const std::string& text) {
  TextCursor source(text);
  T value = T();
  if (!NumberTraits<T>::read(source, value)) return std::nullopt;
  return value;
}

std::string appended(long double value, int digits) {
  std::string text = "x";
  Traits::append(text, value, digits);
  return text.substr(1);
}

std::string streamed(long double value, int digits) {
  std::ostringstream stream;
  stream << std::setprecision(digits) << value;
  return stream.str();
}

TEST(NumberTraitsOfLongDouble, HasTheToleranceOfHalfItsDigits) {
  EXPECT_EQ(Traits::tolerance(), 1 / 1e9L);
  EXPECT_EQ(safeBound, 1000000000.0L);
  EXPECT_EQ(fatalBound, 1000000000000000000.0L);
}

TEST(NumberTraitsOfLongDouble, TakesValuesWithinTheToleranceForZero) {
  EXPECT_TRUE(Traits::isZero(0));
  EXPECT_TRUE(Traits::isZero(1e-9L));
  EXPECT_TRUE(Traits::isZero(-1e-9L));
  EXPECT_FALSE(Traits::isZero(1.001e-9L));
  EXPECT_FALSE(Traits::isZero(nan));
  EXPECT_FALSE(Traits::isZero(-infinity));
}

TEST(NumberTraitsOfLongDouble, IsEqualWithinTheTolerance) {
  EXPECT_TRUE(Traits::equal(1, 1 + 0.9e-9L));
  EXPECT_TRUE(Traits::equal(0, -1e-9L));
  EXPECT_FALSE(Traits::equal(1, 1 + 1.1e-9L));
}

TEST(NumberTraitsOfLongDouble, KeepsTheToleranceAbsolute) {
  EXPECT_FALSE(Traits::equal(1e17L, 1e17L + 1));
}

TEST(NumberTraitsOfLongDouble, TakesEqualInfinitiesForEqual) {
  EXPECT_TRUE(Traits::equal(infinity, infinity));
  EXPECT_TRUE(Traits::equal(-infinity, -infinity));
  EXPECT_FALSE(Traits::equal(infinity, -infinity));
  EXPECT_FALSE(Traits::equal(infinity, 1));
}

TEST(NumberTraitsOfLongDouble, TakesANanForEqualToNothing) {
  EXPECT_FALSE(Traits::equal(nan, nan));
  EXPECT_FALSE(Traits::equal(nan, 0));
  EXPECT_FALSE(Traits::equal(infinity, nan));
}

TEST(NumberTraitsOfLongDouble, KnowsBothInfinities) {
  EXPECT_TRUE(Traits::isInfinite(infinity));
  EXPECT_TRUE(Traits::isInfinite(-Traits::infinity()));
  EXPECT_FALSE(Traits::isInfinite(nan));
  EXPECT_FALSE(Traits::isInfinite(std::numeric_limits<long double>::max()));
}

TEST(OverflowTest, PassesUpToTheSafeBound) {
  EXPECT_FALSE(Traits::overflowCheck(0));
  EXPECT_FALSE(Traits::overflowCheck(1e9L));
  EXPECT_FALSE(Traits::overflowCheck(-1e9L));
}

TEST(OverflowTest, PassesWhatIsNoFiniteNumber) {
  EXPECT_FALSE(Traits::overflowCheck(infinity));
  EXPECT_FALSE(Traits::overflowCheck(-infinity));
  EXPECT_FALSE(Traits::overflowCheck(nan));
}

TEST(OverflowTest, ReportsAnOverflowUpToTheFatalBound) {
  EXPECT_TRUE(Traits::overflowCheck(2e9L));
  EXPECT_TRUE(Traits::overflowCheck(-1.0000001e9L));
  EXPECT_TRUE(Traits::overflowCheck(1e18L));
  EXPECT_TRUE(Traits::overflowCheck(-1e18L));
}

TEST(OverflowTest, ThrowsBeyondTheFatalBound) {
  EXPECT_THROW(Traits::overflowCheck(2e18L), FatalPrecisionException);
  EXPECT_THROW(Traits::overflowCheck(-1.0000001e18L), FatalPrecisionException);
  EXPECT_THROW(Traits::overflowCheck(std::numeric_limits<long double>::max()),
               FatalPrecisionException);
}

TEST(OverflowTest, SaysThatNothingCanBeDone) {
  try {
    Traits::overflowCheck(1e19L);
    FAIL() << "1e19 passed";
  } catch (const FatalPrecisionException& exception) {
    EXPECT_EQ(exception.message(),
              "FatalPrecisionException exception: Uncorrectable precision overflow detected - "
              "probably more overflow / precision checks are needed ...");
  }
}

TEST(OverflowTest, NeverReportsForMachineIntegers) {
  EXPECT_FALSE(NumberTraits<long>::overflowCheck(std::numeric_limits<long>::max()));
}

TEST(NumberTraitsOfLongDouble, TruncatesTheRemainder) {
  EXPECT_EQ(Traits::remainder(7, 3), 1);
  EXPECT_EQ(Traits::remainder(-7, 3), -1);
  EXPECT_EQ(Traits::remainder(7, -3), 1);
}

TEST(NumberTraitsOfLongDouble, ReadsWhatAStreamReads) {
  EXPECT_EQ(numberIn<long double>("12"), 12);
  EXPECT_EQ(numberIn<long double>("-1.5"), -1.5L);
  EXPECT_EQ(numberIn<long double>("+.5"), 0.5L);
  EXPECT_EQ(numberIn<long double>("5."), 5);
  EXPECT_EQ(numberIn<long double>("1e3"), 1000);
  EXPECT_EQ(numberIn<long double>("1.25E-2"), 0.0125L);
  EXPECT_EQ(numberIn<long double>("1e+3"), 1000);
  EXPECT_EQ(numberIn<long double>("007"), 7);
}

TEST(NumberTraitsOfLongDouble, KeepsTheSignOfANegativeZero) {
  EXPECT_TRUE(std::signbit(numberIn<long double>("-0").value()));
}

TEST(NumberTraitsOfLongDouble, SkipsWhiteSpaceButNoComment) {
  EXPECT_EQ(numberIn<long double>(" \t\r\n3"), 3);
  EXPECT_FALSE(numberIn<long double>("/**/3"));
}

TEST(NumberTraitsOfLongDouble, FindsNoNumber) {
  EXPECT_FALSE(numberIn<long double>(""));
  EXPECT_FALSE(numberIn<long double>("-"));
  EXPECT_FALSE(numberIn<long double>("."));
  EXPECT_FALSE(numberIn<long double>("e5"));
  EXPECT_FALSE(numberIn<long double>("-e5"));
  EXPECT_FALSE(numberIn<long double>("1e"));
  EXPECT_FALSE(numberIn<long double>("1e+"));
  EXPECT_FALSE(numberIn<long double>("+-1"));
  EXPECT_FALSE(numberIn<long double>("x1"));
  EXPECT_FALSE(numberIn<long double>("inf"));
  EXPECT_FALSE(numberIn<long double>("nan"));
  EXPECT_FALSE(numberIn<long double>(std::string(1, '\0')));
}

TEST(NumberTraitsOfLongDouble, RefusesWhatIsBeyondItsRange) {
  EXPECT_FALSE(numberIn<long double>("1e5000"));
  EXPECT_FALSE(numberIn<long double>("-1e5000"));
}

TEST(NumberTraitsOfLongDouble, ReadsWhatIsBelowItsRangeAsZero) {
  EXPECT_EQ(numberIn<long double>("1e-6000"), 0);
}

TEST(NumberTraitsOfLongDouble, LeavesWhatStandsBehindTheNumber) {
  TextCursor source("12]x");
  long double value = 0;
  EXPECT_TRUE(Traits::read(source, value));
  EXPECT_EQ(source.rest(), "]x");
  TextCursor two("1-2");
  EXPECT_TRUE(Traits::read(two, value));
  EXPECT_EQ(two.rest(), "-2");
  TextCursor hexadecimal("0x1F");
  EXPECT_TRUE(Traits::read(hexadecimal, value));
  EXPECT_EQ(hexadecimal.rest(), "x1F");
}

TEST(NumberTraitsOfLongDouble, ReadsAMegabyteOfDigits) {
  EXPECT_EQ(numberIn<long double>("0." + std::string(1'000'000, '5')), 5.0L / 9);
  EXPECT_EQ(numberIn<long double>(std::string(1'000'000, '0') + "3"), 3);
}

TEST(NumberTraitsOfLongDouble, WritesWhatAStreamWrites) {
  for (const long double value : {0.0L,
                                  -0.0L,
                                  1.0L,
                                  -7.0L,
                                  0.1L,
                                  1.0L / 3,
                                  999999.0L,
                                  1000000.0L,
                                  999999.5L,
                                  123456.789L,
                                  1e17L,
                                  99999999999999999.0L,
                                  -123456789012345678.0L,
                                  1e18L,
                                  1e19L,
                                  1e-5L,
                                  1e-4L,
                                  1e300L,
                                  0x1p62L,
                                  0x1p63L,
                                  infinity,
                                  -infinity,
                                  nan,
                                  std::numeric_limits<long double>::max(),
                                  std::numeric_limits<long double>::denorm_min()}) {
    for (const int digits : {0, 1, 6, 17, 18, 19, 21}) {
      EXPECT_EQ(appended(value, digits), streamed(value, digits)) << digits;
    }
  }
}

TEST(NumberTraitsOfLongDouble, WritesMoreDigitsThanAnybodyNeeds) {
  EXPECT_EQ(appended(0.1L, 500), streamed(0.1L, 500));
  EXPECT_EQ(appended(std::numeric_limits<long double>::max(), 5000),
            streamed(std::numeric_limits<long double>::max(), 5000));
}

TEST(NumberTraitsOfLongDouble, WritesAsAStreamForANegativePrecision) {
  EXPECT_EQ(appended(12345678, -1), streamed(12345678, -1));
}

TEST(NumberTraitsOfLongDouble, KnowsIntegersBelowTwoToTheSixtyTwo) {
  std::int64_t integer = 0;
  EXPECT_TRUE(Traits::toInteger(-5, integer));
  EXPECT_EQ(integer, -5);
  EXPECT_TRUE(Traits::toInteger(0x1p62L - 1, integer));
  EXPECT_EQ(integer, (std::int64_t{1} << 62) - 1);
  EXPECT_FALSE(Traits::toInteger(0x1p62L, integer));
  EXPECT_FALSE(Traits::toInteger(-0x1p62L, integer));
  EXPECT_FALSE(Traits::toInteger(0.5L, integer));
  EXPECT_FALSE(Traits::toInteger(infinity, integer));
  EXPECT_FALSE(Traits::toInteger(nan, integer));
  EXPECT_FALSE(Traits::toInteger(std::numeric_limits<long double>::denorm_min(), integer));
  EXPECT_FALSE(Traits::toInteger(1.5L, integer));
  EXPECT_FALSE(Traits::toInteger(0x1p61L + 0.5L, integer));
}

TEST(NumberTraitsOfLongDouble, BothZerosAreTheIntegerZero) {
  std::int64_t integer = 1;
  EXPECT_TRUE(Traits::toInteger(0.0L, integer));
  EXPECT_EQ(integer, 0);
  integer = 1;
  EXPECT_TRUE(Traits::toInteger(-0.0L, integer));
  EXPECT_EQ(integer, 0);
}

TEST(NumberTraitsOfLongDouble, EveryPowerOfTwoBelowTwoToTheSixtyTwoIsAnInteger) {
  for (int exponent = 0; exponent < 62; ++exponent) {
    std::int64_t integer = 0;
    ASSERT_TRUE(Traits::toInteger(std::ldexp(-1.0L, exponent), integer));
    ASSERT_EQ(integer, -(std::int64_t{1} << exponent));
  }
}

TEST(NumberTraitsOfLongDouble, IntegersAreWrittenSoUpToThePrecision) {
  std::int64_t integer = 0;
  EXPECT_TRUE(Traits::writtenAsInteger(-999999, 6, integer));
  EXPECT_EQ(integer, -999999);
  EXPECT_FALSE(Traits::writtenAsInteger(1000000, 6, integer));
  EXPECT_FALSE(Traits::writtenAsInteger(-1000000, 6, integer));
  EXPECT_TRUE(Traits::writtenAsInteger(0, 6, integer));
  EXPECT_FALSE(Traits::writtenAsInteger(-0.0L, 6, integer));
  EXPECT_FALSE(Traits::writtenAsInteger(1, -1, integer));
  EXPECT_FALSE(Traits::writtenAsInteger(1, 19, integer));
}

TEST(NumberTraitsOfLongDouble, HashesEqualValuesAlike) {
  EXPECT_EQ(Traits::hash(0.0L), Traits::hash(-0.0L));
  EXPECT_EQ(Traits::hash(1e18L), Traits::hash(1000000000000000000.0L));
  EXPECT_NE(Traits::hash(1), Traits::hash(2));
  EXPECT_NE(Traits::hash(0.25L), Traits::hash(0.5L));
  EXPECT_NE(Traits::hash(3), Traits::hash(-3));
}

TEST(NumberTraitsOfLongDouble, AddsAndSubtractsProducts) {
  long double sum = 1;
  Traits::addProduct(sum, 2, 3);
  EXPECT_EQ(sum, 7);
  Traits::subtractProduct(sum, 5, 2);
  EXPECT_EQ(sum, -3);
}

template <class I>
class IntegerTraitsOver : public ::testing::Test {};
using Integers = ::testing::Types<long, short>;
TYPED_TEST_SUITE(IntegerTraitsOver, Integers);

TYPED_TEST(IntegerTraitsOver, HasNoTolerance) {
  EXPECT_EQ(NumberTraits<TypeParam>::tolerance(), 0);
  EXPECT_TRUE(NumberTraits<TypeParam>::isZero(0));
  EXPECT_FALSE(NumberTraits<TypeParam>::isZero(1));
  EXPECT_FALSE(NumberTraits<TypeParam>::equal(1, 2));
  EXPECT_TRUE(NumberTraits<TypeParam>::equal(-2, -2));
}

TYPED_TEST(IntegerTraitsOver, ReadsSignsAndDigits) {
  EXPECT_EQ(numberIn<TypeParam>("12"), 12);
  EXPECT_EQ(numberIn<TypeParam>(" -12"), -12);
  EXPECT_EQ(numberIn<TypeParam>("+12"), 12);
  EXPECT_EQ(numberIn<TypeParam>("010"), 10);
}

TYPED_TEST(IntegerTraitsOver, FindsNoNumber) {
  EXPECT_FALSE(numberIn<TypeParam>(""));
  EXPECT_FALSE(numberIn<TypeParam>("+"));
  EXPECT_FALSE(numberIn<TypeParam>("-"));
  EXPECT_FALSE(numberIn<TypeParam>("+-1"));
  EXPECT_FALSE(numberIn<TypeParam>("x"));
}

TYPED_TEST(IntegerTraitsOver, RefusesWhatIsBeyondItsRange) {
  const std::string most = std::to_string(std::numeric_limits<TypeParam>::max());
  EXPECT_EQ(numberIn<TypeParam>(most), std::numeric_limits<TypeParam>::max());
  EXPECT_FALSE(numberIn<TypeParam>(most + "0"));
}

TYPED_TEST(IntegerTraitsOver, WritesPlainDigits) {
  std::string text = "x";
  NumberTraits<TypeParam>::append(text, static_cast<TypeParam>(-1234), 2);
  EXPECT_EQ(text, "x-1234");
}

TYPED_TEST(IntegerTraitsOver, TruncatesTheRemainder) {
  EXPECT_EQ(NumberTraits<TypeParam>::remainder(-7, 3), -1);
}

}  // namespace
}  // namespace starsift
