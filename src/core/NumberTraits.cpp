#include "core/NumberTraits.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>

#include "system/Exceptions.h"

namespace starsift {

namespace {

bool isDigit(int c) {
  return c >= '0' && c <= '9';
}

template <class Source>
void takeDigits(Source& source, std::string& token) {
  while (isDigit(source.peek())) {
    token += static_cast<char>(source.peek());
    source.take();
  }
}

template <class Source>
void takeSign(Source& source, std::string& token) {
  if (source.peek() != '+' && source.peek() != '-') return;
  token += static_cast<char>(source.peek());
  source.take();
}

/// Reads the characters that stream extraction of a floating number accepts: sign, digits,
/// point, digits, exponent. No infinity, no hexadecimal form.
template <class Source>
std::string decimalToken(Source& source) {
  std::string token;
  skipWhiteSpace(source);
  takeSign(source, token);
  takeDigits(source, token);
  if (source.peek() == '.') {
    token += '.';
    source.take();
    takeDigits(source, token);
  }
  if ((source.peek() == 'e' || source.peek() == 'E') && !token.empty()) {
    token += 'e';
    source.take();
    takeSign(source, token);
    takeDigits(source, token);
  }
  return token;
}

}  // namespace

bool NumberTraits<long double>::overflowCheck(long double v) {
  const long double magnitude = std::fabs(v);
  if (!(magnitude > safeBound) || std::isinf(magnitude)) return false;
  if (magnitude <= fatalBound) return true;
  throw FatalPrecisionException(
      "Uncorrectable precision overflow detected - probably more overflow / precision checks are "
      "needed ...");
}

template <class Source>
bool NumberTraits<long double>::read(Source& source, long double& value) {
  const std::string token = decimalToken(source);
  char* end = nullptr;
  value = std::strtold(token.c_str(), &end);
  return !token.empty() && *end == '\0' && !std::isinf(value);
}

template bool NumberTraits<long double>::read(TextCursor&, long double&);
template bool NumberTraits<long double>::read(StreamCursor&, long double&);

void NumberTraits<long double>::append(std::string& out, long double value, int digits) {
  std::int64_t integer = 0;
  if (writtenAsInteger(value, digits, integer)) {
    appendInteger(out, integer);
    return;
  }
  std::array<char, 64> text;
  char* const begin = text.data();
  const auto length =
      static_cast<std::size_t>(std::snprintf(begin, text.size(), "%.*Lg", digits, value));
  if (length < text.size()) {
    out.append(begin, length);
    return;
  }
  const std::size_t before = out.size();
  out.resize(before + length + 1);  // and the terminating zero
  std::snprintf(out.data() + before, length + 1, "%.*Lg", digits, value);
  out.resize(before + length);
}

template <class I>
template <class Source>
bool IntegerTraits<I>::read(Source& source, I& value) {
  std::string token;
  skipWhiteSpace(source);
  takeSign(source, token);
  takeDigits(source, token);
  const char* const begin = token.data() + (token.starts_with('+') ? 1 : 0);
  const char* const end = token.data() + token.size();
  const auto result = std::from_chars(begin, end, value);
  return result.ec == std::errc() && result.ptr == end;
}

template bool IntegerTraits<long>::read(TextCursor&, long&);
template bool IntegerTraits<long>::read(StreamCursor&, long&);
template bool IntegerTraits<short>::read(TextCursor&, short&);
template bool IntegerTraits<short>::read(StreamCursor&, short&);

}  // namespace starsift
