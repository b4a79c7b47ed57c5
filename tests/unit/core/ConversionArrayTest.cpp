#include "core/ConversionArray.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "core/Matrix.h"
#include "support/fixtures/LossyConversion.h"

namespace starsift {
namespace {

template <class T>
ConversionArray<T> arrayOf(std::initializer_list<T> elements) {
  ConversionArray<T> array(static_cast<Index>(elements.size()));
  std::copy(elements.begin(), elements.end(), array.begin());
  return array;
}

TEST(ConversionArray, StartsNewNumbersAtZeroWhereOthersWere) {
  ConversionArray<long> array = arrayOf<long>({1, 2, 3, 4});
  array.resize(2, false);
  array.resize(4, false);
  EXPECT_EQ(array[2], 2);
  EXPECT_EQ(array[3], 0);
  EXPECT_EQ(array[4], 0);
}

TEST(ConversionArray, LeavesSlotZeroAloneWhenItGrows) {
  ConversionArray<long> array = arrayOf<long>({1, 2});
  array[0] = 42;
  array.resize(0, false);
  array.resize(300, true);
  EXPECT_EQ(array[0], 42);
  EXPECT_EQ(array[1], 0);
}

TEST(ConversionArray, ShowsOldElementsOfClassTypeAgain) {
  ConversionArray<std::string> array = arrayOf<std::string>({"a", "b"});
  array.resize(1, false);
  array.resize(2, false);
  EXPECT_EQ(array[2], "b");
}

TEST(ConversionArray, ConvertsEveryElementAndTakesTheDimension) {
  ConversionArray<long> target = arrayOf<long>({9, 9, 9});
  target.convertFrom(arrayOf<long double>({1, -2}), true);
  EXPECT_EQ(target.dimension(), 2);
  EXPECT_EQ(target[1], 1);
  EXPECT_EQ(target[2], -2);
}

TEST(ConversionArray, ConvertsAnEmptySource) {
  ConversionArray<long> target = arrayOf<long>({9});
  target.convertFrom(ConversionArray<long double>(), true);
  EXPECT_FALSE(target.isSet());
}

TEST(ConversionArray, LosesSilentlyWithoutCheck) {
  ConversionArray<long> target;
  target.convertFrom(arrayOf<long double>({1.5L}), false);
  EXPECT_EQ(target[1], 1);
}

TEST(ConversionArray, TellsWhenTheCheckFindsALossAndStaysAsItWas) {
  ConversionArray<long> target = arrayOf<long>({7});
  try {
    target.convertFrom(arrayOf<long double>({1, 2.5L}), true);
    FAIL() << "2.5 went through";
  } catch (const PrecisionException& exception) {
    EXPECT_EQ(exception.message(), "Precision lost during conversion");
  }
  EXPECT_EQ(target.dimension(), 1);
  EXPECT_EQ(target[1], 7);
}

TEST(ConversionArray, SeesALossFarBelowTheTolerance) {
  ConversionArray<long> target;
  EXPECT_THROW(target.convertFrom(arrayOf<long double>({1 + 1e-17L}), true), PrecisionException);
}

TEST(ConversionArray, TellsALossInTheLastDigitOfALongInteger) {
  ConversionArray<long> target;
  EXPECT_NO_THROW(target.convertFrom(arrayOf<long double>({999999999999999999.0L}), true));
  EXPECT_THROW(target.convertFrom(arrayOf<long double>({99999999999999999.5L}), true),
               PrecisionException);
}

TEST(ConversionArray, PassesTheExceptionOfAConversionOnAndStaysAsItWas) {
  ConversionArray<long> target = arrayOf<long>({7});
  EXPECT_THROW(target.convertFrom(arrayOf<long double>({1, 1e19L}), false),
               PreCommaPrecisionException);
  EXPECT_EQ(target.dimension(), 1);
  EXPECT_EQ(target[1], 7);
}

TEST(ConversionArray, CopiesWhereTheTypesAreTheSame) {
  ConversionArray<long double> target;
  const long double infinity = std::numeric_limits<long double>::infinity();
  target.convertFrom(arrayOf<long double>({infinity, -infinity, 0.1L}), true);
  EXPECT_EQ(target[1], infinity);
  EXPECT_EQ(target[2], -infinity);
  EXPECT_EQ(target[3], 0.1L);
}

TEST(ConversionArray, ConvertsANanToNothingEqualAndTellsSo) {
  ConversionArray<long double> target;
  EXPECT_THROW(target.convertFrom(
                   arrayOf<long double>({std::numeric_limits<long double>::quiet_NaN()}), true),
               PrecisionException);
}

}  // namespace
}  // namespace starsift
