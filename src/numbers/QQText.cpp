// Printing, tokens and the reader of plain numbers. The parser of the complete grammar is
// in QQParse.cpp.
#include "numbers/QQText.h"

#include <istream>
#include <ostream>

#include "numbers/QQDecimal.h"
#include "numbers/QQStorage.h"
#include "system/Failure.h"
#include "text/IntegerText.h"

namespace starsift {

namespace {

constexpr int plainDigits = 18;

/// A run of decimal digits in the text.
struct Digits {
  std::int64_t value = 0;
  int count = 0;
};

/// Reads up to `most` digits, most <= 18. A further digit is left for the caller to
/// reject.
Digits takeDigits(const char*& position, const char* end, int most) {
  const char* const begin = position;
  const char* const stop = end - begin > most ? begin + most : end;
  std::int64_t value = 0;
  for (; position != stop; ++position) {
    const unsigned digit = static_cast<unsigned char>(*position) - static_cast<unsigned>('0');
    if (digit > 9) break;
    value = 10 * value + digit;
  }
  return {value, static_cast<int>(position - begin)};
}

/// Reads a positive number without leading zeros; returns a count of 0 if there is none.
Digits takePositive(const char*& position, const char* end) {
  if (position == end || *position == '0') return {};
  return takeDigits(position, end, plainDigits);
}

/// Reads the decimal places after the point; null if they are all 0 or too many.
const char* scanDecimalTail(const char* position, const char* end, Digits whole, QQ& value) {
  const char* const start = position;
  const Digits tail = takeDigits(position, end, plainDigits - whole.count);
  if (tail.value == 0) return nullptr;
  const auto places = static_cast<int>(position - start);
  value = decimal(whole.value * powersOfTen[static_cast<std::size_t>(places)] + tail.value, places);
  return position;
}

/// The proper fraction zaehler / nenner after a ":".
struct ProperFraction {
  std::int64_t zaehler = 0;
  std::int64_t nenner = 0;
};

/// Null if there is none or a long one.
const char* scanProperFraction(const char* position, const char* end, ProperFraction& fraction) {
  const Digits zaehler = takePositive(position, end);
  if (zaehler.count == 0 || position == end || *position != '/') return nullptr;
  const Digits nenner = takePositive(++position, end);
  if (nenner.count == 0 || zaehler.value >= nenner.value) return nullptr;
  fraction = {zaehler.value, nenner.value};
  return position;
}

const char* scanMixedTail(const char* position, const char* end, Digits whole, QQ& value) {
  ProperFraction tail;
  position = scanProperFraction(position, end, tail);
  if (position == nullptr) return nullptr;
  QQStorage::setReduced(value, static_cast<Int128>(whole.value) * tail.nenner + tail.zaehler,
                        static_cast<std::uint64_t>(tail.nenner));
  return position;
}

const char* scanNenner(const char* position, const char* end, Digits zaehler, QQ& value) {
  const Digits nenner = takePositive(position, end);
  if (nenner.count == 0) return nullptr;
  QQStorage::setReduced(value, zaehler.value, static_cast<std::uint64_t>(nenner.value));
  return position;
}

/// Reads the rest after the first digits; `position` is at a separator.
const char* scanTail(const char* position, const char* end, Digits whole, QQ& value) {
  switch (*position) {
    case '.':
    case ',':
      return scanDecimalTail(position + 1, end, whole, value);
    case ':':
      return scanMixedTail(position + 1, end, whole, value);
    default:
      return scanNenner(position + 1, end, whole, value);
  }
}

bool isSeparator(char c) {
  return c == '.' || c == ',' || c == ':' || c == '/';
}

bool opensComment(const char* position, const char* end) {
  return *position == '/' && end - position > 1 && (position[1] == '/' || position[1] == '*');
}

/// Digits of an integer below 2^127.
constexpr int wideDigits = 38;

/// Reads an integer of at most wideDigits; returns their number, 0 if there are none or more.
int takeWide(const char*& position, const char* end, UInt128& value) {
  int count = 0;
  value = 0;
  for (Digits part = takeDigits(position, end, plainDigits); part.count > 0;
       part = takeDigits(position, end, plainDigits)) {
    count += part.count;
    if (count > wideDigits) return 0;
    value = value * static_cast<UInt128>(powersOfTen[static_cast<std::size_t>(part.count)]) +
            static_cast<UInt128>(part.value);
  }
  return count;
}

/// Reads "a/b" or "a" of at most wideDigits each, a with more than plainDigits; null if there is
/// something else.
const char* scanWide(const char* position, const char* end, QQ& value) {
  UInt128 numerator = 0;
  if (takeWide(position, end, numerator) == 0) return nullptr;
  UInt128 denominator = 1;
  if (position != end && isSeparator(*position) && !opensComment(position, end)) {
    if (*position != '/' || ++position == end || *position == '0') return nullptr;
    if (takeWide(position, end, denominator) == 0) return nullptr;
  }
  QQStorage::setWide(value, numerator, denominator);
  return position;
}

/// Reads an integer longer than plainDigits, alone or before a short proper fraction.
const char* scanLong(const char* position, const char* end, QQ& value) {
  // The loop is quadratic in the digits; GMP's reader is faster for longer numbers.
  constexpr int mostDigits = 5 * plainDigits;
  ZZ whole;
  int count = 0;
  for (Digits part = takeDigits(position, end, plainDigits); part.count > 0;
       part = takeDigits(position, end, plainDigits)) {
    count += part.count;
    if (count > mostDigits) return nullptr;
    const auto power = powersOfTen[static_cast<std::size_t>(part.count)];
    mpz_mul_ui(whole.get(), whole.get(), static_cast<unsigned long>(power));
    mpz_add_ui(whole.get(), whole.get(), static_cast<unsigned long>(part.value));
  }
  if (position == end || !isSeparator(*position) || opensComment(position, end)) {
    value = QQ(whole);
    return position;
  }
  if (*position != ':') return nullptr;
  ProperFraction tail;
  position = scanProperFraction(position + 1, end, tail);
  if (position == nullptr) return nullptr;
  const ZZ nenner(tail.nenner);
  value = QQ(whole * nenner + ZZ(tail.zaehler), nenner);
  return position;
}

bool isTokenCharacter(int c, TokenKind kind) {
  if (c >= '+' && c <= ':') return true;  // + , - . / 0..9 :
  return kind == TokenKind::record && (c == 'e' || c == 'E');
}

/// True if the next character of the source is not part of a number token.
bool tokenEnds(const TextCursor& source, TokenKind kind) {
  const int c = source.peek();
  return c != 'i' && (!isTokenCharacter(c, kind) || atComment(source));
}

template <class Source>
std::string gatherToken(Source& source, TokenKind kind) {
  std::string token;
  int c = source.peek();
  for (; isTokenCharacter(c, kind) && !atComment(source); c = source.peek()) {
    token += static_cast<char>(c);
    source.take();
  }
  if (c != 'i') return token;
  source.take();
  if (source.peek() != 'n') return token;
  source.take();
  if (source.peek() != 'f') return token;
  source.take();
  return token += "inf";
}

bool atExponent(const char* position, const char* end) {
  return position != end && (*position == 'e' || *position == 'E');
}

/// Reads a plain number if the token ends after it; otherwise leaves the source unchanged.
bool readPlain(TextCursor& source, QQ& value, TokenKind kind) {
  const std::string_view rest = source.rest();
  const char* const begin = rest.data();
  const char* const end = begin + rest.size();
  const char* behind = qqtext::scanPlain(begin, end, value);
  if (behind == nullptr) return false;
  if (kind == TokenKind::record && atExponent(behind, end)) {
    behind = qqtext::scanExponent(behind, end, value);
    if (behind == nullptr) return false;
  }
  TextCursor ahead = source;
  ahead.advance(static_cast<std::size_t>(behind - begin));
  if (!tokenEnds(ahead, kind)) return false;
  source = ahead;
  return true;
}

/// A stream can't be read ahead; QQ::parse() reads plain numbers of its tokens.
bool readPlain(StreamCursor& /*source*/, QQ& /*value*/, TokenKind /*kind*/) {
  return false;
}

void appendSmall(std::string& out, std::int64_t numerator, std::int64_t denominator) {
  if (denominator == 1) return appendInteger(out, numerator);
  const std::int64_t ganze = numerator / denominator;
  std::int64_t zaehler = numerator % denominator;
  if (ganze != 0) {
    appendInteger(out, ganze);
    out += ':';
    if (zaehler < 0) zaehler = -zaehler;
  }
  appendInteger(out, zaehler);
  out += '/';
  appendInteger(out, denominator);
}

void appendBig(std::string& out, const QQ& value) {
  const QQView view(value);
  if (value.isInteger()) return appendDigits(out, view.numerator());
  ZZ ganze;
  ZZ zaehler;
  mpz_tdiv_qr(ganze.get(), zaehler.get(), view.numerator(), view.denominator());
  // The sign is printed once, at the beginning.
  if (!ganze.isZero()) {
    appendDigits(out, ganze.get());
    out += ':';
    mpz_abs(zaehler.get(), zaehler.get());
  }
  appendDigits(out, zaehler.get());
  out += '/';
  appendDigits(out, view.denominator());
}

}  // namespace

const char* qqtext::scanPlain(const char* begin, const char* end, QQ& value) {
  const char* position = begin;
  const bool negative = position != end && *position == '-';
  if (position != end && (*position == '-' || *position == '+')) ++position;
  const char* const start = position;
  const Digits whole = takeDigits(position, end, plainDigits);
  // A leading zero means a base other than ten.
  if (whole.count == 0 || (*start == '0' && whole.count > 1)) return nullptr;
  if (position != end && *position >= '0' && *position <= '9') {
    position = scanWide(start, end, value);
    if (position == nullptr) position = scanLong(start, end, value);
    if (position != nullptr && negative) value.negate();
    return position;
  }
  if (position != end && isSeparator(*position) && !opensComment(position, end)) {
    position = scanTail(position, end, whole, value);
    if (position == nullptr) return nullptr;
    if (negative) value.negate();
  } else {
    value = QQ(negative ? -whole.value : whole.value);
  }
  return position;
}

const char* qqtext::scanExponent(const char* begin, const char* end, QQ& mantissa) {
  if (!atExponent(begin, end)) return nullptr;
  const char* position = begin + 1;
  const bool negative = position != end && *position == '-';
  if (position != end && (*position == '-' || *position == '+')) ++position;
  const Digits exponent = takeDigits(position, end, plainDigits);
  if (exponent.count == 0 || exponent.value >= static_cast<std::int64_t>(powersOfTen.size()))
    return nullptr;
  const QQ power(powersOfTen[static_cast<std::size_t>(exponent.value)]);
  if (negative)
    mantissa /= power;
  else
    mantissa *= power;
  return position;
}

QQ QQ::parse(std::string_view text) {
  QQ value;
  const char* const end = text.data() + text.size();
  const char* behind = qqtext::scanPlain(text.data(), end, value);
  if (behind != nullptr && behind != end) behind = qqtext::scanExponent(behind, end, value);
  if (behind == end && !text.empty()) return value;
  return qqtext::parseGeneral(text);
}

template <class Source>
bool readToken(Source& source, QQ& value, TokenKind kind) {
  // The reader of vectors has skipped white space and comments already.
  if (readPlain(source, value, kind)) return true;
  skipWithComments(source);
  if (!readPlain(source, value, kind)) value = QQ::parse(gatherToken(source, kind));
  return true;
}

template bool readToken(TextCursor&, QQ&, TokenKind);
template bool readToken(StreamCursor&, QQ&, TokenKind);

void append(std::string& out, const QQ& value) {
  std::int64_t numerator = 0;
  std::uint32_t denominator = 0;
  if (value.toSmall(numerator, denominator))
    appendSmall(out, numerator, denominator);
  else if (value.isInf())
    out += value.sign() ? "inf" : "-inf";
  else
    appendBig(out, value);
}

std::ostream& operator<<(std::ostream& stream, const QQ& value) {
  std::string text;
  append(text, value);
  return stream << text;
}

std::istream& operator>>(std::istream& stream, QQ& value) {
  StreamCursor source(stream);
  readToken(source, value, TokenKind::problem);
  return stream;
}

}  // namespace starsift
