#include "support/Samples.h"

#include <cstdlib>

namespace starsift::bench {

std::string digits(Random& random, std::size_t count) {
  std::string text(1, static_cast<char>('1' + below(random, 9)));
  while (text.size() < count) text += static_cast<char>('0' + below(random, 10));
  return text;
}

std::string shortInteger(Random& random) {
  std::string text = digits(random, 1 + below(random, 3));
  if (below(random, 2) == 0) text.insert(text.begin(), '-');
  return text;
}

std::string longInteger(Random& random) {
  return digits(random, 18);
}

std::string thirtyDigits(Random& random) {
  return digits(random, 30);
}

std::string hugeInteger(Random& random) {
  return digits(random, 300);
}

std::string edgeInteger(Random& random) {
  return std::to_string((std::uint64_t{1} << 61U) - 1 - below(random, 1000000));
}

std::string fraction(Random& random) {
  return digits(random, 2) + '/' + digits(random, 1);
}

std::string longFraction(Random& random) {
  return digits(random, 30) + '/' + digits(random, 30);
}

std::string decimal(Random& random) {
  // The last digit is not 0: the program takes "1.0" for malformed.
  return digits(random, 2) + '.' + digits(random, 1) + digits(random, 1);
}

std::string exponent(Random& random) {
  return digits(random, 1) + '.' + digits(random, 1) + "e" + digits(random, 1);
}

std::vector<std::string> texts(MakeText make) {
  Random random(1);
  std::vector<std::string> result(sampleSize);
  for (std::string& text : result) text = make(random);
  return result;
}

template <>
QQ fromText<QQ>(const std::string& text) {
  return QQ::parse(text);
}

template <>
mpq_class fromText<mpq_class>(const std::string& text) {
  mpq_class value(text, 10);
  value.canonicalize();
  return value;
}

template <>
dbl_t fromText<dbl_t>(const std::string& text) {
  return std::strtold(text.c_str(), nullptr);
}

template <>
long fromText<long>(const std::string& text) {
  return std::strtol(text.c_str(), nullptr, 10);
}

}  // namespace starsift::bench
