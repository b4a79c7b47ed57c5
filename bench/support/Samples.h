// Seeded numbers of the kinds that files hold.
#pragma once

#include <gmpxx.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "numbers/Conversion.h"

namespace starsift::bench {

using Random = std::mt19937_64;

/// Numbers in one sample: few enough for the nearest caches.
constexpr std::size_t sampleSize = 512;

/// A number from 0 to bound - 1.
inline std::uint64_t below(Random& random, std::uint64_t bound) {
  return random() % bound;
}

/// `count` decimal digits, the first one not 0.
std::string digits(Random& random, std::size_t count);

/// Makes the text of one number.
using MakeText = std::string (*)(Random&);

// Up to three digits and a sign; 18 digits; 30 digits.
std::string shortInteger(Random& random);
std::string longInteger(Random& random);
std::string thirtyDigits(Random& random);
/// 300 digits.
std::string hugeInteger(Random& random);
/// Near 2^61, so that sums stay machine integers and products don't.
std::string edgeInteger(Random& random);
/// 7/3, not always in lowest terms.
std::string fraction(Random& random);
/// A fraction of two numbers with 30 digits.
std::string longFraction(Random& random);
/// 12.25
std::string decimal(Random& random);
/// 1.25e3
std::string exponent(Random& random);

/// sampleSize texts, always the same ones.
std::vector<std::string> texts(MakeText make);

/// The number of a text of one of the kinds above, as each type reads it.
template <class Number>
Number fromText(const std::string& text);
template <>
QQ fromText<QQ>(const std::string& text);
template <>
mpq_class fromText<mpq_class>(const std::string& text);
template <>
dbl_t fromText<dbl_t>(const std::string& text);
template <>
long fromText<long>(const std::string& text);

template <class Number>
std::vector<Number> numbers(const std::vector<std::string>& texts) {
  std::vector<Number> result;
  for (const std::string& text : texts) result.push_back(fromText<Number>(text));
  return result;
}

}  // namespace starsift::bench
