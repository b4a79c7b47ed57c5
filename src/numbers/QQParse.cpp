// The parser of the complete grammar of QQ. A token may be megabytes long and have as
// many levels of separators or exponents as characters, so nothing here is recursive
// and every character is read a bounded number of times.
#include <algorithm>
#include <optional>
#include <vector>

#include "numbers/QQDecimal.h"
#include "numbers/QQFunctions.h"
#include "numbers/QQStorage.h"
#include "numbers/QQText.h"
#include "system/Failure.h"

namespace starsift {

namespace {

/// The greatest magnitude of an exponent.
constexpr long exponentBound = 100000;

/// As isspace() in the C locale.
constexpr std::string_view allWhiteSpace = " \t\n\v\f\r";

std::string_view skipSpace(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(allWhiteSpace), text.size()));
  return text;
}

/// The text up to its first zero character.
std::string_view uptoZero(std::string_view text) {
  return text.substr(0, text.find('\0'));
}

/// Skips one sign; returns true for a minus.
bool takeSign(std::string_view& text) {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  return negative;
}

/// Skips zeros and returns their number.
unsigned long takeZeros(std::string_view& text) {
  const std::size_t zeros = std::min(text.find_first_not_of('0'), text.size());
  text.remove_prefix(zeros);
  return zeros;
}

/// Parses a mixed number or decimal without exponent.
///
/// In "a.b.c" or "a:b:c" the text after a separator is a number again. The text is
/// parsed level by level, so that an error of an outer level is reported first. Then
/// the levels are checked from the innermost one outwards, because each check needs the
/// number after it. Only three of the numbers are stored: an outer level needs the
/// integer part of the number after a ".", and the fraction of the number after a ":",
/// whose integer part must be 0.
class LevelParser {
 public:
  QQ parse(std::string_view text) {
    while (takeLevel(text)) {
    }
    checkLevels();
    return levels_.empty() ? last_ : value();
  }

 private:
  /// A level that ends in a separator other than "/".
  struct Level {
    bool mixed;           // the separator is ":", otherwise "." or ","
    bool negative;        // sign before the number
    bool zeros;           // zeros directly after the separator
    signed char integer;  // sign of the integer part
  };

  /// Parses and removes the text up to the next separator; false at the last level.
  bool takeLevel(std::string_view& text) {
    text = skipSpace(text);
    const bool negative = takeSign(text);
    if (text.empty()) fail("QQ: parse error1");
    const std::size_t length = text.find_first_of(",./:");
    if (length == std::string_view::npos) {
      last_ = plainNumber(negative, text);
    } else if (text[length] == '/') {
      last_ = fraction(negative, text.substr(0, length), text.substr(length + 1));
    } else {
      takeInteger(negative, text, length);
      return true;
    }
    if (tailIsNext()) tail_ = last_.ganze();
    return false;
  }

  void takeInteger(bool negative, std::string_view& text, std::size_t length) {
    ZZ integer = toInteger(text.substr(0, length));
    const bool mixed = text[length] == ':';
    text.remove_prefix(length + 1);
    const unsigned long zeros = takeZeros(text);
    if (tailIsNext()) tail_ = integer;
    if (!mixed && !firstPoint_) {
      firstPoint_ = levels_.size();
      pointZeros_ = zeros;
    }
    levels_.push_back(
        {mixed, negative, zeros > 0, static_cast<signed char>(mpz_sgn(integer.get()))});
    if (levels_.size() == 1) integer_.swap(integer);
  }

  /// True directly after the first point: the digits of the decimal follow.
  bool tailIsNext() const { return firstPoint_ && *firstPoint_ + 1 == levels_.size(); }

  QQ plainNumber(bool negative, std::string_view text) {
    if (!text.starts_with('i'))
      return QQ::canonicalise(!negative, toInteger(text), ZZ::zero(), ZZ::one());
    if (text.size() < 2 || text[1] != 'n') fail("QQ: parse error2");
    if (text.size() < 3 || text[2] != 'f') fail("QQ: parse error3");
    QQ infinite;
    infinite.setInf(!negative);
    return infinite;
  }

  QQ fraction(bool negative, std::string_view zaehlerText, std::string_view nennerText) {
    const ZZ nenner = toInteger(nennerText);
    if (nenner.isZero()) fail("QQ: division by zero1");
    const QQ value(toInteger(zaehlerText), nenner);
    return negative ? -value : value;
  }

  ZZ toInteger(std::string_view text) {
    buffer_.assign(text);
    return {buffer_, 0};
  }

