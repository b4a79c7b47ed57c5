// The two worlds of numbers: long double and QQ, and what may be lost between them.
//
// dbl_t is reckoned at 18 decimal digits: it carries a QQ exactly when the value is
// a decimal that ends within 18 significant digits (1/10, 999999999999999999; not
// 1/3, not 2^-60), because fromDbl(toDbl(v)) == v holds for those and no others.
#pragma once

#include <limits>

#include "core/NumberConversion.h"
#include "numbers/QQ.h"

namespace starsift {

using dbl_t = long double;

static_assert(std::numeric_limits<dbl_t>::digits == 64 &&
                  std::numeric_limits<dbl_t>::digits10 == 18,
              "dbl_t must be the 80-bit extended format");

/// Decimal digits that dbl_t carries.
constexpr int dblDigits = 18;

/// The body of toDbl() for everything but small integers.
dbl_t toDblGeneral(const QQ& value, bool strict, bool lenient);

/// The dbl_t nearest to `value`; infinities stay. Under `strict` an integer part
/// of more than 18 digits throws PreCommaPrecisionException, and any other value
/// that isn't carried exactly PostCommaPrecisionException unless `lenient`.
inline dbl_t toDbl(const QQ& value, bool strict, bool lenient = false) {
  constexpr std::int64_t bound = 1'000'000'000'000'000'000;
  std::int64_t integer = 0;
  if (value.toInt64(integer) && integer > -bound && integer < bound)
    return static_cast<dbl_t>(integer);
  return toDblGeneral(value, strict, lenient);
}

/// The QQ of the text of x with 18 significant digits; infinities stay. A nan
/// throws PrecisionException "Precision lost during conversion".
QQ fromDbl(dbl_t x);

/// True when `value` is carried exactly, so that a strict toDbl() doesn't throw.
bool isExact(const QQ& value);

/// True when `value` survives the way to dbl_t and back up to one unit in the
/// last of 18 digits, or up to 1 / 10^9 where that is more. Infinities survive.
bool representable(const QQ& value);

/// Strict: throws where digits would be lost; nearest() rounds them away.
template <>
struct NumberConversion<dbl_t, QQ> {
  static dbl_t convert(const QQ& value) { return toDbl(value, true); }
  static dbl_t nearest(const QQ& value) { return toDbl(value, false); }
};

/// The finite integer x to its last bit, where fromDbl() would take 18 digits for it.
QQ exactInteger(dbl_t x);

/// convert() throws PrecisionException for a nan.
template <>
struct NumberConversion<QQ, dbl_t> {
  static QQ convert(dbl_t x) { return fromDbl(x); }
  static QQ ofInteger(dbl_t x) { return exactInteger(x); }
};

}  // namespace starsift
