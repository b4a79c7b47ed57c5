// QQ::parse(), the exponents it works out, and the printed form.
#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>

#include "numbers/QQFunctions.h"
#include "numbers/QQText.h"
#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

constexpr const char* empty = "QQ: parse error1";
constexpr const char* malformed1 = "QQ: malformed number1";
constexpr const char* malformed2 = "QQ: malformed number2";
constexpr const char* signText =
    "A ganze / zaehler / nenner sign has been set, though it should not be used";
constexpr const char* outOfRange = "QQ: exponent out of range";

std::string printed(const QQ& value) {
  std::ostringstream stream;
  stream << value;
  return stream.str();
}

QQ tenTo(long exponent) {
  return pow(QQ::ten(), QQ(exponent));
}

std::string repeated(std::string_view text, int count) {
  std::string result;
  for (int i = 0; i < count; ++i) result += text;
  return result;
}

/// What QQ::parse throws for the text.
std::string refusal(std::string_view text) {
  try {
    return "accepted as " + printed(QQ::parse(text));
  } catch (const std::invalid_argument& e) {
    return e.what();
  }
}

TEST(QQPrint, MixedNumbers) {
  EXPECT_EQ(printed(QQ(5, 2)), "2:1/2");
  EXPECT_EQ(printed(QQ(-5, 2)), "-2:1/2");
  EXPECT_EQ(printed(QQ(-1, 3)), "-1/3");
  EXPECT_EQ(printed(QQ(4)), "4");
  EXPECT_EQ(printed(QQ(-4)), "-4");
  EXPECT_EQ(printed(QQ(0)), "0");
}

TEST(QQPrint, Infinities) {
  EXPECT_EQ(printed(QQ::infinity()), "inf");
  EXPECT_EQ(printed(-QQ::infinity()), "-inf");
}

TEST(QQPrint, BigNumbers) {
  const QQ huge(ZZ("123456789012345678901234567890", 10));
  EXPECT_EQ(printed(-huge), "-123456789012345678901234567890");
  EXPECT_EQ(printed(huge + QQ(1, 3)), "123456789012345678901234567890:1/3");
  EXPECT_EQ(printed(QQ(-1) / huge), "-1/123456789012345678901234567890");
}

TEST(QQPrint, HonoursTheWidthOfTheStream) {
  std::ostringstream stream;
  stream.width(6);
  stream << QQ(1, 2);
  EXPECT_EQ(stream.str(), "   1/2");
}

