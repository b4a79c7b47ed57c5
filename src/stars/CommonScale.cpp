#include "stars/CommonScale.h"

#include <algorithm>

#include "numbers/QQStorage.h"

namespace starsift {

namespace {

constexpr std::size_t freeBits = std::size_t{1} << 20;
constexpr std::size_t maxGrowth = 64;

std::size_t bits(mpz_srcptr value) {
  return mpz_sizeinbase(value, 2);
}

/// Maximum number of bits of a scale that multiplies each of the numbers other than 0.
std::size_t scaleLimit(std::span<const QQ> numbers) {
  std::size_t count = 0;
  std::size_t written = 0;
  for (const QQ& number : numbers) {
    if (number.isZero()) continue;
    const QQView view(number);
    written += bits(view.numerator()) + bits(view.denominator());
    ++count;
  }
  return std::max(freeBits, maxGrowth * written) / std::max<std::size_t>(count, 1);
}

}  // namespace

std::optional<ZZ> commonScale(std::span<const QQ> numbers, ZZ multiple) {
  const std::size_t limit = scaleLimit(numbers);
  for (const QQ& number : numbers) {
    if (number.isInteger()) continue;
    multiple = lcm(multiple, number.nenner());
    if (bits(multiple.get()) > limit) return std::nullopt;
  }
  return multiple;
}

}  // namespace starsift
