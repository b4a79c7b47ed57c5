#include "core/NumberTraits.h"

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>

#include "core/Exceptions.h"

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

/// Takes what stream extraction of a floating number takes: sign, digits, point,
/// digits, exponent. No infinity, no hexadecimal form.
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

/// Magnitude below which long double holds every integer and the text of an
/// integer value is its plain digits.
constexpr std::array<long double, 19> powersOfTen = {
    1e0L,  1e1L,  1e2L,  1e3L,  1e4L,  1e5L,  1e6L,  1e7L,  1e8L, 1e9L,
    1e10L, 1e11L, 1e12L, 1e13L, 1e14L, 1e15L, 1e16L, 1e17L, 1e18L};

}  // namespace

bool NumberTraits<long double>::overflows(long double v) {
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
  std::array<char, 64> text;
  char* const begin = text.data();
  char* const end = begin + text.size();
  if (digits >= 0 && digits <= 18 &&
      std::fabs(value) < powersOfTen[static_cast<std::size_t>(digits)]) {
    const auto integer = static_cast<std::int64_t>(value);
    if (static_cast<long double>(integer) == value && (integer != 0 || !std::signbit(value))) {
      out.append(begin, std::to_chars(begin, end, integer).ptr);
      return;
    }
  }
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
