// The operations that algorithms use on their number type. The primary template is only
// declared: the built-in types are specialised here, QQ in numbers/QQ.h and
// mpfr::mpreal in certificates/Mpreal.h. No algorithm depends on which type T is.
#pragma once

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <limits>
#include <string>

#include "core/Index.h"
#include "text/IntegerText.h"
#include "text/TextCursor.h"

namespace starsift {

/// Specialisations define, all static:
///
///   T infinity()                      +infinity
///   bool isInfinite(const T&)         +-infinity; false for nan
///   T absolute(const T&)
///   const T& tolerance()              1 / 10^9: values this close count as equal
///   bool isZero(const T&)             |v| <= tolerance; false for nan
///   bool equal(const T&, const T&)    equal, or |a - b| <= tolerance; nan equals nothing
///   void addProduct(T& sum, a, b)     sum += a * b without a temporary if T uses the heap
///   void subtractProduct(T& sum, a, b)
///   void divide(T& value, const T& divisor)
///                                     value /= divisor. If numbers differ in precision,
///                                     these three keep the greatest of their arguments
///   T remainder(a, b)                 truncating: the sign of a
///   bool overflowCheck(const T&)      true above 10^9 (the caller throws its own
///                                     PrecisionException); above 10^18 throws
///                                     FatalPrecisionException. Exact types: never.
///   bool read(Source&, T&)            one number token of a vector; false: no number
///   void append(std::string&, const T&, int digits)
///                                     the text of a stream with precision `digits`
///   bool toInteger(const T&, std::int64_t&)
///                                     true if the value is an integer, |v| < 2^62
///   bool writtenAsInteger(const T&, int digits, std::int64_t&)
///                                     true if append() writes the digits of an integer,
///                                     |v| < 2^62; false: not determined
///   std::size_t hash(const T&)        equal values have equal hashes
///   bool exact                        arithmetic never rounds
///   int wholeDigits                   T holds all integers of this many decimal digits,
///                                     and read() accepts their plain text as such
template <class T>
struct NumberTraits;

/// Default precision of a stream, in significant decimal digits.
constexpr int defaultDigits = 6;

/// Precision of the components of a star in a file.
constexpr int fileDigits = 17;

/// Tolerance of equality: half of the 18 decimal digits of long double.
constexpr long double eps = 1e-9L;

/// Values up to this magnitude pass the overflow check.
constexpr long double safeBound = 1e9L;

/// Above this magnitude an overflow can't be corrected.
constexpr long double fatalBound = 1e18L;

/// The powers of ten below 2^62.
constexpr std::array<std::int64_t, 19> powersOfTen = []() {
  std::array<std::int64_t, 19> powers{1};
  for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = 10 * powers[i - 1];
  return powers;
}();

/// The fields of a long double: 80 bits, the leading one of the mantissa is stored.
struct ExtendedBits {
  static_assert(std::numeric_limits<long double>::digits == 64);

  /// Bias of the exponent field.
  static constexpr int bias = 16383;

  explicit ExtendedBits(const long double& value) {
    std::memcpy(&mantissa, &value, sizeof mantissa);
    std::memcpy(&signAndExponent, reinterpret_cast<const char*>(&value) + sizeof mantissa,
                sizeof signAndExponent);
  }
  int exponent() const { return signAndExponent & 0x7FFFU; }
  bool isNegative() const { return signAndExponent >> 15U != 0; }

  std::uint64_t mantissa;
  std::uint16_t signAndExponent;
};

template <>
struct NumberTraits<long double> {
  static long double infinity() { return std::numeric_limits<long double>::infinity(); }
  static bool isInfinite(long double v) { return std::isinf(v); }
  static long double absolute(long double v) { return std::fabs(v); }
  static const long double& tolerance() { return eps; }
  static bool isZero(long double v) { return std::fabs(v) <= eps; }
  static bool equal(long double a, long double b) { return a == b || std::fabs(a - b) <= eps; }
  static void addProduct(long double& sum, long double a, long double b) { sum += a * b; }
  static void subtractProduct(long double& sum, long double a, long double b) { sum -= a * b; }
  static void divide(long double& value, long double divisor) { value /= divisor; }
  static long double remainder(long double a, long double b) { return std::fmod(a, b); }
  static bool overflowCheck(long double v);
  template <class Source>
  static bool read(Source& source, long double& value);
  static void append(std::string& out, long double value, int digits);
  static bool toInteger(long double value, std::int64_t& integer) {
    const ExtendedBits bits(value);
    // value = mantissa * 2^-shift; an integer if the shift loses no bits.
    const int shift = ExtendedBits::bias + 63 - bits.exponent();
    if (bits.mantissa == 0) {
      integer = 0;
      return true;
    }
    if (shift < 2 || shift > 63) return false;
    const std::uint64_t magnitude = bits.mantissa >> static_cast<unsigned>(shift);
    integer = static_cast<std::int64_t>(magnitude);
    if (bits.isNegative()) integer = -integer;
    return magnitude << static_cast<unsigned>(shift) == bits.mantissa;
  }
  static bool writtenAsInteger(long double value, int digits, std::int64_t& integer) {
    if (!toInteger(value, integer)) return false;
    if (integer == 0) return !std::signbit(value);
    return digits >= 0 && digits <= 18 &&
           (integer < 0 ? -integer : integer) < powersOfTen[static_cast<std::size_t>(digits)];
  }
  static std::size_t hash(long double value) {
    const ExtendedBits bits(value);
    // Zero has two representations.
    if (bits.mantissa == 0) return 0;
    // The significant bits of a short integer are the upper ones of the mantissa.
    return std::rotl(bits.mantissa, 16) ^ static_cast<std::size_t>(bits.signAndExponent) << 32U;
  }
  static constexpr bool exact = false;
  static constexpr int wholeDigits = std::numeric_limits<long double>::digits10;
};

/// Machine integers: exact, without infinity; tolerance 0.
template <class I>
struct IntegerTraits {
  static I infinity() { return std::numeric_limits<I>::max(); }
  static bool isInfinite(I) { return false; }
  static I absolute(I v) { return static_cast<I>(v < 0 ? -v : v); }
  static const I& tolerance() {
    static constexpr I zero = 0;
    return zero;
  }
  static bool isZero(I v) { return v == 0; }
  static bool equal(I a, I b) { return a == b; }
  static void addProduct(I& sum, I a, I b) { sum = static_cast<I>(sum + a * b); }
  static void subtractProduct(I& sum, I a, I b) { sum = static_cast<I>(sum - a * b); }
  static void divide(I& value, I divisor) { value = static_cast<I>(value / divisor); }
  static I remainder(I a, I b) { return static_cast<I>(a % b); }
  static bool overflowCheck(I) { return false; }
  template <class Source>
  static bool read(Source& source, I& value);
  static void append(std::string& out, I value, int /*digits*/) { appendInteger(out, value); }
  static bool writtenAsInteger(I value, int /*digits*/, std::int64_t& integer) {
    integer = value;
    return true;
  }
  static constexpr int wholeDigits = std::numeric_limits<I>::digits10;
};

template <>
struct NumberTraits<long> : IntegerTraits<long> {};
template <>
struct NumberTraits<short> : IntegerTraits<short> {};

}  // namespace starsift
