// The text of exact numbers in model and solution files.
#pragma once

#include <string>

#include "numbers/QQ.h"

namespace starsift {

/// "inf", "-inf", the decimal of a number that has an end ("-0.125"), else a fraction ("1/3"). Read
/// by scanNumber() and in .opt files as the same number.
std::string numberText(const QQ& value);

/// Appends numberText().
void appendNumber(std::string& out, const QQ& value);

/// The same, but a number whose decimal has no end is rounded to 20 significant digits: programs
/// that compute in doubles read "1/3" as 1.
std::string decimalText(const QQ& value);

/// A magnitude with two significant digits for people: "9e-13", "0.25", "1.2e+30"; "0" for 0.
std::string shortText(const QQ& value);

/// True if a double holds the number exactly.
bool isDouble(const QQ& value);

}  // namespace starsift