TEST(QQParse, Integers) {
  EXPECT_EQ(QQ::parse("42"), QQ(42));
  EXPECT_EQ(QQ::parse("+42"), QQ(42));
  EXPECT_EQ(QQ::parse("-42"), QQ(-42));
  EXPECT_EQ(QQ::parse("999999999999999999"), QQ(999'999'999'999'999'999));
  EXPECT_EQ(QQ::parse("1000000000000000000"), QQ(1'000'000'000'000'000'000));
  EXPECT_EQ(QQ::parse("-123456789012345678901234567890").numerator(),
            ZZ("-123456789012345678901234567890", 10));
}

TEST(QQParse, LongIntegersOfEveryLength) {
  for (int length = 17; length <= 200; ++length) {
    const std::string digits = "9" + repeated("01234567890", 20).substr(0, length - 1);
    const ZZ expected(digits.c_str(), 10);
    ASSERT_EQ(QQ::parse(digits), QQ(expected)) << length;
    ASSERT_EQ(QQ::parse("-" + digits), QQ(-expected)) << length;
    ASSERT_EQ(printed(QQ::parse(digits + ":1/3")), digits + ":1/3") << length;
    ASSERT_EQ(printed(QQ::parse("-" + digits + ":4/6")), "-" + digits + ":2/3") << length;
    ASSERT_EQ(QQ::parse(digits + ".5"), QQ(expected) + QQ(1, 2)) << length;
    ASSERT_EQ(QQ::parse(digits + "/7"), QQ(expected, ZZ(7))) << length;
    ASSERT_EQ(QQ::parse(digits + "e1"), QQ(expected) * QQ(10)) << length;
  }
}

TEST(QQParse, TailOfALongIntegerMustBeAProperFraction) {
  const std::string digits = repeated("7", 30);
  EXPECT_FAILS_WITH(QQ::parse(digits + ":4/3"), malformed2);
  EXPECT_FAILS_WITH(QQ::parse(digits + ":3"), malformed2);
  EXPECT_FAILS_WITH(QQ::parse(digits + ":"), empty);
}

TEST(QQParse, MinusZeroIsPositive) {
  EXPECT_TRUE(QQ::parse("-0").sign());
  EXPECT_TRUE(QQ::parse("-0").isZero());
  EXPECT_TRUE(QQ::parse("-0/5").sign());
}

TEST(QQParse, TakesTheBaseFromThePrefix) {
  EXPECT_EQ(QQ::parse("010"), QQ(8));
  EXPECT_EQ(QQ::parse("0x1F"), QQ(31));
  EXPECT_EQ(QQ::parse("-0X1f"), QQ(-31));
  EXPECT_EQ(QQ::parse("0b101"), QQ(5));
  EXPECT_EQ(QQ::parse("010/0x10"), QQ(1, 2));
  EXPECT_EQ(QQ::parse("010.5"), QQ(17, 2));
}

TEST(QQParse, SkipsWhiteSpaceInFrontAndInsideOfIntegers) {
  EXPECT_EQ(QQ::parse(" \t\n\v\f\r7"), QQ(7));
  EXPECT_EQ(QQ::parse("1 000"), QQ(1000));
  EXPECT_EQ(QQ::parse("- 7 "), QQ(-7));
  EXPECT_EQ(QQ::parse("1. 5"), QQ(3, 2));
}

TEST(QQParse, StopsAtAZeroCharacter) {
  EXPECT_EQ(QQ::parse(std::string_view("7\0008", 3)), QQ(7));
}

TEST(QQParse, MixedNumbers) {
  EXPECT_EQ(QQ::parse("3:1/4"), QQ(13, 4));
  EXPECT_EQ(QQ::parse("-3:1/4"), QQ(-13, 4));
  EXPECT_EQ(QQ::parse("0:1/4"), QQ(1, 4));
  EXPECT_EQ(QQ::parse("3:2/8"), QQ(13, 4));
  EXPECT_EQ(QQ::parse("3:+1/4"), QQ(13, 4));
  EXPECT_EQ(QQ::parse("3:-1/-4"), QQ(13, 4));
  EXPECT_EQ(printed(QQ::parse("3:1/4")), "3:1/4");
}

TEST(QQParse, MixedTailMustBeAProperFraction) {
  EXPECT_FAILS_WITH(QQ::parse("3:-1/4"), malformed1);
  EXPECT_FAILS_WITH(QQ::parse("3:04/7"), malformed1);
  EXPECT_FAILS_WITH(QQ::parse("3:5/4"), malformed2);
  EXPECT_FAILS_WITH(QQ::parse("3:4/4"), malformed2);
  EXPECT_FAILS_WITH(QQ::parse("3:4"), malformed2);
  EXPECT_FAILS_WITH(QQ::parse("3:inf"), malformed2);
  EXPECT_FAILS_WITH(QQ::parse("3:-inf"), malformed1);
  EXPECT_FAILS_WITH(QQ::parse("3:2.5"), malformed2);
  EXPECT_FAILS_WITH(QQ::parse("3:1:1/2"), malformed2);
  EXPECT_FAILS_WITH(QQ::parse("3:0"), empty);
  EXPECT_FAILS_WITH(QQ::parse("3:"), empty);
}

TEST(QQParse, MixedTailsMayNestWhenTheySumToAFraction) {
  EXPECT_EQ(QQ::parse("3:+0:1/2"), QQ(7, 2));
  EXPECT_EQ(QQ::parse("3:+0.5"), QQ(7, 2));
  EXPECT_EQ(QQ::parse("3:-0.-0"), QQ(3));
  EXPECT_FAILS_WITH(QQ::parse("3:-0.5"), malformed1);
}

TEST(QQParse, Fractions) {
  EXPECT_EQ(QQ::parse("6/4"), QQ(3, 2));
  EXPECT_EQ(printed(QQ::parse("6/4")), "1:1/2");
  EXPECT_EQ(QQ::parse("-1/-2"), QQ(1, 2));
  EXPECT_EQ(QQ::parse("--1/2"), QQ(1, 2));
  EXPECT_EQ(QQ::parse("1/-2"), QQ(-1, 2));
  EXPECT_EQ(QQ::parse("0/3"), QQ(0));
}

TEST(QQParse, ZeroDenominatorFails) {
  EXPECT_FAILS_WITH(QQ::parse("1/0"), "QQ: division by zero1");
  EXPECT_FAILS_WITH(QQ::parse("x/0"), "QQ: division by zero1");
}

TEST(QQParse, Decimals) {
  EXPECT_EQ(QQ::parse("0.05"), QQ(1, 20));
  EXPECT_EQ(QQ::parse("0.25"), QQ(1, 4));
  EXPECT_EQ(QQ::parse("0,25"), QQ(1, 4));
  EXPECT_EQ(QQ::parse("1.50"), QQ(3, 2));
  EXPECT_EQ(QQ::parse("-12.25"), QQ(-49, 4));
  EXPECT_EQ(QQ::parse("-0.5"), QQ(-1, 2));
  EXPECT_EQ(QQ::parse("0.08"), QQ(2, 25));
  EXPECT_EQ(QQ::parse("0.000000000000000000001"), tenTo(-21));
  EXPECT_EQ(QQ::parse("123456789012345678901.5"), QQ(ZZ("246913578024691357803", 10), ZZ(2)));
}

TEST(QQParse, DecimalTailOfZerosFails) {
  EXPECT_FAILS_WITH(QQ::parse("1.0"), empty);
  EXPECT_FAILS_WITH(QQ::parse("2.00"), empty);
  EXPECT_FAILS_WITH(QQ::parse("2."), empty);
  EXPECT_FAILS_WITH(QQ::parse("0.000000000000000000000"), empty);
}

TEST(QQParse, DecimalTailCountsByItsIntegerPartOnly) {
  EXPECT_EQ(QQ::parse("1.2.3"), QQ(6, 5));
  EXPECT_EQ(QQ::parse("1.5/2"), QQ(6, 5));
  EXPECT_EQ(QQ::parse("1.1/2"), QQ(1));
  EXPECT_EQ(QQ::parse("1.-5"), QQ(3, 2));
  EXPECT_EQ(QQ::parse("1.20/2"), QQ(11, 10));
  EXPECT_EQ(QQ::parse("1.3:1/2"), QQ(13, 10));
}

TEST(QQParse, DecimalTailMayBeInfinite) {
  EXPECT_EQ(QQ::parse("1.inf"), QQ(11, 10));
  EXPECT_EQ(QQ::parse("1.0-inf"), QQ(101, 100));
}

TEST(QQParse, DecimalTailMayHaveAnotherBase) {
  EXPECT_EQ(QQ::parse("1. 0x10"), QQ(29, 25));
}

TEST(QQParse, Infinities) {
  EXPECT_EQ(QQ::parse("inf"), QQ::infinity());
  EXPECT_EQ(QQ::parse("+inf"), QQ::infinity());
  EXPECT_EQ(QQ::parse("-inf"), -QQ::infinity());
  EXPECT_EQ(QQ::parse("information"), QQ::infinity());
}

TEST(QQParse, BrokenInfinitiesFail) {
  EXPECT_FAILS_WITH(QQ::parse("i"), "QQ: parse error2");
  EXPECT_FAILS_WITH(QQ::parse("-if"), "QQ: parse error2");
  EXPECT_FAILS_WITH(QQ::parse("in"), "QQ: parse error3");
  EXPECT_FAILS_WITH(QQ::parse("ind"), "QQ: parse error3");
}

TEST(QQParse, NothingFails) {
  EXPECT_FAILS_WITH(QQ::parse(""), empty);
  EXPECT_FAILS_WITH(QQ::parse(" \t"), empty);
  EXPECT_FAILS_WITH(QQ::parse("+"), empty);
  EXPECT_FAILS_WITH(QQ::parse("-"), empty);
}

TEST(QQParse, StraySignFails) {
  EXPECT_FAILS_WITH(QQ::parse("--5"), signText);
  EXPECT_FAILS_WITH(QQ::parse("+-5"), signText);
  EXPECT_FAILS_WITH(QQ::parse("--5.5"), signText);
  EXPECT_FAILS_WITH(QQ::parse("--5:1/2"), signText);
}

TEST(QQParse, InnermostLevelComplainsFirst) {
  EXPECT_FAILS_WITH(QQ::parse("--5.--5"), signText);
  EXPECT_FAILS_WITH(QQ::parse("--1:5/4"), malformed2);
  EXPECT_FAILS_WITH(QQ::parse("3:04:5/4"), malformed2);
  EXPECT_FAILS_WITH(QQ::parse("3:--4.5"), signText);
}

TEST(QQParse, OuterTextComplainsBeforeInnerText) {
  EXPECT_EQ(refusal("x.y/0"), "mpz_set_str");
  EXPECT_FAILS_WITH(QQ::parse("1.y/0"), "QQ: division by zero1");
}

TEST(QQParse, DigitsThatGmpRefusesThrow) {
  EXPECT_EQ(refusal(".5"), "mpz_set_str");
  EXPECT_EQ(refusal("abc"), "mpz_set_str");
  EXPECT_EQ(refusal("08"), "mpz_set_str");
  EXPECT_EQ(refusal("5inf"), "mpz_set_str");
  EXPECT_EQ(refusal("1/"), "mpz_set_str");
  EXPECT_EQ(refusal("/2"), "mpz_set_str");
  EXPECT_EQ(refusal("1/2/3"), "mpz_set_str");
  EXPECT_EQ(refusal("7//8"), "mpz_set_str");
  EXPECT_EQ(refusal("-+5"), "mpz_set_str");
  EXPECT_EQ(refusal("inf/2"), "mpz_set_str");
  EXPECT_EQ(refusal("1.5x"), "mpz_set_str");
}

TEST(QQExponent, IsWorkedOut) {
  EXPECT_EQ(QQ::parse("1.5e2"), QQ(150));
  EXPECT_EQ(QQ::parse("1e-3"), QQ(1, 1000));
  EXPECT_EQ(QQ::parse("1E+05"), QQ(100000));
  EXPECT_EQ(QQ::parse("-2e30"), QQ(-2) * tenTo(30));
  EXPECT_EQ(QQ::parse("infe-5"), QQ::infinity());
  EXPECT_EQ(QQ::parse("1e--2"), QQ(100));
}

TEST(QQExponent, CountsAsZeroWhenNothingRemains) {
  EXPECT_EQ(QQ::parse("1e"), QQ(1));
  EXPECT_EQ(QQ::parse("7e-"), QQ(7));
  EXPECT_EQ(QQ::parse("7e+000"), QQ(7));
}

TEST(QQExponent, MayHaveAnExponent) {
  EXPECT_EQ(QQ::parse("1e1e1"), tenTo(10));
  EXPECT_EQ(QQ::parse("2e-1e0"), QQ(1, 5));
}

TEST(QQExponent, MayBeAFraction) {
  const QQ rootOfTen = QQ::parse("1e1/2");
  EXPECT_LE(abs(rootOfTen * rootOfTen - QQ::ten()), tenTo(-28));
}

TEST(QQExponent, MayBeTooSmallToCount) {
  EXPECT_EQ(QQ::parse("7e1e-100000"), QQ(7));
  EXPECT_EQ(QQ::parse("7e-1e-100000"), QQ(7));
  EXPECT_EQ(QQ::parse("7e1e-61"), QQ(7));
  EXPECT_NE(QQ::parse("7e1e-50"), QQ(7));
  EXPECT_FAILS_WITH(QQ::parse("7einfe-100000"), outOfRange);
}

TEST(QQExponent, SplitsHexadecimalDigitsToo) {
  EXPECT_EQ(QQ::parse("0x1e2"), QQ(100));
}

TEST(QQExponent, HasBounds) {
  EXPECT_EQ(QQ::parse("1e100000"), tenTo(100000));
  EXPECT_EQ(QQ::parse("1e-100000"), tenTo(-100000));
  EXPECT_FAILS_WITH(QQ::parse("1e100001"), outOfRange);
  EXPECT_FAILS_WITH(QQ::parse("1e-100001"), outOfRange);
  EXPECT_FAILS_WITH(QQ::parse("0e100000.5"), outOfRange);
  EXPECT_FAILS_WITH(QQ::parse("1einf"), outOfRange);
  EXPECT_FAILS_WITH(QQ::parse("1e9e9e9e9"), outOfRange);
}

TEST(QQExponent, MantissaComplainsBeforeTheExponent) {
  EXPECT_FAILS_WITH(QQ::parse("e5"), empty);
  EXPECT_FAILS_WITH(QQ::parse("1.0ex"), empty);
  EXPECT_EQ(refusal("xe100001"), "mpz_set_str");
  EXPECT_EQ(refusal("1e00.5"), "mpz_set_str");
  EXPECT_FAILS_WITH(QQ::parse("1e "), empty);
  EXPECT_FAILS_WITH(QQ::parse("1e200000e-"), outOfRange);
}

TEST(ExpandExponent, LeavesOtherTextAloneFromTheFirstCharacter) {
  EXPECT_EQ(expandExponent(" \t 1.50 x"), "1.50 x");
  EXPECT_EQ(expandExponent(""), "");
}

TEST(ExpandExponent, PrintsTheProduct) {
  EXPECT_EQ(expandExponent(" 1.5e2"), "150");
  EXPECT_EQ(expandExponent("5e-1"), "1/2");
  EXPECT_EQ(expandExponent("-25e-1"), "-2:1/2");
}

// A level of separators a character: neither the stack nor the time may grow with
// the square of the length.
TEST(QQParse, LongChainsOfSeparators) {
  constexpr int levels = 500'000;
  EXPECT_EQ(QQ::parse(repeated("1.", levels) + "1"), QQ(11, 10));
  EXPECT_EQ(QQ::parse("2:" + repeated("+0:", levels) + "1/2"), QQ(5, 2));
  EXPECT_EQ(QQ::parse("2" + repeated(":-0", levels) + ":+0/3"), QQ(2));
  EXPECT_FAILS_WITH(QQ::parse(repeated("1:", levels) + "1/2"), malformed2);
}

TEST(QQParse, LongChainsOfExponents) {
  constexpr int levels = 300'000;
  EXPECT_EQ(QQ::parse("7" + repeated("e-+0", levels)), QQ(7));
  EXPECT_EQ(QQ::parse("7" + repeated("e-+0", levels) + "e-1"), QQ(7));
  EXPECT_FAILS_WITH(QQ::parse(repeated("1e", levels)), outOfRange);
}

TEST(QQParse, LongChainsOfLargeExponents) {
  // Each second level is 99999 * 10^-99999, the others are 99999 times 1.
  constexpr int levels = 100'000;
  const QQ tiny = QQ(99999) * tenTo(-99999);
  EXPECT_EQ(QQ::parse(repeated("99999e-", 2 * levels + 1) + "99999"), tiny);
  EXPECT_EQ(QQ::parse(repeated("99999e-", 2 * levels) + "99999"), QQ(99999));
  EXPECT_FAILS_WITH(QQ::parse("1e1e6" + repeated("e99999e-99999", levels)), outOfRange);
}

TEST(QQParse, LongNumbers) {
  constexpr int length = 1'000'000;
  const QQ integer = QQ::parse(repeated("7", length));
  EXPECT_EQ(integer * QQ(9) / QQ(7) + QQ(1), QQ(pow(ZZ::ten(), ZZ(length))));
  EXPECT_EQ(digits(QQ::parse("1." + repeated("6", length)).nenner()),
            static_cast<unsigned long>(length));
  EXPECT_EQ(QQ::parse("1.5" + repeated("0", length)), QQ(3, 2));
  EXPECT_EQ(digits(QQ::parse("0." + repeated("0", length) + "1").nenner()),
            static_cast<unsigned long>(length) + 2);
}

}  // namespace
}  // namespace starsift
