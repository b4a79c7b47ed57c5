#include "numbers/RoundToDbl.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cfloat>
#include <cmath>
#include <cstdlib>

#include "numbers/QQStorage.h"

namespace starsift {

namespace {

static_assert(LDBL_MANT_DIG == 64 && GMP_NUMB_BITS == 64);

/// Every finite long double is a multiple of 2^leastExponent.
constexpr long leastExponent = LDBL_MIN_EXP - LDBL_MANT_DIG;

UInt128 join(mp_limb_t high, mp_limb_t low) {
  return static_cast<UInt128>(high) << 64 | low;
}

mp_limb_t highLimb(UInt128 bits) {
  return static_cast<mp_limb_t>(bits >> 64);
}

mp_limb_t lowLimb(UInt128 bits) {
  return static_cast<mp_limb_t>(bits);
}

/// A positive number x with bits <= x * 2^-exponent < bits + 1, bits >= 2^126.
struct Truncated {
  UInt128 bits;
  long exponent;
  bool isExact;  // x == bits * 2^exponent

  /// Bits that don't fit into the mantissa of a long double.
  long excess() const {
    const int width = highLimb(bits) >> 63 == 0 ? 127 : 128;
    return std::max<long>(width - LDBL_MANT_DIG, leastExponent - exponent);
  }
};

/// The upper 128 bits of |value|, value != 0.
Truncated upperBits(mpz_srcptr value) {
  const std::size_t size = mpz_size(value);
  const mp_limb_t* const limbs = mpz_limbs_read(value);
  const mp_limb_t top = limbs[size - 1];
  const mp_limb_t third = size > 2 ? limbs[size - 3] : 0;
  const int shift = std::countl_zero(top);
  UInt128 bits = join(top, size > 1 ? limbs[size - 2] : 0);
  if (shift > 0) bits = bits << shift | third >> (GMP_NUMB_BITS - shift);
  const bool isExact =
      third << shift == 0 &&
      (size <= 3 || std::all_of(limbs, limbs + size - 3, [](mp_limb_t limb) { return limb == 0; }));
  return {bits, (static_cast<long>(size) - 2) * GMP_NUMB_BITS - shift, isExact};
}

/// (mantissa + part / 2^64) * 2^exponent, or a little more if `isBeyond`, rounded to an
/// integer times 2^exponent. The sum is exact, and so is scalbln(), except that it
/// overflows to infinity.
long double rounded(mp_limb_t mantissa, mp_limb_t part, bool isBeyond, long exponent) {
  constexpr mp_limb_t half = mp_limb_t{1} << (GMP_NUMB_BITS - 1);
  const bool roundsUp = part > half || (part == half && (isBeyond || mantissa % 2 == 1));
  return std::scalbln(static_cast<long double>(mantissa) + (roundsUp ? 1 : 0), exponent);
}

/// The long double nearest to x.
long double nearest(const Truncated& x) {
  const long excess = x.excess();
  // x < 2^128 units <= 2^(excess - 1) units: less than half of the least subnormal number.
  if (excess > 128) return 0;
  if (excess == GMP_NUMB_BITS)  // the usual case, without shifts
    return rounded(highLimb(x.bits), lowLimb(x.bits), !x.isExact, x.exponent + excess);
  const auto mantissa = lowLimb(x.bits >> (excess - 1) >> 1);
  const UInt128 rest = x.bits << (128 - excess);
  return rounded(mantissa, highLimb(rest), !x.isExact || lowLimb(rest) != 0, x.exponent + excess);
}

/// numerator / denominator, truncated to 127 or 128 bits.
Truncated quotient(const Truncated& numerator, const Truncated& denominator) {
  // The dividend is numerator.bits * 2^127.
  const UInt128 bits = numerator.bits;
  const std::array<mp_limb_t, 4> dividend{0, lowLimb(bits) << 63, lowLimb(bits >> 1),
                                          highLimb(bits >> 1)};
  const std::array<mp_limb_t, 2> divisor{lowLimb(denominator.bits), highLimb(denominator.bits)};
  std::array<mp_limb_t, 3> result{};
  std::array<mp_limb_t, 2> rest{};
  mpn_tdiv_qr(result.data(), rest.data(), 0, dividend.data(), dividend.size(), divisor.data(),
              divisor.size());
  return {join(result[1], result[0]), numerator.exponent - denominator.exponent - 127,
          rest[0] == 0 && rest[1] == 0};
}

/// True if all numbers below 2^128 units that differ from x.bits by less than 2 units
/// round to the same mantissa. Those of other width than x.bits round to the power of
/// two between them.
bool isDecided(const Truncated& x) {
  const long excess = x.excess();
  if (excess > 128) return true;  // less than half of the least subnormal number
  const UInt128 half = UInt128{1} << (excess - 1);
  const UInt128 rest = x.bits & (2 * half - 1);
  return rest < half - 2 || rest > half + 2;
}

/// |numerator| / denominator, truncated to 127 or 128 bits, with all limbs.
Truncated fullQuotient(mpz_srcptr numerator, mpz_srcptr denominator) {
  ZZ dividend;
  ZZ divisor;
  mpz_abs(dividend.get(), numerator);
  mpz_set(divisor.get(), denominator);
  const long shift = 127 + static_cast<long>(mpz_sizeinbase(denominator, 2)) -
                     static_cast<long>(mpz_sizeinbase(numerator, 2));
  auto* const shifted = shift < 0 ? divisor.get() : dividend.get();
  mpz_mul_2exp(shifted, shifted, static_cast<mp_bitcnt_t>(std::abs(shift)));
  ZZ rest;
  divMod(dividend, divisor, dividend, rest);
  return {join(mpz_getlimbn(dividend.get(), 1), mpz_getlimbn(dividend.get(), 0)), -shift,
          rest.isZero()};
}

/// |numerator| / denominator; numerator != 0, denominator > 1.
long double nearestOfFraction(mpz_srcptr numerator, mpz_srcptr denominator) {
  const Truncated upper = upperBits(numerator);
  const Truncated lower = upperBits(denominator);
  Truncated result = quotient(upper, lower);
  if (upper.isExact && lower.isExact) return nearest(result);
  // Without the bits that are missing the quotient is known up to less than 2 units:
  // it lies between upper / (lower + 1) and (upper + 1) / lower. That nearly always
  // decides, and costs the same for numbers of any size.
  result.isExact = false;
  return nearest(isDecided(result) ? result : fullQuotient(numerator, denominator));
}

}  // namespace

long double roundBigToDbl(const QQ& value) {
  const QQView view(value);
  const long double magnitude = value.isInteger()
                                    ? nearest(upperBits(view.numerator()))
                                    : nearestOfFraction(view.numerator(), view.denominator());
  return value.sign() ? magnitude : -magnitude;
}

}  // namespace starsift
