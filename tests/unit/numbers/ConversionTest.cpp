#include "numbers/Conversion.h"

#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>

#include "numbers/QQFunctions.h"
#include "numbers/VectorQQ.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

const QQ inf = QQ::infinity();
constexpr dbl_t infinite = std::numeric_limits<dbl_t>::infinity();
constexpr const char* longInteger = "The QQ integer-part is not exactly representable as dbl_t";
constexpr const char* notCarried = "QQ is not representable as dbl_t";

QQ tenTo(long exponent) {
  return pow(QQ::ten(), QQ(exponent));
}
QQ twoTo(long exponent) {
  return pow(QQ(2), QQ(exponent));
}

/// What a strict conversion throws of the class E.
template <class E>
std::string loss(const QQ& value, bool lenient = false) {
  try {
    toDbl(value, true, lenient);
    return "converted";
  } catch (const E& e) {
    return e.what();
  }
}

TEST(ToDbl, SmallIntegers) {
  EXPECT_EQ(toDbl(QQ(0), true), 0.0L);
  EXPECT_FALSE(std::signbit(toDbl(QQ(0), true)));
  EXPECT_EQ(toDbl(QQ(-42), true), -42.0L);
  EXPECT_EQ(toDbl(QQ(999'999'999'999'999'999), true), 999'999'999'999'999'999.0L);
}

TEST(ToDbl, Infinities) {
  EXPECT_EQ(toDbl(inf, true), infinite);
  EXPECT_EQ(toDbl(-inf, true), -infinite);
  EXPECT_EQ(toDbl(-inf, false), -infinite);
}

TEST(ToDbl, IntegerPartOfNineteenDigitsThrowsUnderStrict) {
  using Loss = PreCommaPrecisionException;
  EXPECT_EQ(loss<Loss>(QQ(1'000'000'000'000'000'000)), longInteger);
  EXPECT_EQ(loss<Loss>(QQ(-1'000'000'000'000'000'000)), longInteger);
  EXPECT_EQ(loss<Loss>(tenTo(30)), longInteger);
  EXPECT_EQ(loss<Loss>(tenTo(18) + QQ(1, 3), true), longInteger);
  EXPECT_EQ(loss<Loss>(QQ(2) * tenTo(18) + QQ(1, 2)), longInteger);
}

TEST(ToDbl, DecimalsWithinEighteenDigitsAreExact) {
  EXPECT_EQ(toDbl(QQ(1, 10), true), 0.1L);
  EXPECT_EQ(toDbl(QQ(1, 1024), true), 0x1p-10L);
  EXPECT_EQ(toDbl(QQ(-49, 4), true), -12.25L);
  EXPECT_EQ(toDbl(QQ(123'456'789'012'345'678) / tenTo(10), true), 12345678.9012345678L);
  EXPECT_EQ(toDbl(QQ(123'456'789'012'345'678) / tenTo(30), true), 123456789012345678e-30L);
}

TEST(ToDbl, EighteenDigitsCountFromTheFirstToTheLastDecimal) {
  using Loss = PostCommaPrecisionException;
  // Without the point 999999999990234375 and 1000000000009765625.
  EXPECT_EQ(loss<Loss>(QQ(102'399'999'999, 1024)), "converted");
  EXPECT_EQ(loss<Loss>(QQ(102'400'000'001, 1024)), notCarried);
  // Without the point 999999999999991808 and 1000000000000008192.
  EXPECT_EQ(loss<Loss>(QQ(122'070'312'499'999, 1'220'703'125)), "converted");
  EXPECT_EQ(loss<Loss>(QQ(122'070'312'500'001, 1'220'703'125)), notCarried);
}

TEST(ToDbl, FractionThatIsNotCarriedThrowsUnderStrict) {
  using Loss = PostCommaPrecisionException;
  EXPECT_EQ(loss<Loss>(QQ(1, 3)), notCarried);
  EXPECT_EQ(loss<Loss>(twoTo(-60)), notCarried);
  EXPECT_EQ(loss<Loss>(QQ(1'000'000'000'000'000'001) / QQ(10)), notCarried);
  EXPECT_EQ(loss<Loss>(tenTo(-5000)), notCarried);
}

TEST(ToDbl, LenientTakesTheNearest) {
  EXPECT_EQ(toDbl(QQ(1, 3), true, true), 1.0L / 3.0L);
  EXPECT_EQ(toDbl(twoTo(-60), true, true), 0x1p-60L);
}

TEST(ToDbl, WithoutStrictTakesTheNearest) {
  EXPECT_EQ(toDbl(QQ(2, 3), false), 2.0L / 3.0L);
  EXPECT_EQ(toDbl(QQ(1'000'000'000'000'000'000), false), 1e18L);
  EXPECT_EQ(toDbl(twoTo(64) + QQ(1), false), 0x1p64L);
  EXPECT_EQ(toDbl(twoTo(64) + QQ(3), false), 0x1p64L + 4.0L);
  EXPECT_EQ(toDbl(-tenTo(4000) / QQ(3), false), -3.33333333333333333333333e3999L);
}

TEST(ToDbl, TiesGoToTheEvenNeighbour) {
  EXPECT_EQ(toDbl(twoTo(65) + QQ(2), false), 0x1p65L);
  EXPECT_EQ(toDbl(twoTo(65) + QQ(6), false), 0x1p65L + 8.0L);
}

TEST(ToDbl, OneBitFarBelowATieDecidesIt) {
  const QQ tie = twoTo(64) + QQ(1);
  EXPECT_EQ(toDbl(tie + twoTo(-1000), false), 0x1p64L + 2.0L);
  EXPECT_EQ(toDbl(tie - twoTo(-1000), false), 0x1p64L);
  EXPECT_EQ(toDbl(-tie - QQ(1, 3) * twoTo(-1000), false), -0x1p64L - 2.0L);
  const QQ longOdd = pow(QQ(3), QQ(400));
  EXPECT_EQ(toDbl(tie + QQ(1) / longOdd, false), 0x1p64L + 2.0L);
  EXPECT_EQ(toDbl(tie - QQ(1) / longOdd, false), 0x1p64L);
  EXPECT_EQ(toDbl(twoTo(2000) + twoTo(1936) + QQ(1), false), 0x1p2000L + 0x1p1937L);
}

TEST(ToDbl, RoundsOnceAmongTheSubnormals) {
  const QQ least = twoTo(-16445);
  EXPECT_EQ(toDbl(least, false), LDBL_TRUE_MIN);
  EXPECT_EQ(toDbl(least / QQ(2), false), 0.0L);
  EXPECT_EQ(toDbl(least / QQ(2) + least / tenTo(40), false), LDBL_TRUE_MIN);
  EXPECT_EQ(toDbl(least / QQ(2) - least / pow(QQ(3), QQ(400)), false), 0.0L);
  EXPECT_EQ(toDbl(least * QQ(5, 2), false), 2.0L * LDBL_TRUE_MIN);
  // 63 bits and a half, and a little more than that: two roundings would end even.
  const QQ normal = twoTo(-16382);
  EXPECT_EQ(toDbl(normal / QQ(2) + least / QQ(2) + least / twoTo(20), false),
            LDBL_MIN / 2.0L + LDBL_TRUE_MIN);
}

TEST(ToDbl, NegativeNumbersBelowTheRangeGiveTheNegativeZero) {
  EXPECT_TRUE(std::signbit(toDbl(-tenTo(-5000), false)));
  EXPECT_FALSE(std::signbit(toDbl(tenTo(-5000), false)));
}

TEST(ToDbl, HalfAUnitAboveTheGreatestIsInfinite) {
  const QQ edge = twoTo(16384) - twoTo(16319);
  EXPECT_EQ(toDbl(edge, false), infinite);
  EXPECT_EQ(toDbl(edge - twoTo(-100), false), LDBL_MAX);
  EXPECT_EQ(toDbl(edge - QQ(1, 3), false), LDBL_MAX);
}

TEST(ToDbl, OverflowsToInfinity) {
  EXPECT_EQ(toDbl(tenTo(5000), false), infinite);
  EXPECT_EQ(toDbl(-tenTo(5000), false), -infinite);
}

TEST(FromDbl, Integers) {
  EXPECT_EQ(fromDbl(0.0L), QQ(0));
  EXPECT_EQ(fromDbl(-0.0L), QQ(0));
  EXPECT_EQ(fromDbl(-42.0L), QQ(-42));
  EXPECT_EQ(fromDbl(999'999'999'999'999'999.0L), QQ(999'999'999'999'999'999));
}

TEST(FromDbl, TakesEighteenDigitsOfTheText) {
  EXPECT_EQ(fromDbl(0.1L), QQ(1, 10));
  EXPECT_EQ(fromDbl(-12.25L), QQ(-49, 4));
  EXPECT_EQ(fromDbl(1.0L / 3.0L), QQ(333'333'333'333'333'333) / tenTo(18));
  EXPECT_EQ(fromDbl(0x1p63L), QQ(9'223'372'036'854'775'81L) * QQ(10));
  EXPECT_EQ(fromDbl(0x1p-60L), QQ(867'361'737'988'403'547) / tenTo(36));
  EXPECT_EQ(fromDbl(1e4000L), tenTo(4000));
  EXPECT_EQ(fromDbl(-1e-4000L), -tenTo(-4000));
}

TEST(FromDbl, Infinities) {
  EXPECT_EQ(fromDbl(infinite), inf);
  EXPECT_EQ(fromDbl(-infinite), -inf);
}

TEST(FromDbl, NanThrows) {
  try {
    fromDbl(std::nanl(""));
    ADD_FAILURE();
  } catch (const PrecisionException& e) {
    EXPECT_STREQ(e.what(), "Precision lost during conversion");
  }
}

TEST(FromDbl, IsTheConstructorFromLongDouble) {
  EXPECT_EQ(QQ(0.1L), QQ(1, 10));
}

TEST(Representable, WithinTheLastOfEighteenDigits) {
  EXPECT_TRUE(representable(QQ(1, 3)));
  EXPECT_TRUE(representable(twoTo(100)));
  EXPECT_TRUE(representable(-inf));
  EXPECT_TRUE(representable(tenTo(-5000)));
}

TEST(Representable, NotBeyondTheRange) {
  EXPECT_FALSE(representable(tenTo(5000)));
}

TEST(IsExact, TellsWhetherAStrictConversionThrows) {
  EXPECT_TRUE(isExact(QQ(1, 10)));
  EXPECT_TRUE(isExact(inf));
  EXPECT_FALSE(isExact(QQ(1, 3)));
  EXPECT_FALSE(isExact(tenTo(18)));
}

TEST(VectorConversion, KeepsInfinitiesBothWays) {
  const Vector<QQ> exact{QQ(1), inf, -inf, QQ(1, 10)};
  Vector<long double> standard;
  standard.convertFrom(exact, true);
  EXPECT_EQ(standard[2], infinite);
  EXPECT_EQ(standard[3], -infinite);
  Vector<QQ> back;
  back.convertFrom(standard, true);
  EXPECT_TRUE(identical(back, exact));
}

TEST(VectorConversion, InexactComponentThrowsAndLeavesTheTarget) {
  Vector<long double> standard{7.0L};
  EXPECT_THROW(standard.convertFrom(Vector<QQ>{QQ(1), QQ(1, 3)}, false),
               PostCommaPrecisionException);
  EXPECT_EQ(standard.dimension(), 1);
  EXPECT_EQ(standard[1], 7.0L);
}

TEST(VectorConversion, LastDigitThatChangesThrowsUnderCheck) {
  const Vector<long double> standard{0x1p63L};
  Vector<QQ> exact;
  exact.convertFrom(standard, false);
  try {
    exact.convertFrom(Vector<long double>{1.0L / 3.0L + 0x1p-65L}, true);
    ADD_FAILURE();
  } catch (const PrecisionException& e) {
    EXPECT_STREQ(e.what(), "Precision lost during conversion");
  }
}

TEST(MatrixConversion, GoesThereAndBack) {
  const Matrix<QQ> exact{{QQ(1), QQ(1, 2)}, {QQ(-3), QQ(7, 1000)}};
  Matrix<long double> standard;
  standard.convertFrom(exact, true);
  Matrix<QQ> back;
  back.convertFrom(standard, true);
  EXPECT_EQ(back.rowCount(), 2);
  EXPECT_EQ(back.columnCount(), 2);
  for (Index i = 1; i <= 2; ++i) EXPECT_TRUE(identical(back[i], exact[i]));
}

TEST(ExactInteger, KeepsEveryBit) {
  EXPECT_EQ(exactInteger(0.0L), QQ(0));
  EXPECT_EQ(exactInteger(-17.0L), QQ(-17));
  EXPECT_EQ(exactInteger(4611686018427387905.0L), QQ::parse("4611686018427387905"));
  EXPECT_EQ(exactInteger(-18446744073709551615.0L), QQ::parse("-18446744073709551615"));
  EXPECT_EQ(exactInteger(0x1p62L), pow(QQ(2), QQ(62)));
  EXPECT_EQ(exactInteger(0x1p63L), pow(QQ(2), QQ(63)));
  EXPECT_EQ(exactInteger(-0x1.8p200L), QQ(-3) * pow(QQ(2), QQ(199)));
}

TEST(ExactInteger, KnowsMoreThanEighteenDigits) {
  const dbl_t x = 12345678901234567891.0L;
  EXPECT_EQ(exactInteger(x), QQ::parse("12345678901234567891"));
  EXPECT_NE(fromDbl(x), exactInteger(x));
}

}  // namespace
}  // namespace starsift
