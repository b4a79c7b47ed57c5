// NumberTraits<QQ>, which QQ.h declares.
#include "numbers/QQStorage.h"
#include "numbers/QQText.h"

namespace starsift {

const QQ& NumberTraits<QQ>::tolerance() {
  static const QQ value(1, 1'000'000'000);
  return value;
}

bool NumberTraits<QQ>::fractionIsZero(const QQ& v) {
  return abs(v) <= tolerance();
}

bool NumberTraits<QQ>::fractionsEqual(const QQ& a, const QQ& b) {
  // Different integers are at least 1 apart.
  if (a.isInteger() && b.isInteger()) return false;
  return abs(a - b) <= tolerance();
}

QQ NumberTraits<QQ>::remainder(const QQ& a, const QQ& b) {
  std::int64_t dividend = 0;
  std::int64_t divisor = 0;
  if (a.toInt64(dividend) && b.toInt64(divisor) && divisor != 0) return QQ(dividend % divisor);
  QQ result(a);
  subtractProduct(result, trunc(a / b), b);
  return result;
}

template <class Source>
bool NumberTraits<QQ>::read(Source& source, QQ& value) {
  return readToken(source, value, TokenKind::problem);
}

template bool NumberTraits<QQ>::read(TextCursor&, QQ&);
template bool NumberTraits<QQ>::read(StreamCursor&, QQ&);

void NumberTraits<QQ>::append(std::string& out, const QQ& value, int /*digits*/) {
  starsift::append(out, value);
}

std::size_t NumberTraits<QQ>::fractionHash(const QQ& value) {
  constexpr std::size_t multiplier = 0x9E3779B97F4A7C15U;
  const QQView view(value);
  std::size_t result = value.isInf() ? 1 : 0;
  const auto mix = [&result](std::size_t part) {
    result = (result ^ part) * multiplier;
    result ^= result >> 32;
  };
  mix(static_cast<std::size_t>(mpz_sgn(view.numerator())));
  for (std::size_t i = 0; i < mpz_size(view.numerator()); ++i)
    mix(mpz_getlimbn(view.numerator(), static_cast<mp_size_t>(i)));
  for (std::size_t i = 0; i < mpz_size(view.denominator()); ++i)
    mix(mpz_getlimbn(view.denominator(), static_cast<mp_size_t>(i)));
  return result;
}

}  // namespace starsift
