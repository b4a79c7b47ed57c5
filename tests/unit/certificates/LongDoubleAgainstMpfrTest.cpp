// The nearest long double, beside that of MPFR.
#include <gtest/gtest.h>
// mpreal.h, which wants to be the first to include mpfr.h.
#include <mpreal.h>

#include <cfloat>
#include <cmath>

#include "numbers/Conversion.h"
#include "numbers/QQStorage.h"
#include "support/generators/RandomRationals.h"

namespace starsift {
namespace {

using test::powerOfTwo;
using test::RandomRationals;

constexpr int rounds = 20000;

/// Within the range of long double from the start, so that subnormals round once.
dbl_t nearestOfMpfr(const QQ& value) {
  const mpfr_exp_t leastExponent = mpfr_get_emin();
  const mpfr_exp_t greatestExponent = mpfr_get_emax();
  mpfr_set_emin(LDBL_MIN_EXP - LDBL_MANT_DIG + 1);
  mpfr_set_emax(LDBL_MAX_EXP);
  mpfr_t rounded;
  mpfr_init2(rounded, LDBL_MANT_DIG);
  const int inexact = mpfr_set_q(rounded, QQView(value).get(), MPFR_RNDN);
  mpfr_subnormalize(rounded, inexact, MPFR_RNDN);
  mpfr_set_emin(leastExponent);
  mpfr_set_emax(greatestExponent);
  const dbl_t result = mpfr_get_ld(rounded, MPFR_RNDN);
  mpfr_clear(rounded);
  return result;
}

/// The value and its negative; zeros have signs.
void expectSame(const QQ& value) {
  for (const QQ& signedValue : {value, -value}) {
    const dbl_t ours = toDbl(signedValue, false);
    const dbl_t expected = nearestOfMpfr(signedValue);
    EXPECT_EQ(ours, expected) << signedValue;
    EXPECT_EQ(std::signbit(ours), std::signbit(expected)) << signedValue;
  }
}

/// Halfway between two long doubles of 64 bits, and at distances on both sides that
/// many bits behind decide.
void expectSameAround(const QQ& tie, RandomRationals& random) {
  const QQ distance = tie * powerOfTwo(-random.between(66, 600));
  expectSame(tie);
  expectSame(tie - distance);
  expectSame(tie + distance);
  const QQ fraction = distance / QQ(random.integer(random.between(1, 400)));
  expectSame(tie - fraction);
  expectSame(tie + fraction);
}

TEST(NearestLongDouble, OfFractionsOfEverySizeIsThatOfMpfr) {
  RandomRationals random(1);
  for (int i = 0; i < rounds; ++i) expectSame(random.fraction(random.coin() ? 200 : 1500));
}

TEST(NearestLongDouble, OfIntegersIsThatOfMpfr) {
  RandomRationals random(2);
  for (int i = 0; i < rounds; ++i) expectSame(QQ(random.integer(random.between(1, 400))));
}

TEST(NearestLongDouble, AtTiesIsThatOfMpfr) {
  RandomRationals random(3);
  for (int i = 0; i < rounds; ++i) {
    const ZZ mantissa = random.integer(64);
    const QQ tie = QQ(mantissa + mantissa + ZZ(1)) * powerOfTwo(random.between(-300, 300));
    expectSameAround(tie, random);
  }
}

TEST(NearestLongDouble, AmongSubnormalsIsThatOfMpfr) {
  RandomRationals random(4);
  for (int i = 0; i < rounds / 20; ++i) {
    // From a quarter of the least subnormal number to beyond the least normal one.
    const long bits = random.between(1, 70);
    expectSame(QQ(random.integer(bits)) * powerOfTwo(-16447));
    expectSame(random.fraction(200) * powerOfTwo(-16447 + bits));
    expectSameAround((QQ(random.integer(bits)) + QQ(1, 2)) * powerOfTwo(-16445), random);
  }
  for (int i = 0; i < 100; ++i) expectSameAround(powerOfTwo(-16446), random);
}

TEST(NearestLongDouble, AtTheEndOfTheRangeIsThatOfMpfr) {
  RandomRationals random(5);
  // Half a unit above LDBL_MAX, as an integer, and as a fraction nearby.
  const QQ edge = powerOfTwo(16384) - powerOfTwo(16319);
  expectSame(edge);
  EXPECT_EQ(toDbl(edge, false), HUGE_VALL);
  for (int i = 0; i < rounds / 20; ++i) {
    expectSameAround(edge, random);
    const QQ distance = random.fraction(300) * powerOfTwo(random.between(-300, 16310));
    expectSame(edge + distance);
    expectSame(edge - distance);
  }
}

}  // namespace
}  // namespace starsift
