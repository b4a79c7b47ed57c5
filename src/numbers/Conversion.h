// Conversion between long double and QQ, and what may be lost by it.
//
// dbl_t counts as a number of 18 decimal digits. It represents a QQ v exactly if v is
// a decimal that ends within 18 significant digits (1/10, 999999999999999999; not
// 1/3, not 2^-60): fromDbl(toDbl(v)) == v holds for these values and no others.
#pragma once

#include <limits>

#include "core/NumberConversion.h"
#include "numbers/QQ.h"

namespace starsift {

using dbl_t = long double;

static_assert(std::numeric_limits<dbl_t>::digits == 64 &&
                  std::numeric_limits<dbl_t>::digits10 == 18,
              "dbl_t must be the 80-bit extended format");

/// Significant decimal digits of a dbl_t.
constexpr int dblDigits = 18;

/// toDbl() of any number; slower for small integers.
dbl_t toDblGeneral(const QQ& value, bool strict, bool lenient);

/// Returns the dbl_t nearest to `value`, and infinity for infinity. If `strict`, throws
/// PreCommaPrecisionException for an integer part of more than 18 digits, and, unless
/// `lenient`, PostCommaPrecisionException for any other value that isn't exact.
inline dbl_t toDbl(const QQ& value, bool strict, bool lenient = false) {
  constexpr std::int64_t bound = 1'000'000'000'000'000'000;
  std::int64_t integer = 0;
  if (value.toInt64(integer) && integer > -bound && integer < bound)
    return static_cast<dbl_t>(integer);
  return toDblGeneral(value, strict, lenient);
}

/// Returns the decimal that x prints as with 18 significant digits, and infinity for
/// infinity. Throws PrecisionException "Precision lost during conversion" for a nan.
QQ fromDbl(dbl_t x);

/// True if a strict toDbl() doesn't throw for `value`.
bool isExact(const QQ& value);

/// True if converting to dbl_t and back changes `value` by at most one unit in the last
/// of 18 digits, or by at most 1 / 10^9 if that is more. True for infinities.
bool representable(const QQ& value);

/// convert() throws if `value` isn't exact in dbl_t; nearest() rounds.
template <>
struct NumberConversion<dbl_t, QQ> {
  static dbl_t convert(const QQ& value) { return toDbl(value, true); }
  static dbl_t nearest(const QQ& value) { return toDbl(value, false); }
};

/// Returns the finite integer x with all its bits; fromDbl() rounds it to 18 digits.
QQ exactInteger(dbl_t x);

/// convert() throws PrecisionException for a nan.
template <>
struct NumberConversion<QQ, dbl_t> {
  static QQ convert(dbl_t x) { return fromDbl(x); }
  static QQ ofInteger(dbl_t x) { return exactInteger(x); }
};

}  // namespace starsift
