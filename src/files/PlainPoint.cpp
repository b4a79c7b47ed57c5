#include "files/PlainPoint.h"

#include <algorithm>

namespace starsift {

namespace {

/// Every such integer has its digits as text in long double, which writes 17.
constexpr int mostDigits = 16;

unsigned digitAt(const char* text) {
  return static_cast<unsigned char>(*text) - static_cast<unsigned>('0');
}

/// The digits of a number of at least two; null if it is none in plain form.
const char* scanDigits(const char* text, std::int64_t& value) {
  const char* const first = text;
  if (*first == '0') return nullptr;
  std::int64_t magnitude = 0;
  for (unsigned digit = digitAt(text); digit <= 9; digit = digitAt(++text)) {
    if (text - first == mostDigits) return nullptr;
    magnitude = 10 * magnitude + digit;
  }
  value = magnitude;
  return text;
}

}  // namespace

const char* scanPlainInteger(const char* text, std::int64_t& value) {
  const bool isNegative = *text == '-';
  if (isNegative) ++text;
  const unsigned digit = digitAt(text);
  if (digit > 9) return nullptr;
  std::int64_t magnitude = digit;
  if (digitAt(text + 1) > 9) {
    if (isNegative && digit == 0) return nullptr;
    ++text;
  } else {
    text = scanDigits(text, magnitude);
  }
  value = isNegative ? -magnitude : magnitude;
  return text;
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
