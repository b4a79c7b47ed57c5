// Each function is computed in fixed point: an integer represents itself times
// 2^-scale, every operation truncates, and the error is counted in units of the last
// place along the way. Where the bounds of the error round to different floats, the
// computation is repeated with twice the bits. That ends, because the logarithm of
// a rational other than 1 and the exponential of one other than 0 are transcendental
// (Lindemann), and no exact result (a whole logarithm to the base 2, e^0) lies halfway
// between two floats. The method: A. Ziv, Fast evaluation of elementary mathematical
// functions with correctly rounded last bit, ACM Trans. Math. Softw. 17 (1991).
#include "numbers/Transcendental.h"

#include <cstdlib>
#include <utility>

#include "numbers/QQStorage.h"

namespace starsift {

namespace {

constexpr long floatBits = 192;

/// Bits after the point in the first attempt. The error is below 2^44 units (see
/// exponentialOf), so that all but one value in 2^50 are decided.
constexpr long firstScale = floatBits + 96;

/// |value * 2^-scale - x| <= error * 2^-scale, where x is the number in question.
struct Approximation {
  ZZ value;
  long error;
  long scale;
};

long bitCount(mpz_srcptr value) {
  return static_cast<long>(mpz_sizeinbase(value, 2));
}

/// a = a * 2^shift, truncated.
void shiftLeft(ZZ& a, long shift) {
  if (shift >= 0)
    mpz_mul_2exp(a.get(), a.get(), static_cast<mp_bitcnt_t>(shift));
  else
    mpz_tdiv_q_2exp(a.get(), a.get(), static_cast<mp_bitcnt_t>(-shift));
}

/// value * 2^-scale as the nearest float.
QQ nearestFloat(ZZ value, long scale) {
  const long excess = bitCount(value.get()) - floatBits;
  if (excess > 0) {
    // Adding just less than one half, or one half to an odd mantissa, and truncating
    // rounds to nearest, halves to even.
    const bool isNegative = !value.sign();
    if (isNegative) value = -value;
    const auto dropped = static_cast<mp_bitcnt_t>(excess);
    const bool isOdd = mpz_tstbit(value.get(), dropped) != 0;
    ZZ half(1);
    mpz_mul_2exp(half.get(), half.get(), dropped - 1);
    value += half;
    if (!isOdd) value -= ZZ::one();
    mpz_tdiv_q_2exp(value.get(), value.get(), dropped);
    if (isNegative) value = -value;
    scale -= excess;
  }
  QQ result;
  auto* const work = QQStorage::workplace(result);
  mpq_set_z(work, value.get());
  if (scale >= 0)
    mpq_div_2exp(work, work, static_cast<mp_bitcnt_t>(scale));
  else
    mpq_mul_2exp(work, work, static_cast<mp_bitcnt_t>(-scale));
  QQStorage::finish(result, work);
  return result;
}

/// The float nearest to the number that `approximate` approximates, given a scale.
template <class Approximate>
QQ nearestFloatOf(Approximate approximate) {
  for (long scale = firstScale;; scale *= 2) {
    const Approximation x = approximate(scale);
    const ZZ error(x.error);
    QQ result = nearestFloat(x.value - error, x.scale);
    if (result == nearestFloat(x.value + error, x.scale)) return result;
  }
}

/// The inverse hyperbolic tangent of z = numerator / denominator, |z| <= 1/3, as the
/// series z + z^3/3 + z^5/5 + ...
///
/// The error of z is below 1 unit, that of z^2 below 2/3 + 1 < 2. A power has the error
/// of the one before times 1/9, at most 2/3 for that of z^2, and 1 for truncation: less
/// than 2. Division by the odd number keeps a term's error below 2, and the terms that
/// are left out are less than 2 units together.
Approximation inverseTanh(const ZZ& numerator, const ZZ& denominator, long scale) {
  ZZ power(numerator);
  shiftLeft(power, scale);
  mpz_tdiv_q(power.get(), power.get(), denominator.get());
  ZZ square = power * power;
  shiftLeft(square, -scale);
  Approximation sum{power, 4, scale};
  ZZ term;
  for (unsigned long odd = 3; !power.isZero(); odd += 2) {
    power *= square;
    shiftLeft(power, -scale);
    mpz_tdiv_q_ui(term.get(), power.get(), odd);
    sum.value += term;
    sum.error += 2;
  }
  return sum;
}

/// ln(2) / 2 is the inverse hyperbolic tangent of 1/3. Summing its series costs as much
/// as the rest of a function, so the result for the usual scale is stored.
Approximation halfLogarithmOf2(long scale) {
  static const Approximation usual = inverseTanh(ZZ::one(), ZZ(3), firstScale);
  return scale == firstScale ? usual : inverseTanh(ZZ::one(), ZZ(3), scale);
}

/// A positive number as 2^exponent * a / b with 1/2 <= a / b <= 2, exponent 0 if the
/// number lies in these bounds. Half the logarithm of a / b is the inverse hyperbolic
/// tangent of (a - b) / (a + b).
class Reduced {
 public:
  explicit Reduced(const QQ& value) {
    const QQView view(value);
    mpz_set(a_.get(), view.numerator());
    mpz_set(b_.get(), view.denominator());
    if (value >= QQ(1, 2) && value <= QQ(2)) return;
    exponent_ = bitCount(a_.get()) - bitCount(b_.get());
    shiftLeft(exponent_ < 0 ? a_ : b_, std::abs(exponent_));
  }

