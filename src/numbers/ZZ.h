// Integers of any size, for the arithmetic of QQ. There is no infinity.
#pragma once

#include <compare>
#include <iosfwd>
#include <string>
#include <utility>

#include "numbers/BigInt.h"

namespace starsift {

/// A value class for one GMP integer.
class ZZ {
 public:
  ZZ() noexcept = default;
  explicit ZZ(int value) : value_(static_cast<long>(value)) {}
  explicit ZZ(long value) : value_(value) {}
  explicit ZZ(unsigned long value) : value_(value) {}

  /// The integer that `text` represents in `base`, 2 <= base <= 62. For base 0 the text
  /// names it: 0x hexadecimal, 0b binary, any other leading 0 octal. White space is
  /// ignored, one leading '-' allowed. Anything else, also an empty text, throws
  /// std::invalid_argument("mpz_set_str").
  ZZ(const std::string& text, int base) : ZZ(text.c_str(), base) {}
  ZZ(const char* text, int base);

  static const ZZ& zero();
  static const ZZ& one();
  static const ZZ& ten();

  ZZ& operator+=(const ZZ& other) {
    mpz_add(get(), get(), other.get());
    return *this;
  }
  ZZ& operator-=(const ZZ& other) {
    mpz_sub(get(), get(), other.get());
    return *this;
  }
  ZZ& operator*=(const ZZ& other) {
    mpz_mul(get(), get(), other.get());
    return *this;
  }
  ZZ operator-() const;

  /// True for 0 and positive integers.
  bool sign() const noexcept { return mpz_sgn(get()) >= 0; }
  bool isZero() const noexcept { return mpz_sgn(get()) == 0; }

  /// Exchanges the values without copying limbs.
  void swap(ZZ& other) noexcept { value_.swap(other.value_); }

  /// The decimal text, beginning with "-" for a negative integer.
  std::string toString() const;

  mpz_srcptr get() const noexcept { return value_.get(); }
  mpz_ptr get() noexcept { return value_.get(); }

 private:
  BigInt value_;
};

inline void swap(ZZ& a, ZZ& b) noexcept {
  a.swap(b);
}

inline ZZ operator+(ZZ a, const ZZ& b) {
  return std::move(a += b);
}
inline ZZ operator-(ZZ a, const ZZ& b) {
  return std::move(a -= b);
}
inline ZZ operator*(const ZZ& a, const ZZ& b) {
  ZZ product;
  mpz_mul(product.get(), a.get(), b.get());
  return product;
}

/// Negative if a < b, 0 if a == b, positive if a > b.
inline int cmp(const ZZ& a, const ZZ& b) {
  return mpz_cmp(a.get(), b.get());
}
inline bool operator==(const ZZ& a, const ZZ& b) {
  return cmp(a, b) == 0;
}
inline std::strong_ordering operator<=>(const ZZ& a, const ZZ& b) {
  return cmp(a, b) <=> 0;
}

/// Appends the decimal text of `value`.
void appendDigits(std::string& out, mpz_srcptr value);

ZZ abs(const ZZ& a);

/// a / b; b must divide a and not be 0.
ZZ exactQuotient(const ZZ& a, const ZZ& b);

/// a == quotient * b + remainder, truncated: |remainder| < |b| with the sign of a.
/// b != 0; the two results are distinct objects, either may be a or b.
void divMod(const ZZ& a, const ZZ& b, ZZ& quotient, ZZ& remainder);

/// 1 for the exponent 0. An exponent below 0 or above the range of unsigned long is
/// fatal, "QQ: exponent out of range". The caller must avoid results that exceed memory.
ZZ pow(const ZZ& base, const ZZ& exponent);

/// a, b >= 0. gcd(0, 0) is 0, and lcm is 0 if a or b is 0.
ZZ gcd(const ZZ& a, const ZZ& b);
ZZ lcm(const ZZ& a, const ZZ& b);

/// Decimal digits of |z|, at least 1.
unsigned long digits(const ZZ& z);

/// The number of zeros at the end of the decimal text of z; none for z = 0.
unsigned long trailingZeros(const ZZ& z);

/// z divided by the power of ten of its trailing zeros.
ZZ withoutTrailingZeros(const ZZ& z);

std::ostream& operator<<(std::ostream& stream, const ZZ& z);

}  // namespace starsift
