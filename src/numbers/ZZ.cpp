#include "numbers/ZZ.h"

#include <algorithm>
#include <ostream>
#include <stdexcept>

#include "system/Failure.h"

namespace starsift {

ZZ::ZZ(const char* text, int base) {
  if (mpz_set_str(get(), text, base) != 0) throw std::invalid_argument("mpz_set_str");
}

const ZZ& ZZ::zero() {
  static const ZZ value;
  return value;
}

const ZZ& ZZ::one() {
  static const ZZ value(1);
  return value;
}

const ZZ& ZZ::ten() {
  static const ZZ value(10);
  return value;
}

ZZ ZZ::operator-() const {
  ZZ result(*this);
  mpz_neg(result.get(), result.get());
  return result;
}

std::string ZZ::toString() const {
  std::string text;
  appendDigits(text, get());
  return text;
}

void appendDigits(std::string& out, mpz_srcptr value) {
  const std::size_t before = out.size();
  // Two more characters for the sign and the terminator; the size may be 1 too large.
  out.resize(before + mpz_sizeinbase(value, 10) + 2);
  mpz_get_str(out.data() + before, 10, value);
  out.resize(out.find('\0', out.size() - 3));
}

ZZ abs(const ZZ& a) {
  ZZ result(a);
  mpz_abs(result.get(), result.get());
  return result;
}

ZZ exactQuotient(const ZZ& a, const ZZ& b) {
  ZZ result;
  mpz_divexact(result.get(), a.get(), b.get());
  return result;
}

void divMod(const ZZ& a, const ZZ& b, ZZ& quotient, ZZ& remainder) {
  mpz_tdiv_qr(quotient.get(), remainder.get(), a.get(), b.get());
}

ZZ pow(const ZZ& base, const ZZ& exponent) {
  if (mpz_fits_ulong_p(exponent.get()) == 0) fail("QQ: exponent out of range");
  ZZ result;
  mpz_pow_ui(result.get(), base.get(), mpz_get_ui(exponent.get()));
  return result;
}

ZZ gcd(const ZZ& a, const ZZ& b) {
  ZZ result;
  mpz_gcd(result.get(), a.get(), b.get());
  return result;
}

ZZ lcm(const ZZ& a, const ZZ& b) {
  ZZ result;
  mpz_lcm(result.get(), a.get(), b.get());
  return result;
}

unsigned long digits(const ZZ& z) {
  // For base 10 the size is exact or 1 too large.
  const unsigned long most = mpz_sizeinbase(z.get(), 10);
  if (most == 1) return 1;
  ZZ least;
  mpz_ui_pow_ui(least.get(), 10, most - 1);
  return mpz_cmpabs(z.get(), least.get()) < 0 ? most - 1 : most;
}

unsigned long trailingZeros(const ZZ& z) {
  if (z.isZero()) return 0;
  const unsigned long twos = mpz_scan1(z.get(), 0);
  if (twos == 0) return 0;
  ZZ rest;
  const ZZ five(5);
  return std::min(twos, mpz_remove(rest.get(), z.get(), five.get()));
}

ZZ withoutTrailingZeros(const ZZ& z) {
  const unsigned long zeros = trailingZeros(z);
  if (zeros == 0) return z;
  ZZ result;
  mpz_ui_pow_ui(result.get(), 10, zeros);
  mpz_divexact(result.get(), z.get(), result.get());
  return result;
}

std::ostream& operator<<(std::ostream& stream, const ZZ& z) {
  return stream << z.toString();
}

}  // namespace starsift
