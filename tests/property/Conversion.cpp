// Between long double and QQ.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <cstdlib>

#include "numbers/Conversion.h"
#include "numbers/QQDecimal.h"
#include "support/generators/NumberGenerators.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

/// digits * 10^exponent with at most 18 digits.
struct Decimal {
  std::int64_t digits;
  int exponent;

  QQ value() const {
    const QQ power(pow(ZZ::ten(), ZZ(std::abs(exponent))));
    return exponent < 0 ? QQ(digits) / power : QQ(digits) * power;
  }
  std::string text() const { return std::to_string(digits) + "e" + std::to_string(exponent); }
};

Decimal arbitraryDecimal(int least, int most) {
  const std::int64_t bound = powersOfTen[static_cast<std::size_t>(*rc::gen::inRange(1, 19))];
  return {*rc::gen::inRange(-bound + 1, bound), *rc::gen::inRange(least, most)};
}

bool throwsUnderStrict(const QQ& value) {
  try {
    toDbl(value, true);
    return false;
  } catch (const PrecisionException&) {
    return true;
  }
}

RC_GTEST_PROP(Conversion, ShortDecimalsSurvive, ()) {
  const Decimal decimal = arbitraryDecimal(-40, 1);
  const dbl_t x = toDbl(decimal.value(), true);
  RC_ASSERT(x == std::strtold(decimal.text().c_str(), nullptr));
  RC_ASSERT(fromDbl(x) == decimal.value());
}

RC_GTEST_PROP(Conversion, ShortDecimalsOfAnySizeComeBack, ()) {
  const Decimal decimal = arbitraryDecimal(-4900, 4900);
  const dbl_t x = toDbl(decimal.value(), false);
  RC_ASSERT(x == std::strtold(decimal.text().c_str(), nullptr));
  if (std::fabs(x) >= LDBL_MIN) RC_ASSERT(fromDbl(x) == decimal.value());
}

RC_GTEST_PROP(Conversion, StrictThrowsExactlyWhereTheWayBackDiffers, (const QQ& value)) {
  const bool survives = fromDbl(toDbl(value, false)) == value && digits(value.ganze()) <= dblDigits;
  RC_ASSERT(throwsUnderStrict(value) == !survives);
  RC_ASSERT(isExact(value) == survives);
}

RC_GTEST_PROP(Conversion, NearestHasNoNearerNeighbour, (const QQ& value)) {
  const dbl_t x = toDbl(value, false);
  RC_PRE(std::isfinite(x));
  // The neighbours as exact rationals: mantissa and power of two.
  const auto exactly = [](dbl_t y) {
    int exponent = 0;
    const auto mantissa = static_cast<long>(std::ldexp(std::frexp(y, &exponent), 63));
    const QQ power(pow(ZZ(2), ZZ(std::abs(exponent - 63))));
    QQ half = QQ(mantissa) * (exponent < 63 ? QQ(1) / power : power);
    const dbl_t rest = std::ldexp(std::frexp(y, &exponent), 63) - static_cast<dbl_t>(mantissa);
    return half + (exponent < 63 ? QQ(1) / power : power) * QQ(static_cast<long>(rest * 2), 2L);
  };
  const QQ distance = abs(exactly(x) - value);
  RC_ASSERT(distance <= abs(exactly(std::nextafter(x, HUGE_VALL)) - value));
  RC_ASSERT(distance <= abs(exactly(std::nextafter(x, -HUGE_VALL)) - value));
}

RC_GTEST_PROP(Conversion, FromDblIsTheTextOfEighteenDigits, ()) {
  const auto mantissa = static_cast<dbl_t>(*rc::gen::arbitrary<std::int64_t>());
  const dbl_t x = std::ldexp(mantissa, *rc::gen::inRange(-200, 100));
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.17Le", x);
  // Without the point the text is an integer with an exponent.
  std::string digits(text.data());
  const std::size_t point = digits.find('.');
  digits.erase(point, 1);
  const std::size_t letter = digits.find('e');
  const int exponent = std::atoi(digits.c_str() + letter + 1) - 17;
  const Decimal decimal{std::atoll(digits.substr(0, letter).c_str()), exponent};
  RC_ASSERT(fromDbl(x) == decimal.value());
}

RC_GTEST_PROP(Conversion, EveryNumberInRangeIsRepresentable, (const QQ& value)) {
  RC_PRE(abs(value) < QQ(pow(ZZ::ten(), ZZ(4900))));
  RC_ASSERT(representable(value));
}

}  // namespace
}  // namespace starsift
