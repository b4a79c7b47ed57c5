#include <gmpxx.h>
#include <gtest/gtest.h>
#include <starsift/starsift.h>

#include <cstdint>
#include <limits>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "LibraryErrors.h"

namespace starsift {
namespace {

TEST(LibraryNumber, ReadsDecimalsAndFractionsExactly) {
  EXPECT_EQ(Number("-2.50").text(), "-5/2");
  EXPECT_EQ(Number("14/4").text(), "7/2");
  EXPECT_EQ(Number("1e3").text(), "1000");
  EXPECT_EQ(Number("-INF").text(), "-inf");
}

TEST(LibraryNumber, TakesLeadingZerosForNothing) {
  EXPECT_EQ(Number("010"), Number(10));
}

TEST(LibraryNumber, IsTheSameWhicheverWayItCame) {
  constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
  EXPECT_EQ(Number("9223372036854775807"), Number(most));
  EXPECT_EQ(Number("-9223372036854775808"), Number(std::numeric_limits<std::int64_t>::min()));
  EXPECT_EQ(-Number("-9223372036854775807"), Number(most));
}

TEST(LibraryNumber, HoldsTheLargestUnsignedInteger) {
  EXPECT_EQ(Number(std::numeric_limits<std::uint64_t>::max()).text(), "18446744073709551615");
}

TEST(LibraryNumber, ComesFromTheClassesOfGmp) {
  const mpz_class integer("123456789012345678901");
  EXPECT_EQ(Number(integer).text(), "123456789012345678901");
  EXPECT_EQ(Number(mpq_class(integer, 2)).text(), "123456789012345678901/2");
}

TEST(LibraryNumber, ComesFromTheExpressionsOfGmp) {
  const mpz_class hundred(100);
  const mpq_class half(1, 2);
  EXPECT_EQ(Number(-hundred), Number(-100));
  EXPECT_EQ(Number(abs(-hundred) * 3 + hundred), Number(400));
  EXPECT_EQ(Number(hundred * half / 3), Number("50/3"));
  const Row row{hundred - 1, -half};
  EXPECT_EQ(row.terms()[1].coefficient, Number("-1/2"));
}

TEST(LibraryNumber, ComesFromNoOtherClassOfTwoArguments) {
  EXPECT_FALSE((std::is_constructible_v<Number, std::vector<int>>));
  EXPECT_FALSE((std::is_constructible_v<Number, std::pair<int, int>>));
  EXPECT_FALSE((std::is_constructible_v<Number, mpf_class>));
  EXPECT_FALSE((std::is_constructible_v<Number, decltype(-mpf_class())>));
}

TEST(LibraryNumber, IsNoBinaryFractionAndNoCharacter) {
  EXPECT_FALSE((std::is_constructible_v<Number, double>));
  EXPECT_FALSE((std::is_constructible_v<Number, bool>));
  EXPECT_FALSE((std::is_constructible_v<Number, char>));
}

TEST(LibraryNumber, IsOrderedByItsValue) {
  EXPECT_LT(Number("1/3"), Number("0.34"));
  EXPECT_LT(-Number::infinity(), Number("-100000000000000000000"));
  EXPECT_GT(Number::infinity(), Number("100000000000000000000"));
}

TEST(LibraryNumber, KnowsItsKind) {
  EXPECT_TRUE(Number("100000000000000000000").isInteger());
  EXPECT_FALSE(Number("1/2").isInteger());
  EXPECT_FALSE(Number::infinity().isInteger());
  EXPECT_TRUE((-Number::infinity()).isInfinite());
  EXPECT_EQ(Number(-3).toInt64(), -3);
  EXPECT_EQ(Number("1/2").toInt64(), std::nullopt);
  EXPECT_EQ(Number("-0.25").toDouble(), -0.25);
}

TEST(LibraryNumber, RefusesOtherTexts) {
  EXPECT_ERROR(Number(""), "\"\" is not a number");
  EXPECT_ERROR(Number("1 2"), "\"1 2\" is not a number");
  EXPECT_ERROR(Number("0x10"), "\"0x10\" is not a number");
  EXPECT_ERROR(Number("1/0"), "\"1/0\" has the denominator 0");
  EXPECT_ERROR(Number("1e100001"), "the exponent of \"1e100001\" is beyond 100000");
}

}  // namespace
}  // namespace starsift
