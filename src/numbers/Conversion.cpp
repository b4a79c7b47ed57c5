#include "numbers/Conversion.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>

#include "core/ConversionArray.h"
#include "numbers/QQDecimal.h"
#include "numbers/QQStorage.h"
#include "numbers/RoundToDbl.h"
#include "system/Exceptions.h"

namespace starsift {

namespace {

/// 10^18, the least integer part of more than 18 digits.
constexpr std::int64_t integerBound = powersOfTen[dblDigits];

/// True if |numerator| / denominator, in lowest terms, is a decimal of at most 18 digits.
bool isShortDecimal(std::int64_t numerator, std::uint32_t denominator) {
  // Multiplying by the missing twos and fives makes the denominator a power of ten;
  // the digits of the numerator are then those of the decimal.
  auto digits = static_cast<UInt128>(std::abs(numerator));
  std::uint32_t rest = denominator;
  int twos = 0;
  int fives = 0;
  for (; rest % 2 == 0; ++twos) rest /= 2;
  for (; rest % 5 == 0; ++fives) rest /= 5;
  if (rest != 1) return false;
  for (int i = twos; i < fives && digits < integerBound; ++i) digits *= 2;
  for (int i = fives; i < twos && digits < integerBound; ++i) digits *= 5;
  return digits < integerBound;
}

bool hasLongInteger(const QQ& value) {
  std::int64_t numerator = 0;
  std::uint32_t denominator = 0;
  if (value.toSmall(numerator, denominator))
    return std::abs(numerator) / static_cast<std::int64_t>(denominator) >= integerBound;
  static const QQ bound(integerBound);
  return abs(value) >= bound;
}

/// If x prints as a decimal of at most 17 places, stores it in `value` and returns true.
/// The product below has a relative error of at most 2^-64, far less than half a unit in
/// the last of 18 digits: if it is an integer, its digits are those that are printed.
bool fewPlaces(dbl_t x, QQ& value) {
  constexpr int most = 17;
  for (int places = 1; places <= most; ++places) {
    const dbl_t digits = x * static_cast<dbl_t>(powersOfTen[static_cast<std::size_t>(places)]);
    if (std::fabs(digits) >= static_cast<dbl_t>(integerBound)) return false;
    if (digits == std::rint(digits)) {
      value = decimal(static_cast<std::int64_t>(digits), places);
      return true;
    }
  }
  return false;
}

QQ fromText(dbl_t x) {
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.*Le", dblDigits - 1, x);
  std::int64_t digits = 0;
  const char* position = text.data();
  const bool negative = *position == '-';
  for (; *position != 'e'; ++position)
    if (*position >= '0' && *position <= '9') digits = 10 * digits + (*position - '0');
  long places = dblDigits - 1 - std::strtol(position + 1, nullptr, 10);
  if (negative) digits = -digits;
  if (places >= 0) return decimal(ZZ(digits), static_cast<unsigned long>(places));
  return QQ(ZZ(digits) * pow(ZZ::ten(), ZZ(-places)));
}

}  // namespace

dbl_t toDblGeneral(const QQ& value, bool strict, bool lenient) {
  if (value.isInf()) return value.sign() ? HUGE_VALL : -HUGE_VALL;
  if (strict && hasLongInteger(value))
    throw PreCommaPrecisionException("The QQ integer-part is not exactly representable as dbl_t");
  if (strict && !lenient && !isExact(value))
    throw PostCommaPrecisionException("QQ is not representable as dbl_t");
  return roundToDbl(value);
}

QQ fromDbl(dbl_t x) {
  if (std::isnan(x)) throw PrecisionException(conversionLossText);
  QQ value;
  if (std::isinf(x)) {
    value.setInf(x > 0);
    return value;
  }
  if (std::fabs(x) < static_cast<dbl_t>(integerBound)) {
    const auto integer = static_cast<std::int64_t>(x);
    if (static_cast<dbl_t>(integer) == x) return QQ(integer);
    if (fewPlaces(x, value)) return value;
  }
  return fromText(x);
}

QQ exactInteger(dbl_t x) {
  std::int64_t small = 0;
  if (NumberTraits<dbl_t>::toInteger(x, small)) return QQ(small);
  const ExtendedBits bits(x);
  // The integer is at least 2^62, so the mantissa has at most one bit after the point.
  const int shift = bits.exponent() - ExtendedBits::bias - 63;
  ZZ integer(shift < 0 ? bits.mantissa >> 1U : bits.mantissa);
  if (shift > 0) mpz_mul_2exp(integer.get(), integer.get(), static_cast<mp_bitcnt_t>(shift));
  return QQ(bits.isNegative() ? -integer : integer);
}

QQ::QQ(long double value) : QQ(fromDbl(value)) {}

bool isExact(const QQ& value) {
  if (value.isInf()) return true;
  if (hasLongInteger(value)) return false;
  std::int64_t numerator = 0;
  std::uint32_t denominator = 0;
  if (value.toSmall(numerator, denominator)) return isShortDecimal(numerator, denominator);
  return fromDbl(roundToDbl(value)) == value;
}

bool representable(const QQ& value) {
  if (value.isInf()) return true;
  const QQ back = fromDbl(roundToDbl(value));
  if (back.isInf()) return false;
  const auto unit = static_cast<long>(digits(value.ganze())) - dblDigits + 1;
  const QQ lastDigit =
      unit > 0 ? QQ(pow(ZZ::ten(), ZZ(unit))) : decimal(ZZ(1), static_cast<unsigned long>(-unit));
  return abs(value - back) <= max(lastDigit, NumberTraits<QQ>::tolerance());
}

}  // namespace starsift
