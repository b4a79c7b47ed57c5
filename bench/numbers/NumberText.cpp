// Texts into numbers and back.
#include <array>
#include <cstdio>
#include <numeric>

#include "Benchmarks.h"
#include "core/NumberTraits.h"
#include "numbers/QQText.h"
#include "support/Register.h"
#include "support/Samples.h"
#include "text/TextCursor.h"

namespace starsift::bench {

namespace {

using benchmark::State;

std::size_t totalSize(const std::vector<std::string>& texts) {
  return std::accumulate(
      texts.begin(), texts.end(), std::size_t{0},
      [](std::size_t sum, const std::string& text) { return sum + text.size(); });
}

void addParse(const std::string& form, const std::string& subject, MakeText make, auto parse) {
  add("parse", form, subject, [texts = texts(make), parse](State& state) {
    for (auto _ : state)
      for (const std::string& text : texts) benchmark::DoNotOptimize(parse(text));
    count(state, texts.size(), totalSize(texts));
  });
}

/// `print(out, number)` appends to a string that is emptied before each number.
template <class Number>
void addPrint(const std::string& form, const std::string& subject, MakeText make, auto print) {
  add("print", form, subject, [values = numbers<Number>(texts(make)), print](State& state) {
    std::string out;
    std::size_t bytes = 0;
    for (auto _ : state) {
      bytes = 0;
      for (const Number& value : values) {
        out.clear();
        print(out, value);
        bytes += out.size();
        benchmark::DoNotOptimize(out.data());
      }
    }
    count(state, values.size(), bytes);
  });
}

dbl_t readStandard(const std::string& text) {
  TextCursor source(text);
  dbl_t value = 0;
  NumberTraits<dbl_t>::read(source, value);
  return value;
}

void printExact(std::string& out, const QQ& value) {
  append(out, value);
}

void printPeerRational(std::string& out, const mpq_class& value) {
  out += value.get_str();
}

void printStandard(std::string& out, dbl_t value) {
  NumberTraits<dbl_t>::append(out, value, fileDigits);
}

void printPeerMachine(std::string& out, dbl_t value) {
  std::array<char, 64> text;
  const int length = std::snprintf(text.data(), text.size(), "%.*Lg", fileDigits, value);
  out.append(text.data(), static_cast<std::size_t>(length));
}

/// Forms that GMP knows too.
void addRational(const std::string& form, MakeText make) {
  addParse(form, "QQ", make, fromText<QQ>);
  addParse(form, "peer_mpq", make, fromText<mpq_class>);
  addPrint<QQ>(form, "QQ", make, printExact);
  addPrint<mpq_class>(form, "peer_mpq", make, printPeerRational);
}

/// Forms that machine numbers have.
void addMachineParse(const std::string& form, MakeText make) {
  addParse(form, "QQ", make, fromText<QQ>);
  addParse(form, "long_double", make, readStandard);
  addParse(form, "peer_strtold", make, fromText<dbl_t>);
}

void addMachinePrint(const std::string& form, MakeText make) {
  addPrint<dbl_t>(form, "long_double", make, printStandard);
  addPrint<dbl_t>(form, "peer_snprintf", make, printPeerMachine);
}

}  // namespace

void registerNumberText() {
  addRational("integer_3_digits", shortInteger);
  addRational("integer_18_digits", longInteger);
  addRational("integer_30_digits", thirtyDigits);
  addRational("integer_300_digits", hugeInteger);
  addRational("fraction", fraction);
  addRational("fraction_30_digits", longFraction);
  addMachineParse("machine_integer", shortInteger);
  addMachineParse("decimal", decimal);
  addMachineParse("exponent", exponent);
  addMachinePrint("machine_integer", shortInteger);
  addMachinePrint("decimal", decimal);
}

}  // namespace starsift::bench
