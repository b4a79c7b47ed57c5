#include "numbers/ZZ.h"

#include <gtest/gtest.h>

#include <climits>
#include <sstream>
#include <stdexcept>

#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

const std::string thirtyDigits = "123456789012345678901234567890";

TEST(ZZ, IsZeroFromNothing) {
  EXPECT_EQ(ZZ(), ZZ(0));
  EXPECT_TRUE(ZZ().isZero());
}

TEST(ZZ, TakesTheWholeRangeOfLong) {
  EXPECT_EQ(ZZ(LONG_MIN).toString(), "-9223372036854775808");
  EXPECT_EQ(ZZ(ULONG_MAX).toString(), "18446744073709551615");
}

TEST(ZZ, NamedValuesAreBuiltOnce) {
  EXPECT_EQ(&ZZ::ten(), &ZZ::ten());
  EXPECT_EQ(ZZ::zero(), ZZ(0));
  EXPECT_EQ(ZZ::one(), ZZ(1));
  EXPECT_EQ(ZZ::ten(), ZZ(10));
}

TEST(ZZ, ReadsTextInTheBaseGiven) {
  EXPECT_EQ(ZZ("ff", 16), ZZ(255));
  EXPECT_EQ(ZZ("-101", 2), ZZ(-5));
}

TEST(ZZ, TakesTheBaseFromTheText) {
  EXPECT_EQ(ZZ("0x1F", 0), ZZ(31));
  EXPECT_EQ(ZZ("0b11", 0), ZZ(3));
  EXPECT_EQ(ZZ("010", 0), ZZ(8));
  EXPECT_EQ(ZZ("10", 0), ZZ(10));
}

TEST(ZZ, RefusedTextThrows) {
  for (const char* text : {"", "x", "12x", "+5", "--5", "08"}) {
    try {
      const ZZ z(text, 0);
      ADD_FAILURE() << "accepted: " << text;
    } catch (const std::invalid_argument& e) {
      EXPECT_STREQ(e.what(), "mpz_set_str");
    }
  }
}

TEST(ZZ, PrintsWhatItRead) {
  EXPECT_EQ(ZZ(thirtyDigits, 10).toString(), thirtyDigits);
  EXPECT_EQ(ZZ("-" + thirtyDigits, 10).toString(), "-" + thirtyDigits);
  EXPECT_EQ(ZZ(9).toString(), "9");
  EXPECT_EQ(ZZ(10).toString(), "10");
  std::ostringstream stream;
  stream << ZZ(-42);
  EXPECT_EQ(stream.str(), "-42");
}

TEST(ZZ, ComparesBySignAndSize) {
  EXPECT_LT(cmp(ZZ(-2), ZZ(1)), 0);
  EXPECT_EQ(cmp(ZZ(7), ZZ(7)), 0);
  EXPECT_GT(cmp(ZZ(thirtyDigits, 10), ZZ(LONG_MAX)), 0);
  EXPECT_TRUE(ZZ(1) < ZZ(2) && ZZ(1) <= ZZ(1) && ZZ(2) > ZZ(1) && ZZ(2) >= ZZ(2));
  EXPECT_TRUE(ZZ(1) != ZZ(2) && ZZ(2) == ZZ(2));
}

TEST(ZZ, SignIsFalseForNegativeOnly) {
  EXPECT_TRUE(ZZ(0).sign());
  EXPECT_TRUE(ZZ(3).sign());
  EXPECT_FALSE(ZZ(-3).sign());
}

TEST(ZZ, AddsSubtractsAndMultiplies) {
  const ZZ big(thirtyDigits, 10);
  EXPECT_EQ(big + ZZ(1) - big, ZZ(1));
  EXPECT_EQ(ZZ(-6) * ZZ(7), ZZ(-42));
  EXPECT_EQ(exactQuotient(big * ZZ(97), ZZ(97)), big);
  EXPECT_EQ(-ZZ(5), ZZ(-5));
  EXPECT_EQ(abs(ZZ(-5)), ZZ(5));
}

TEST(ZZ, DivisionTruncates) {
  ZZ quotient;
  ZZ remainder;
  divMod(ZZ(-7), ZZ(2), quotient, remainder);
  EXPECT_EQ(quotient, ZZ(-3));
  EXPECT_EQ(remainder, ZZ(-1));
}

TEST(ZZ, DivisionMayOverwriteItsOperands) {
  ZZ a(17);
  ZZ b(5);
  divMod(a, b, a, b);
  EXPECT_EQ(a, ZZ(3));
  EXPECT_EQ(b, ZZ(2));
}

TEST(ZZ, PowerWithExponentZeroIsOne) {
  EXPECT_EQ(pow(ZZ(0), ZZ(0)), ZZ(1));
  EXPECT_EQ(pow(ZZ(-3), ZZ(3)), ZZ(-27));
  EXPECT_EQ(pow(ZZ(10), ZZ(18)), ZZ(1'000'000'000'000'000'000));
}

TEST(ZZ, ExponentOutsideUnsignedLongFails) {
  EXPECT_FAILS_WITH(pow(ZZ(2), ZZ(-1)), "QQ: exponent out of range");
  EXPECT_FAILS_WITH(pow(ZZ(1), ZZ(thirtyDigits, 10)), "QQ: exponent out of range");
}

TEST(ZZ, GcdAndLcm) {
  EXPECT_EQ(gcd(ZZ(12), ZZ(18)), ZZ(6));
  EXPECT_EQ(gcd(ZZ(0), ZZ(18)), ZZ(18));
  EXPECT_EQ(lcm(ZZ(4), ZZ(6)), ZZ(12));
  EXPECT_EQ(lcm(ZZ(0), ZZ(6)), ZZ(0));
}

TEST(ZZ, CountsDigitsWithoutTheSign) {
  EXPECT_EQ(digits(ZZ(0)), 1U);
  EXPECT_EQ(digits(ZZ(9)), 1U);
  EXPECT_EQ(digits(ZZ(-10)), 2U);
  EXPECT_EQ(digits(ZZ(999'999'999'999'999'999)), 18U);
  EXPECT_EQ(digits(ZZ(1'000'000'000'000'000'000)), 19U);
  EXPECT_EQ(digits(ZZ(thirtyDigits, 10)), 30U);
}

TEST(ZZ, StripsTrailingZeros) {
  EXPECT_EQ(trailingZeros(ZZ(0)), 0U);
  EXPECT_EQ(trailingZeros(ZZ(15)), 0U);
  EXPECT_EQ(trailingZeros(ZZ(-1200)), 2U);
  EXPECT_EQ(trailingZeros(pow(ZZ(10), ZZ(50))), 50U);
  EXPECT_EQ(withoutTrailingZeros(ZZ(-1200)), ZZ(-12));
  EXPECT_EQ(withoutTrailingZeros(ZZ(7)), ZZ(7));
  EXPECT_EQ(withoutTrailingZeros(ZZ(0)), ZZ(0));
}

TEST(ZZ, SwapMovesLimbs) {
  ZZ a(thirtyDigits, 10);
  ZZ b(1);
  const mp_limb_t* const limbs = mpz_limbs_read(a.get());
  swap(a, b);
  EXPECT_EQ(mpz_limbs_read(b.get()), limbs);
  EXPECT_EQ(a, ZZ(1));
}

TEST(ZZ, AssignmentToItselfKeepsTheValue) {
  ZZ a(thirtyDigits, 10);
  const ZZ& same = a;
  a = same;
  EXPECT_EQ(a.toString(), thirtyDigits);
}

}  // namespace
}  // namespace starsift
