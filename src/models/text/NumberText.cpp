#include "models/text/NumberText.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <optional>

#include "numbers/Conversion.h"
#include "numbers/QQStorage.h"

namespace starsift {

namespace {

/// Bits of the fraction of a double, with the leading one.
constexpr unsigned long doubleBits = 53;
/// Powers of two of the smallest and the largest double.
constexpr long smallestPower = -1074;
constexpr long largestPower = 1024;

/// The decimal places of 1/denominator; nothing if the decimal has no end.
std::optional<unsigned long> decimalPlaces(mpz_srcptr denominator) {
  ZZ rest;
  const ZZ five(5);
  const unsigned long fives = mpz_remove(rest.get(), denominator, five.get());
  const unsigned long twos = mpz_scan1(rest.get(), 0);
  mpz_tdiv_q_2exp(rest.get(), rest.get(), twos);
  if (mpz_cmp_ui(rest.get(), 1) != 0) return std::nullopt;
  return std::max(twos, fives);
}

void appendDecimal(std::string& out, const QQView& view, unsigned long places) {
  ZZ digits;
  mpz_ui_pow_ui(digits.get(), 10, places);
  mpz_mul(digits.get(), digits.get(), view.numerator());
  mpz_divexact(digits.get(), digits.get(), view.denominator());
  if (mpz_sgn(digits.get()) < 0) out += '-';
  std::string text = abs(digits).toString();
  if (text.size() <= places) text.insert(0, places + 1 - text.size(), '0');
  text.insert(text.size() - places, ".");
  out += text;
}

std::string roundedText(const QQ& value, int digits) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.*Lg", digits, toDbl(value, false));
  return text.data();
}

}  // namespace

void appendNumber(std::string& out, const QQ& value) {
  std::int64_t integer = 0;
  if (value.toInt64(integer)) {
    out += std::to_string(integer);
    return;
  }
  if (value.isInf()) {
    out += value.sign() ? "inf" : "-inf";
    return;
  }
  const QQView view(value);
  if (value.isInteger()) {
    appendDigits(out, view.numerator());
  } else if (const auto places = decimalPlaces(view.denominator())) {
    appendDecimal(out, view, *places);
  } else {
    appendDigits(out, view.numerator());
    out += '/';
    appendDigits(out, view.denominator());
  }
}

std::string numberText(const QQ& value) {
  std::string text;
  appendNumber(text, value);
  return text;
}

std::string decimalText(const QQ& value) {
  std::string text = numberText(value);
  return text.find('/') == std::string::npos ? text : roundedText(value, 20);
}

std::string shortText(const QQ& value) {
  return roundedText(value, 2);
}

bool isDouble(const QQ& value) {
  if (value.isInf() || value.isZero()) return true;
  const QQView view(value);
  // In lowest terms one of the two holds all powers of two.
  const unsigned long below = mpz_scan1(view.denominator(), 0);
  if (mpz_sizeinbase(view.denominator(), 2) != below + 1) return false;
  const unsigned long above = mpz_scan1(view.numerator(), 0);
  const auto size = static_cast<long>(mpz_sizeinbase(view.numerator(), 2));
  const long lowest = static_cast<long>(above) - static_cast<long>(below);
  const long highest = size - static_cast<long>(below);
  return static_cast<unsigned long>(size) - above <= doubleBits && lowest >= smallestPower &&
         highest <= largestPower;
}

}  // namespace starsift
