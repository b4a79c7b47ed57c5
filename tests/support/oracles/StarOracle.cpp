#include "support/oracles/StarOracle.h"

#include <cstdio>
#include <cstdlib>
#include <tuple>

namespace starsift::oracle {

mpz_class powerOfTen(unsigned long exponent) {
  mpz_class result;
  mpz_ui_pow_ui(result.get_mpz_t(), 10, exponent);
  return result;
}

mpq_class product(const Point& row, const Point& x) {
  mpq_class sum = 0;
  for (std::size_t j = 0; j < row.size(); ++j) sum += row[j] * x[j];
  return sum;
}

bool between(const Bound& lower, const mpq_class& value, const Bound& upper) {
  if (lower.infinite > 0 || upper.infinite < 0) return false;
  return (lower.infinite != 0 || lower.value <= value) &&
         (upper.infinite != 0 || value <= upper.value);
}

namespace {

mpq_class ratio(const mpz_class& numerator, const mpz_class& denominator) {
  mpq_class result(numerator, denominator);
  result.canonicalize();
  return result;
}

mpq_class tolerance() {
  return ratio(1, powerOfTen(9));
}

/// value - k * modulus, k towards 0.
mpq_class remainder(const mpq_class& value, const mpq_class& modulus) {
  const mpq_class quotient = value / modulus;
  const mpz_class whole = quotient.get_num() / quotient.get_den();
  return value - modulus * mpq_class(whole);
}

bool holds(const Equation& equation, const Point& x) {
  mpq_class difference = product(equation.row, x) - equation.value;
  if (abs(equation.modulus) > tolerance()) difference = remainder(difference, equation.modulus);
  return abs(difference) <= tolerance();
}

void addTarget(const Target& target, const Point& x, Verdict& verdict) {
  const mpq_class value = product(target.row, x);
  verdict.targetValues.push_back(value);
  if (target.goal.infinite != 0) {
    verdict.targetNorm -= target.goal.infinite * value;
    return;
  }
  const mpq_class distance = abs(value - target.goal.value);
  verdict.targetNorm += distance;
  verdict.slackNorm += distance;
}

std::string boundText(const Bound& bound) {
  if (bound.infinite != 0) return bound.infinite > 0 ? "inf" : "-inf";
  return fractionText(bound.value);
}

template <class Items, class TextOf>
std::string listText(const Items& items, TextOf textOf) {
  std::string text = "[ ";
  for (const auto& item : items) text += textOf(item) + " ";
  return text + "]\n";
}

/// Position behind "[ a b ]", or npos.
std::size_t parsePoint(const std::string& line, std::size_t position, Point& point) {
  if (line.compare(position, 2, "[ ") != 0) return std::string::npos;
  position += 2;
  while (position < line.size() && line[position] != ']') {
    const std::size_t end = line.find(' ', position);
    if (end == std::string::npos) return end;
    point.push_back(parseNumber(std::string_view(line).substr(position, end - position)));
    position = end + 1;
  }
  return position + 1;
}

std::vector<std::string> fieldsOf(const std::string& line) {
  std::vector<std::string> fields;
  std::size_t start = 0;
  for (std::size_t bar = line.find(" | "); bar != std::string::npos;
       bar = line.find(" | ", start)) {
    fields.push_back(line.substr(start, bar - start));
    start = bar + 3;
  }
  fields.push_back(line.substr(start));
  return fields;
}

std::vector<unsigned long> versionNumbers(const std::string& text) {
  std::vector<unsigned long> numbers;
  const char* position = text.c_str();
  while (*position != '\0') {
    char* end = nullptr;
    numbers.push_back(std::strtoul(position, &end, 10));
    position = *end == '.' ? end + 1 : end;
  }
  numbers.resize(4);
  return numbers;
}

}  // namespace

std::optional<Verdict> judge(const Problem& problem, const Point& x) {
  for (std::size_t j = 0; j < x.size(); ++j)
    if (!between(problem.lower[j], x[j], problem.upper[j])) return std::nullopt;
  for (const Equation& equation : problem.equations)
    if (!holds(equation, x)) return std::nullopt;
  for (const Inequation& row : problem.inequations)
    if (!between(row.lower, product(row.row, x), row.upper)) return std::nullopt;
  Verdict verdict;
  for (const Target& target : problem.targets) addTarget(target, x, verdict);
  return verdict;
}

std::string fractionText(const mpq_class& value) {
  return value.get_str();
}

std::string mixedText(const mpq_class& value) {
  const mpz_class magnitude = abs(value.get_num());
  const mpz_class whole = magnitude / value.get_den();
  const mpz_class rest = magnitude % value.get_den();
  std::string text = sgn(value) < 0 ? "-" : "";
  if (rest == 0) return text + whole.get_str();
  if (whole != 0) text += whole.get_str() + ":";
  return text + rest.get_str() + "/" + value.get_den().get_str();
}

std::optional<std::string> sixDigits(const mpq_class& value) {
  constexpr unsigned long mostPlaces = 40;
  unsigned long places = 0;
  mpq_class scaled = value;
  for (; scaled.get_den() != 1; ++places, scaled *= 10)
    if (places == mostPlaces) return std::nullopt;
  if (abs(scaled) >= powerOfTen(18)) return std::nullopt;
  const std::string decimal = scaled.get_num().get_str() + "e-" + std::to_string(places);
  char text[64];
  std::snprintf(text, sizeof text, "%.6Lg", std::strtold(decimal.c_str(), nullptr));
  return text;
}

mpq_class parseNumber(std::string_view view) {
  std::string text(view);
  const bool negative = text.starts_with('-');
  if (negative) text.erase(0, 1);
  mpq_class value = 0;
  if (const std::size_t colon = text.find(':'); colon != std::string::npos) {
    value = mpq_class(text.substr(colon + 1)) + mpq_class(text.substr(0, colon));
  } else if (text.find('/') != std::string::npos) {
    value = mpq_class(text);
  } else {
    const std::size_t e = text.find('e');
    long exponent = e == std::string::npos ? 0 : std::atol(text.c_str() + e + 1);
    std::string digits = text.substr(0, e);
    if (const std::size_t point = digits.find('.'); point != std::string::npos) {
      exponent -= static_cast<long>(digits.size() - point - 1);
      digits.erase(point, 1);
    }
    value = mpz_class(digits, 10);
    const mpz_class power = powerOfTen(static_cast<unsigned long>(std::labs(exponent)));
    value = exponent < 0 ? mpq_class(value / power) : mpq_class(value * power);
  }
  value.canonicalize();
  return negative ? mpq_class(-value) : value;
}

std::string pointText(const Point& point) {
  std::string text = listText(point, fractionText);
  text.pop_back();
  return text;
}

std::string problemText(const Problem& problem) {
  const auto row = [](const auto& item) { return pointText(item.row); };
  const auto& [targets, equations, inequations, lower, upper, decimals, thresholds] = problem;
  std::string text =
      listText(targets, [](const Target& target) { return boundText(target.goal); }) +
      (thresholds.empty() ? "" : "= " + listText(thresholds, boundText)) + listText(targets, row) +
      listText(equations, row) +
      listText(equations, [](const Equation& item) { return fractionText(item.value); }) +
      listText(equations, [](const Equation& item) { return fractionText(item.modulus); }) +
      listText(inequations, row) +
      listText(inequations, [](const Inequation& item) { return boundText(item.lower); }) +
      listText(inequations, [](const Inequation& item) { return boundText(item.upper); });
  std::vector<unsigned> places = decimals;
  places.resize(lower.size());
  text += listText(places, [](unsigned count) { return std::to_string(count); });
  return text + listText(lower, boundText) + listText(upper, boundText);
}

std::string recordText(const Record& record) {
  return pointText(record.x) + " | " + fractionText(record.targetNorm) + " | " +
         pointText(record.targetValues) + " | " + fractionText(record.slackNorm) + " | " +
         std::to_string(record.time) + " | " + record.params + " | " + record.version;
}

std::optional<Record> parseRecord(const std::string& line) {
  const std::vector<std::string> fields = fieldsOf(line);
  if (fields.size() < 6 || fields.size() > 7) return std::nullopt;
  Record record;
  record.xText = fields[0];
  if (parsePoint(fields[0], 0, record.x) != fields[0].size()) return std::nullopt;
  record.targetNorm = parseNumber(fields[1]);
  if (parsePoint(fields[2], 0, record.targetValues) != fields[2].size()) return std::nullopt;
  record.slackNorm = parseNumber(fields[3]);
  record.time = std::atol(fields[4].c_str());
  record.params = fields[5];
  if (fields.size() == 7) record.version = fields[6];
  return record;
}

bool inOrder(const Record& first, const Record& second) {
  const auto key = [](const Record& record) {
    return std::tuple(record.targetNorm, record.slackNorm, static_cast<unsigned long>(record.time));
  };
  if (key(first) != key(second)) return key(first) < key(second);
  const auto versions = std::pair(versionNumbers(first.version), versionNumbers(second.version));
  if (versions.first != versions.second) return versions.first > versions.second;
  return std::tie(first.xText, first.params) < std::tie(second.xText, second.params);
}

}  // namespace starsift::oracle