  long exponent() const { return exponent_; }
  Approximation halfLogarithm(long scale) const { return inverseTanh(a_ - b_, a_ + b_, scale); }
  /// A lower bound for the binary exponent of half the logarithm of a / b, a != b.
  long leastExponent() const { return bitCount((a_ - b_).get()) - bitCount((a_ + b_).get()) - 1; }

 private:
  ZZ a_;
  ZZ b_;
  long exponent_ = 0;
};

Approximation logarithmOf(const Reduced& value, long scale) {
  // Near 1 the scale counts from the first bit of the result that isn't 0. Elsewhere
  // the result is at least ln(2) in magnitude.
  if (value.exponent() == 0) scale -= value.leastExponent();
  Approximation sum = value.halfLogarithm(scale);
  if (value.exponent() != 0) {
    const Approximation half = halfLogarithmOf2(scale);
    sum.value += ZZ(value.exponent()) * half.value;
    sum.error += std::abs(value.exponent()) * half.error;
  }
  // The logarithm is twice the sum: the same integers in units of twice the size.
  --sum.scale;
  return sum;
}

Approximation binaryLogarithmOf(const Reduced& value, long scale) {
  const Approximation half = value.halfLogarithm(scale);
  const Approximation halfOf2 = halfLogarithmOf2(scale);
  Approximation quotient{half.value, 0, scale};
  shiftLeft(quotient.value, scale);
  mpz_tdiv_q(quotient.value.get(), quotient.value.get(), halfOf2.value.get());
  // The quotient is at most 1 in magnitude and the divisor above 1/3.
  quotient.error = 3 * (half.error + halfOf2.error) + 1;
  ZZ whole(value.exponent());
  shiftLeft(whole, scale);
  quotient.value += whole;
  return quotient;
}

/// e^x = 2^n * e^r, where n is the integer nearest to x / ln(2) and r = x - n * ln(2) at
/// most 0.35 in magnitude; e^r is 1 + r + r^2/2 + r^3/6 + ...
///
/// |n| < 2^31 and the error of ln(2) is below 2^10 units for the scales in use, so the
/// error of r is below 2^42 units; e^r has at most twice that. A term has 0.35 times the
/// error of the one before and 2 for two truncations: less than 4. The terms that are
/// left out are less than 4 units together.
Approximation exponentialOf(const QQ& x, long scale) {
  const QQView view(x);
  ZZ rest;
  mpz_set(rest.get(), view.numerator());
  shiftLeft(rest, scale);
  mpz_tdiv_q(rest.get(), rest.get(), view.denominator());

  const Approximation half = halfLogarithmOf2(scale);
  // Rounding x / ln(2) to nearest is rounding (x + ln(2) / 2) / ln(2) down.
  ZZ quotient = rest + half.value;
  mpz_fdiv_q(quotient.get(), quotient.get(), (half.value + half.value).get());
  const long n = mpz_get_si(quotient.get());
  rest -= ZZ(2 * n) * half.value;
  const long restError = 1 + 2 * std::abs(n) * half.error;

  ZZ term(1);
  shiftLeft(term, scale);
  Approximation sum{term, 2 * restError + 8, scale - n};
  for (unsigned long i = 1; !term.isZero(); ++i) {
    term *= rest;
    shiftLeft(term, -scale);
    mpz_tdiv_q_ui(term.get(), term.get(), i);
    sum.value += term;
    sum.error += 4;
  }
  return sum;
}

}  // namespace

QQ roundToFloat(const QQ& value) {
  const QQView view(value);
  ZZ quotient;
  mpz_abs(quotient.get(), view.numerator());
  const long scale = floatBits + 2 + bitCount(view.denominator()) - bitCount(view.numerator());
  ZZ divisor;
  mpz_set(divisor.get(), view.denominator());
  shiftLeft(scale < 0 ? divisor : quotient, std::abs(scale));
  ZZ rest;
  divMod(quotient, divisor, quotient, rest);
  // At least one bit below that of the halves: if it is 1, the value is no tie.
  if (!rest.isZero()) mpz_setbit(quotient.get(), 0);
  QQ result = nearestFloat(std::move(quotient), scale);
  if (!value.sign()) result.negate();
  return result;
}

QQ roundedLog(const QQ& value) {
  if (value == QQ(1)) return {};
  const Reduced reduced(value);
  return nearestFloatOf([&](long scale) { return logarithmOf(reduced, scale); });
}

QQ roundedLog2(const QQ& value) {
  const Reduced reduced(value);
  return nearestFloatOf([&](long scale) { return binaryLogarithmOf(reduced, scale); });
}

QQ roundedExp(const QQ& value) {
  return nearestFloatOf([&](long scale) { return exponentialOf(value, scale); });
}

}  // namespace starsift
