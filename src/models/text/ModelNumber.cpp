#include "models/text/ModelNumber.h"

#include <algorithm>
#include <string>

#include "models/text/ModelError.h"
#include "models/text/Words.h"
#include "numbers/QQDecimal.h"

namespace starsift {

namespace {

/// Digits that a machine word holds whatever they are.
constexpr std::size_t wordDigits = 18;
/// Numbers of at most so many digits are never counted by NumberReader.
constexpr std::uint64_t uncountedDigits = 1000;
/// The total of digits that numbers may have beyond their texts.
constexpr std::uint64_t mostExpandedDigits = 100'000'000;

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

std::string_view takeDigits(std::string_view text, std::size_t& position) {
  const std::size_t first = position;
  while (position < text.size() && isDigit(text[position])) ++position;
  return text.substr(first, position - first);
}

/// The value of a few digits; the magnitude stays below 10^18.
std::int64_t wordOf(std::string_view digits, std::int64_t word = 0) {
  for (const char digit : digits) word = 10 * word + (digit - '0');
  return word;
}

void scanExponent(std::string_view text, std::string_view letters, NumberForm& form) {
  std::size_t position = form.length;
  if (position == text.size() || letters.find(text[position]) == std::string_view::npos) return;
  ++position;
  const bool isSigned = position < text.size() && (text[position] == '-' || text[position] == '+');
  const bool isNegative = isSigned && text[position] == '-';
  if (isSigned) ++position;
  std::string_view digits = takeDigits(text, position);
  if (digits.empty()) return;
  digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size()));
  const std::int64_t magnitude =
      digits.size() > 6 ? largestExponent + 1 : std::min(wordOf(digits), largestExponent + 1);
  form.exponent = isNegative ? -magnitude : magnitude;
  form.hasExponent = true;
  form.length = position;
}

void scanDenominator(std::string_view text, NumberForm& form) {
  std::size_t position = form.length;
  if (position == text.size() || text[position] != '/') return;
  ++position;
  const std::string_view digits = takeDigits(text, position);
  if (digits.empty()) return;
  form.denominator = digits;
  form.length = position;
}

ZZ integerOf(std::string_view digits) {
  return digits.empty() ? ZZ() : ZZ(std::string(digits), 10);
}

QQ powerOfTen(std::int64_t exponent) {
  return QQ(pow(ZZ::ten(), ZZ(static_cast<long>(exponent))));
}

QQ longValue(const NumberForm& form) {
  if (!form.denominator.empty()) return QQ(integerOf(form.integer), integerOf(form.denominator));
  std::string digits(form.integer);
  digits += form.decimals;
  const auto places = static_cast<std::int64_t>(form.decimals.size()) - form.exponent;
  const ZZ integer = integerOf(digits);
  if (places < 0) return QQ(integer) * powerOfTen(-places);
  return decimal(integer, static_cast<unsigned long>(places));
}

/// The value of digits without a denominator that a machine word holds; nothing for others.
std::optional<QQ> shortValue(const NumberForm& form) {
  const std::size_t digits = form.integer.size() + form.decimals.size();
  if (digits > wordDigits || !form.denominator.empty()) return std::nullopt;
  const auto places = static_cast<std::int64_t>(form.decimals.size()) - form.exponent;
  if (places > static_cast<std::int64_t>(wordDigits)) return std::nullopt;
  std::int64_t word = wordOf(form.decimals, wordOf(form.integer));
  if (places < 0) {
    if (static_cast<std::int64_t>(digits) - places > static_cast<std::int64_t>(wordDigits))
      return std::nullopt;
    for (std::int64_t i = 0; i < -places; ++i) word *= 10;
  }
  if (form.isNegative) word = -word;
  return decimal(word, static_cast<int>(std::max<std::int64_t>(places, 0)));
}

QQ valueOf(const NumberForm& form) {
  if (std::optional<QQ> value = shortValue(form)) return *std::move(value);
  QQ value = longValue(form);
  if (form.isNegative) value.negate();
  return value;
}

bool isZero(std::string_view digits) {
  return digits.find_first_not_of('0') == std::string_view::npos;
}

bool isOutOfRange(const NumberForm& form) {
  return form.exponent > largestExponent || form.exponent < -largestExponent;
}

}  // namespace

std::optional<NumberForm> scanNumber(std::string_view text, std::string_view letters) {
  NumberForm form;
  std::size_t position = 0;
  if (!text.empty() && (text[0] == '-' || text[0] == '+')) {
    form.isNegative = text[0] == '-';
    position = 1;
  }
  form.integer = takeDigits(text, position);
  if (position < text.size() && text[position] == '.') {
    std::size_t behind = position + 1;
    form.decimals = takeDigits(text, behind);
    if (form.integer.empty() && form.decimals.empty()) return std::nullopt;
    form.length = behind;
    scanExponent(text, letters, form);
    return form;
  }
  if (form.integer.empty()) return std::nullopt;
  form.length = position;
  scanExponent(text, letters, form);
  if (!form.hasExponent) scanDenominator(text, form);
  return form;
}

void NumberReader::count(const NumberForm& form, std::string_view text, std::size_t line) {
  const auto digits =
      static_cast<std::uint64_t>(form.exponent < 0 ? -form.exponent : form.exponent);
  if (digits <= uncountedDigits) return;
  expandedDigits_ += digits;
  if (expandedDigits_ > mostExpandedDigits)
    throw ModelError(line, inQuotes(text) + " and the numbers before it have more than " +
                               std::to_string(mostExpandedDigits) + " digits in all");
}

QQ NumberReader::value(const NumberForm& form, std::string_view text, std::size_t line) {
  if (isOutOfRange(form))
    throw ModelError(line, "the exponent of " + inQuotes(text) + " is beyond " +
                               std::to_string(largestExponent));
  if (!form.denominator.empty() && isZero(form.denominator))
    throw ModelError(line, inQuotes(text) + " has the denominator 0");
  count(form, text, line);
  return valueOf(form);
}

QQ NumberReader::read(std::string_view text, std::size_t line) {
  const std::optional<NumberForm> form = scanNumber(text);
  if (!form || form->length != text.size())
    throw ModelError(line, inQuotes(text) + " is not a number");
  return value(*form, text, line);
}

bool isInfinityWord(std::string_view text, bool& isPositive) {
  isPositive = !text.starts_with('-');
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  return equalsInAnyCase(text, "inf") || equalsInAnyCase(text, "infinity");
}

std::optional<QQ> parseNumber(std::string_view text) {
  const std::optional<NumberForm> form = scanNumber(text);
  if (!form || form->length != text.size() || isOutOfRange(*form)) return std::nullopt;
  if (!form->denominator.empty() && isZero(form->denominator)) return std::nullopt;
  return valueOf(*form);
}

}  // namespace starsift
