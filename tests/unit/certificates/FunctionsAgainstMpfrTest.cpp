// Powers, roots and logarithms beside those of MPFR: the same steps with the same
// precision, each one rounded to nearest, must end with the same number.
#include <gtest/gtest.h>
// mpreal.h, which wants to be the first to include mpfr.h.
#include <mpreal.h>

#include "numbers/QQFunctions.h"
#include "numbers/QQStorage.h"
#include "numbers/Transcendental.h"
#include "support/generators/RandomRationals.h"

namespace starsift {
namespace {

using test::powerOfTwo;
using test::RandomRationals;

constexpr int rounds = 3000;

/// An MPFR number of the precision of Transcendental.h.
class Float {
 public:
  Float() { mpfr_init2(value_, 192); }
  Float(const Float&) = delete;
  Float& operator=(const Float&) = delete;
  ~Float() { mpfr_clear(value_); }
  mpfr_ptr get() { return value_; }

  void set(const QQ& value) { mpfr_set_q(value_, QQView(value).get(), MPFR_RNDN); }
  QQ toQQ() const {
    QQ result;
    auto* const work = QQStorage::workplace(result);
    mpfr_get_q(work, value_);
    QQStorage::finish(result, work);
    return result;
  }

 private:
  mpfr_t value_;
};

bool isNearOne(const QQ& value) {
  return value > QQ(1, 2) && value < QQ(2);
}

void setLogarithm(Float& result, const QQ& value) {
  if (isNearOne(value)) {
    result.set(value - QQ(1));
    mpfr_log1p(result.get(), result.get(), MPFR_RNDN);
  } else {
    result.set(value);
    mpfr_log(result.get(), result.get(), MPFR_RNDN);
  }
}

QQ logarithmOfMpfr(const QQ& value) {
  Float result;
  setLogarithm(result, value);
  return result.toQQ();
}

QQ binaryLogarithmOfMpfr(const QQ& value) {
  Float result;
  if (isNearOne(value)) {
    Float logarithmOf2;
    mpfr_const_log2(logarithmOf2.get(), MPFR_RNDN);
    setLogarithm(result, value);
    mpfr_div(result.get(), result.get(), logarithmOf2.get(), MPFR_RNDN);
  } else {
    result.set(value);
    mpfr_log2(result.get(), result.get(), MPFR_RNDN);
  }
  return result.toQQ();
}

QQ powerOfMpfr(const QQ& base, const QQ& exponent) {
  Float power;
  setLogarithm(power, base);
  mpfr_mul_q(power.get(), power.get(), QQView(exponent).get(), MPFR_RNDN);
  mpfr_exp(power.get(), power.get(), MPFR_RNDN);
  return power.toQQ();
}

/// The exponential of a float, in one step.
QQ exponentialOfMpfr(const QQ& value) {
  Float result;
  result.set(value);
  mpfr_exp(result.get(), result.get(), MPFR_RNDN);
  return result.toQQ();
}

/// No power of it with a fractional exponent is rational: the prime 2 divides it once.
QQ arbitraryBase(RandomRationals& random) {
  ZZ numerator = random.integer(random.between(2, 400));
  ZZ denominator = random.integer(random.between(2, 400));
  mpz_setbit(numerator.get(), 0);
  mpz_setbit(denominator.get(), 0);
  return QQ(numerator + numerator, denominator);
}

QQ arbitraryNearOne(RandomRationals& random) {
  const QQ distance = random.fraction(300) * powerOfTwo(-random.between(300, 900));
  return random.coin() ? QQ(1) + distance : QQ(1) - distance;
}

TEST(RoundToFloat, IsTheRoundingOfMpfr) {
  RandomRationals random(1);
  for (int i = 0; i < rounds; ++i) {
    const ZZ mantissa = random.integer(192);
    const QQ tie = QQ(mantissa + mantissa + ZZ(1)) * powerOfTwo(random.between(-500, 500));
    const QQ distance = tie * powerOfTwo(-random.between(194, 700));
    for (const QQ& value : {random.fraction(600), tie, tie - distance, tie + distance, -tie}) {
      Float expected;
      expected.set(value);
      EXPECT_EQ(roundToFloat(value), expected.toQQ());
    }
  }
}

TEST(QQLog, IsThatOfMpfr) {
  RandomRationals random(2);
  for (int i = 0; i < rounds; ++i)
    for (const QQ& value : {random.fraction(20), random.fraction(1000), arbitraryNearOne(random)})
      EXPECT_EQ(log(value), logarithmOfMpfr(value)) << value;
}

TEST(QQLog, AtTheSeamsIsThatOfMpfr) {
  const QQ distance = powerOfTwo(-500);
  for (const QQ& seam : {QQ(1, 2), QQ(1), QQ(2), powerOfTwo(1000), powerOfTwo(-1000)})
    for (const QQ& value : {seam, seam - distance * seam, seam + distance * seam}) {
      EXPECT_EQ(log(value), logarithmOfMpfr(value)) << value;
      EXPECT_EQ(log2(value), binaryLogarithmOfMpfr(value)) << value;
    }
}

TEST(QQLog, OfVeryLongNumbersIsThatOfMpfr) {
  const QQ large = pow(QQ(3), QQ(100'000));
  for (const QQ& value : {large, QQ(1) / large, QQ(1) + QQ(1) / large, QQ(1) - QQ(1) / large}) {
    EXPECT_EQ(log(value), logarithmOfMpfr(value));
    EXPECT_EQ(log2(value), binaryLogarithmOfMpfr(value));
  }
}

TEST(QQLog2, IsThatOfMpfr) {
  RandomRationals random(3);
  for (int i = 0; i < rounds; ++i)
    for (const QQ& value : {random.fraction(20), random.fraction(1000), arbitraryNearOne(random)})
      EXPECT_EQ(log2(value), binaryLogarithmOfMpfr(value)) << value;
}

TEST(QQLog, JustBesideTiesIsThatOfMpfr) {
  // log(1 + x) = x - x^2 / 2 + ...: for small powers of two the second term is about half
  // a unit of the last place, and the third one decides.
  for (long exponent = -200; exponent <= -90; ++exponent)
    for (const QQ& x : {powerOfTwo(exponent), QQ(3) * powerOfTwo(exponent)}) {
      EXPECT_EQ(log(QQ(1) + x), logarithmOfMpfr(QQ(1) + x)) << exponent;
      EXPECT_EQ(log(QQ(1) - x), logarithmOfMpfr(QQ(1) - x)) << exponent;
    }
}

TEST(RoundedExp, IsThatOfMpfr) {
  RandomRationals random(4);
  for (int i = 0; i < rounds; ++i) {
    const QQ size = QQ(random.integer(192)) * powerOfTwo(random.between(-192 - 220, -192 + 12));
    EXPECT_EQ(roundedExp(size), exponentialOfMpfr(size)) << size;
    EXPECT_EQ(roundedExp(-size), exponentialOfMpfr(-size)) << size;
  }
  EXPECT_EQ(roundedExp(QQ()), QQ(1));
}

TEST(RoundedExp, JustBesideTiesIsThatOfMpfr) {
  // e^x = 1 + x + x^2 / 2 + ...: at 2^-192 and 2^-193 the first two terms are a tie.
  for (long exponent = -390; exponent <= -90; ++exponent) {
    const QQ x = powerOfTwo(exponent);
    for (const QQ& value : {x, -x, QQ(3) * x, QQ(-3) * x})
      EXPECT_EQ(roundedExp(value), exponentialOfMpfr(value)) << exponent;
  }
}

TEST(RoundedExp, OfLargeArgumentsIsThatOfMpfr) {
  const QQ large = roundToFloat(QQ(123'456'789, 7));
  EXPECT_EQ(roundedExp(large), exponentialOfMpfr(large));
  EXPECT_EQ(roundedExp(-large), exponentialOfMpfr(-large));
}

TEST(QQPow, WithFractionalExponentIsThatOfMpfr) {
  RandomRationals random(5);
  for (int i = 0; i < rounds; ++i) {
    const QQ base = arbitraryBase(random);
    const QQ exponent(random.integer(random.between(1, 8)), random.integer(random.between(2, 60)));
    if (exponent.isInteger()) continue;
    EXPECT_EQ(pow(base, exponent), powerOfMpfr(base, exponent)) << base << " ^ " << exponent;
  }
}

TEST(QQPow, OfTenIsThatOfMpfr) {
  // The powers that number texts name: 1e0.5, 1e-1:1/3.
  RandomRationals random(6);
  for (int i = 0; i < rounds; ++i) {
    const QQ exponent(random.integer(random.between(1, 40)), random.integer(random.between(2, 30)));
    if (exponent.isInteger() || exponent > QQ(3000)) continue;
    EXPECT_EQ(pow(QQ::ten(), exponent), powerOfMpfr(QQ::ten(), exponent)) << exponent;
    EXPECT_EQ(pow(QQ::ten(), -exponent), QQ(1) / powerOfMpfr(QQ::ten(), exponent)) << exponent;
  }
  const QQ tiny(ZZ(1), pow(ZZ(7), ZZ(400)));
  EXPECT_EQ(pow(QQ::ten(), tiny), powerOfMpfr(QQ::ten(), tiny));
  const QQ large = QQ(99'999) + QQ(1, 99'991);
  EXPECT_EQ(pow(QQ::ten(), large), powerOfMpfr(QQ::ten(), large));
}

TEST(QQPow, OfBasesNearOneWithLongExponentsIsThatOfMpfr) {
  RandomRationals random(7);
  for (int i = 0; i < rounds; ++i) {
    const long smallness = random.between(0, 600);
    const QQ base = QQ(1) + random.fraction(300) * powerOfTwo(-300 - smallness);
    // The power of a rational other than 1 can't be rational for such an exponent: its
    // denominator is a prime above all bit lengths in use.
    const QQ exponent(random.integer(random.between(1, smallness + 20)), ZZ(1'000'003));
    if (exponent.isInteger()) continue;
    EXPECT_EQ(pow(base, exponent), powerOfMpfr(base, exponent)) << base << " ^ " << exponent;
  }
}

TEST(QQRoot, IsThatOfMpfr) {
  RandomRationals random(8);
  for (int i = 0; i < rounds; ++i) {
    const QQ value = arbitraryBase(random);
    const ZZ degree(random.between(2, i % 2 == 0 ? 9 : 1'000'000));
    EXPECT_EQ(root(value, degree), powerOfMpfr(value, QQ(ZZ(1), degree))) << value;
  }
}

}  // namespace
}  // namespace starsift
