// The numbers of models and solution files, exactly: "3", "-.5", "5.", "1E2", "1.0D3", "1/3".
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "numbers/QQ.h"

namespace starsift {

/// A number as it was written, before any arithmetic.
struct NumberForm {
  bool isNegative = false;
  /// The digits before and after the point; the text of the numerator of a fraction.
  std::string_view integer;
  std::string_view decimals;
  /// The digits behind "/", empty unless the number is a fraction.
  std::string_view denominator;
  /// The power of ten of an exponent, 0 without one.
  std::int64_t exponent = 0;
  bool hasExponent = false;
  /// Characters of the number.
  std::size_t length = 0;
};

/// The largest exponent in magnitude that a number may have.
constexpr std::int64_t largestExponent = 100000;

/// The letters that begin an exponent; the two of Fortran belong to old files.
constexpr std::string_view exponentLetters = "eEdD";

/// The longest number that `text` begins with, if there is one; its exponent, beginning with one of
/// `letters`, belongs to it only if it has digits. Exponents beyond largestExponent are returned
/// as largestExponent + 1 or its negative.
std::optional<NumberForm> scanNumber(std::string_view text,
                                     std::string_view letters = exponentLetters);

/// The exact values of numbers of one file. Leading zeros mean nothing, so "010" is ten. A short
/// text such as 1e99999 stands for many digits, so that a small file could ask for all memory there
/// is; the reader counts such digits and refuses the number that exceeds a fixed total.
class NumberReader {
 public:
  /// The value of all of `text`. ModelError at `line` if it isn't a number, or not one
  /// that can be held.
  QQ read(std::string_view text, std::size_t line);

  /// The value of a scanned number.
  QQ value(const NumberForm& form, std::string_view text, std::size_t line);

 private:
  void count(const NumberForm& form, std::string_view text, std::size_t line);

  /// Digits of numbers that are far longer than their texts.
  std::uint64_t expandedDigits_ = 0;
};

/// True for the words "inf" and "infinity" in any case, with or without a sign; `isPositive` is
/// then set.
bool isInfinityWord(std::string_view text, bool& isPositive);

/// The value of all of `text`; nothing if it isn't a number.
std::optional<QQ> parseNumber(std::string_view text);

}  // namespace starsift