  /// Reports malformed levels, the innermost one first.
  void checkLevels() const {
    // Properties of the number after the current level:
    bool negative = !last_.sign();
    bool hasInteger = !last_.ganze().isZero();
    bool hasFraction = !last_.zaehler().isZero();
    for (std::size_t i = levels_.size(); i > 0; --i) {
      const Level& level = levels_[i - 1];
      if (level.mixed) {
        if (level.zeros || negative) fail("QQ: malformed number1");
        if (hasInteger) fail("QQ: malformed number2");
      } else {
        hasFraction = hasInteger;
      }
      if (level.integer < 0) QQ::canonicalise(true, ZZ(-1), ZZ::zero(), ZZ::one());
      hasInteger = level.integer != 0;
      negative = level.negative && (hasInteger || hasFraction);
    }
  }

  /// The number of the outermost level, if there is more than one level.
  QQ value() const {
    QQ result = firstPoint_ ? tailAsDecimal() : last_;
    result += QQ(integer_);
    if (levels_.front().negative) result.negate();
    return result;
  }

  QQ tailAsDecimal() const {
    const ZZ stripped = withoutTrailingZeros(tail_);
    return decimal(stripped, digits(stripped) + pointZeros_);
  }

  std::vector<Level> levels_;
  ZZ integer_;                             // integer part of the first level
  std::optional<std::size_t> firstPoint_;  // level that ends in the first "."
  unsigned long pointZeros_ = 0;           // zeros directly after that point
  ZZ tail_;                                // integer part of the level after it
  QQ last_;                                // number of the last level
  std::string buffer_;                     // zero-terminated digits for GMP
};

/// mantissa * 10^exponent, multiplied only when its value is needed: an exponent of a
/// few characters means a hundred thousand digits, and in a chain of exponents nearly
/// all of them would serve only to find that a power of ten is 1.
struct Scaled {
  QQ mantissa;
  std::int64_t exponent = 0;  // |exponent| <= exponentBound

  QQ value() const { return exponent == 0 ? mantissa : mantissa * pow(QQ::ten(), QQ(exponent)); }

  /// True if the value is so small that pow() rounds 10^value to 1: the natural
  /// logarithm of the power is below half a unit in the last of its 192 bits.
  bool vanishes() const {
    constexpr std::int64_t smallest = -195;
    if (exponent >= 0 || mantissa.isInf()) return false;
    const QQView view(mantissa);
    const auto numeratorBits = static_cast<std::int64_t>(mpz_sizeinbase(view.numerator(), 2));
    const auto denominatorBits = static_cast<std::int64_t>(mpz_sizeinbase(view.denominator(), 2));
    // |mantissa| < 2^(numeratorBits - denominatorBits + 1), and ten is above 2^3.
    return numeratorBits - denominatorBits + 1 + 3 * exponent < smallest;
  }
};

/// mantissa * 10^exponent, where the exponent is such a number itself.
Scaled scaled(QQ mantissa, const Scaled& exponent) {
  if (exponent.vanishes()) return {std::move(mantissa)};
  const QQ value = exponent.value();
  if (abs(value) > QQ(exponentBound)) fail("QQ: exponent out of range");
  Scaled result{std::move(mantissa)};
  if (!value.toInt64(result.exponent)) result.mantissa *= pow(QQ::ten(), value);
  return result;
}

/// Parses a number with or without exponent. The exponent may have an exponent itself:
/// all mantissas are read from left to right, then the values are computed from the
/// innermost exponent outwards.
QQ parseWithExponents(std::string_view text) {
  struct Power {
    QQ mantissa;
    bool negative;  // sign of the exponent
  };
  std::vector<Power> powers;
  Scaled value;
  for (;;) {
    const std::size_t length = text.find_first_of("eE");
    QQ mantissa = LevelParser().parse(text.substr(0, length));
    if (length == std::string_view::npos) {
      value.mantissa = std::move(mantissa);
      break;
    }
    text.remove_prefix(length + 1);
    const bool negative = takeSign(text);
    takeZeros(text);
    powers.push_back({std::move(mantissa), negative});
    if (text.empty()) break;
  }
  for (; !powers.empty(); powers.pop_back()) {
    if (powers.back().negative) value.mantissa.negate();
    value = scaled(std::move(powers.back().mantissa), value);
  }
  return value.value();
}

}  // namespace

QQ qqtext::parseGeneral(std::string_view text) {
  return parseWithExponents(uptoZero(text));
}

std::string expandExponent(std::string_view text) {
  text = skipSpace(uptoZero(text));
  if (text.find_first_of("eE") == std::string_view::npos) return std::string(text);
  std::string expanded;
  append(expanded, parseWithExponents(text));
  return expanded;
}

}  // namespace starsift
