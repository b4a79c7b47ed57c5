#include "numbers/Gcd.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>

#include "system/Failure.h"

namespace starsift {

namespace {

/// Both numbers are natural and fit into a machine word, whose division is a hundred times as fast
/// as that of std::fmod().
bool areWords(long double a, long double b) {
  constexpr long double limit = 0x1p64L;
  return a < limit && b < limit && std::trunc(a) == a && std::trunc(b) == b;
}

}  // namespace

QQ gcdQQ(const QQ& a, const QQ& b) {
  if (a.isInf() || b.isInf()) fail("INF - INF is not defined");
  std::int64_t first = 0;
  std::int64_t second = 0;
  if (a.toInt64(first) && b.toInt64(second)) return QQ(std::gcd(first, second));
  // In lowest terms the common divisor of a/c and b/d is gcd(a, b) / lcm(c, d).
  return QQ(gcd(a.numerator(), b.numerator()), lcm(a.nenner(), b.nenner()));
}

long double gcdQQ(long double a, long double b) {
  if (!std::isfinite(a) || !std::isfinite(b)) return std::numeric_limits<long double>::quiet_NaN();
  a = std::fabs(a);
  b = std::fabs(b);
  if (areWords(a, b)) return std::gcd(static_cast<std::uint64_t>(a), static_cast<std::uint64_t>(b));
  while (b != 0) {
    const long double rest = std::fmod(a, b);
    a = b;
    b = rest;
  }
  return a;
}

QQ lcmQQ(const QQ& a, const QQ& b) {
  return a * b / gcdQQ(a, b);
}

long double lcmQQ(long double a, long double b) {
  return a * b / gcdQQ(a, b);
}

}  // namespace starsift
