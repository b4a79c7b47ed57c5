#include "support/oracles/ReferenceNumberText.h"

#include <cctype>

namespace starsift::test {

namespace {

struct Refusal {
  std::string message;
};

/// A number as its text gives it: sign, integer part, fraction.
struct Mixed {
  bool infinite = false;
  bool positive = true;
  mpz_class ganze = 0;
  mpz_class zaehler = 0;
  mpz_class nenner = 1;

  void canonicalise() {
    if (ganze < 0 || zaehler < 0 || nenner < 0)
      throw Refusal{"A ganze / zaehler / nenner sign has been set, though it should not be used"};
    if (infinite) return;
    ganze += zaehler / nenner;
    zaehler %= nenner;
    const mpz_class common = gcd(zaehler, nenner);
    zaehler /= common;
    nenner /= common;
    if (ganze == 0 && zaehler == 0) positive = true;
  }
  mpq_class value() const {
    const mpq_class size = ganze + mpq_class(zaehler, nenner);
    return positive ? size : mpq_class(-size);
  }
};

mpz_class toInteger(const std::string& text) {
  mpz_class result;
  if (result.set_str(text, 0) != 0) throw Refusal{"mpz_set_str"};
  return result;
}

mpz_class tenTo(unsigned long exponent) {
  mpz_class result;
  mpz_ui_pow_ui(result.get_mpz_t(), 10, exponent);
  return result;
}

Mixed parse(std::string text);

std::string skipSpace(std::string text) {
  while (!text.empty() && std::isspace(static_cast<unsigned char>(text[0])) != 0) text.erase(0, 1);
  return text;
}

std::size_t takeZeros(std::string& text) {
  std::size_t zeros = 0;
  for (; !text.empty() && text[0] == '0'; ++zeros) text.erase(0, 1);
  return zeros;
}

Mixed fromRational(const mpq_class& value) {
  Mixed result;
  result.positive = value >= 0;
  const mpq_class size = abs(value);
  result.zaehler = size.get_num();
  result.nenner = size.get_den();
  result.canonicalise();
  return result;
}

Mixed parseScaled(const std::string& text, std::size_t letter) {
  Mixed mantissa = parse(text.substr(0, letter));
  std::string rest = text.substr(letter + 1);
  const bool negative = !rest.empty() && rest[0] == '-';
  if (!rest.empty() && (rest[0] == '-' || rest[0] == '+')) rest.erase(0, 1);
  takeZeros(rest);
  if (rest.empty()) return mantissa;
  const Mixed parsed = parse(rest);
  const mpq_class exponent = negative ? mpq_class(-parsed.value()) : parsed.value();
  if (parsed.infinite || abs(exponent) > 100000) throw Refusal{"QQ: exponent out of range"};
  if (exponent.get_den() != 1) throw Refusal{"fraction"};
  if (mantissa.infinite) return mantissa;
  const mpq_class power(tenTo(mpz_class(abs(exponent.get_num())).get_ui()));
  const mpq_class value = mantissa.value();
  return fromRational(exponent < 0 ? mpq_class(value / power) : mpq_class(value * power));
}

void parseMixedTail(Mixed& result, const std::string& text, std::size_t separator) {
  result.ganze = toInteger(text.substr(0, separator));
  std::string rest = text.substr(separator + 1);
  const std::size_t zeros = takeZeros(rest);
  const Mixed tail = parse(rest);
  if (text[separator] == ':') {
    if (zeros > 0 || !tail.positive) throw Refusal{"QQ: malformed number1"};
    if (tail.ganze != 0) throw Refusal{"QQ: malformed number2"};
    result.zaehler = tail.zaehler;
    result.nenner = tail.nenner;
    return;
  }
  result.zaehler = tail.ganze;
  while (result.zaehler != 0 && result.zaehler % 10 == 0) result.zaehler /= 10;
  result.nenner = tenTo(result.zaehler.get_str().size() + zeros);
}

void parseFraction(Mixed& result, const std::string& text, std::size_t separator) {
  result.nenner = toInteger(text.substr(separator + 1));
  if (result.nenner == 0) throw Refusal{"QQ: division by zero1"};
  result.zaehler = toInteger(text.substr(0, separator));
  if (result.zaehler < 0) result.positive = !result.positive;
  if (result.nenner < 0) result.positive = !result.positive;
  result.zaehler = abs(result.zaehler);
  result.nenner = abs(result.nenner);
}

void parsePlain(Mixed& result, const std::string& text) {
  if (text[0] != 'i') {
    result.ganze = toInteger(text);
    return;
  }
  if (text.size() < 2 || text[1] != 'n') throw Refusal{"QQ: parse error2"};
  if (text.size() < 3 || text[2] != 'f') throw Refusal{"QQ: parse error3"};
  result.infinite = true;
  result.ganze = 1;
}

Mixed parse(std::string text) {
  text = skipSpace(text);
  const std::size_t letter = text.find_first_of("eE");
  if (letter != std::string::npos) return parseScaled(text, letter);
  Mixed result;
  result.positive = text.empty() || text[0] != '-';
  if (!text.empty() && (text[0] == '-' || text[0] == '+')) text.erase(0, 1);
  if (text.empty()) throw Refusal{"QQ: parse error1"};
  const std::size_t separator = text.find_first_of(",./:");
  if (separator == std::string::npos)
    parsePlain(result, text);
  else if (text[separator] == '/')
    parseFraction(result, text, separator);
  else
    parseMixedTail(result, text, separator);
  result.canonicalise();
  return result;
}

}  // namespace

NumberOutcome referenceParse(const std::string& text) {
  NumberOutcome outcome;
  try {
    const Mixed result = parse(text);
    if (result.infinite)
      outcome.infinity = result.positive ? 1 : -1;
    else
      outcome.value = result.value();
  } catch (const Refusal& refusal) {
    outcome.refusal = refusal.message;
  }
  return outcome;
}

}  // namespace starsift::test
