#include "files/PlainPoint.h"

#include <algorithm>
#include <numeric>

namespace starsift {

namespace {

/// Every such integer has its digits as text in long double, which writes 17.
constexpr int mostDigits = 16;

unsigned digitAt(const char* text) {
  return static_cast<unsigned char>(*text) - static_cast<unsigned>('0');
}

/// An integer of at most `most` digits; null if there is none. A leading zero stands for itself,
/// and the digits after it are left for the caller to reject.
template <class Integer>
const char* scanWhole(const char* text, int most, Integer& value) {
  value = 0;
  const char* const first = text;
  if (*text == '0') return text + 1;
  for (unsigned digit = digitAt(text); digit <= 9; digit = digitAt(++text)) {
    if (text - first == most) return nullptr;
    value = 10 * value + digit;
  }
  return text == first ? nullptr : text;
}

/// "1/3" in lowest terms, between 0 and 1.
const char* scanFraction(const char* text, MixedNumber& number) {
  // Of a denominator below 2^62.
  constexpr int mostFractionDigits = 18;
  text = scanWhole(text, mostFractionDigits, number.numerator);
  if (text == nullptr || *text != '/') return nullptr;
  text = scanWhole(text + 1, mostFractionDigits, number.denominator);
  const bool isPlain = number.numerator > 0 && number.numerator < number.denominator &&
                       std::gcd(number.numerator, number.denominator) == 1;
  return isPlain ? text : nullptr;
}

const char* scanMixedNumber(const char* text, MixedNumber& number) {
  // Of an integer below 2^127.
  constexpr int mostWholeDigits = 38;
  number = {};
  number.isNegative = *text == '-';
  if (number.isNegative) ++text;
  const char* const first = text;
  text = scanWhole(text, mostWholeDigits, number.whole);
  if (text == nullptr) return nullptr;
  if (*text == ' ') return number.isNegative && number.whole == 0 ? nullptr : text;
  if (*text == ':') return number.whole == 0 ? nullptr : scanFraction(text + 1, number);
  number.whole = 0;
  return *text == '/' ? scanFraction(first, number) : nullptr;
}

}  // namespace

const char* scanPlainPoint(const char* text, std::span<MixedNumber> components) {
  if (text[0] != '[' || text[1] != ' ') return nullptr;
  text += 2;
  for (MixedNumber& component : components) {
    text = scanMixedNumber(text, component);
    if (text == nullptr || *text++ != ' ') return nullptr;
  }
  return *text == ']' ? text + 1 : nullptr;
}

const char* scanPlainInteger(const char* text, std::int64_t& value) {
  const bool isNegative = *text == '-';
  text = scanWhole(isNegative ? text + 1 : text, mostDigits, value);
  if (!isNegative) return text;
  value = -value;
  return value == 0 ? nullptr : text;
}

const char* scanPlainPoint(const char* text, SmallPoint& point) {
  if (text[0] != '[' || text[1] != ' ') return nullptr;
  text += 2;
  std::int64_t lowest = 0;
  std::int64_t highest = 0;
  for (std::int64_t& component : point.components) {
    std::int64_t value = digitAt(text);
    // Most are single digits.
    if (static_cast<std::uint64_t>(value) <= 9 && text[1] == ' ') {
      text += 2;
    } else {
      text = scanPlainInteger(text, value);
      if (text == nullptr || *text++ != ' ') return nullptr;
    }
    lowest = std::min(lowest, value);
    highest = std::max(highest, value);
    component = value;
  }
  point.magnitude = std::max(highest, -lowest);
  return *text == ']' ? text + 1 : nullptr;
}

}  // namespace starsift
