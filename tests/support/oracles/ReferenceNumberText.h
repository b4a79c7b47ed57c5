// The grammar of number text said as plainly as possible: recursive, with no roads
// for common cases, on GMP's own classes. Slow, and deep where the text is.
#pragma once

#include <gmpxx.h>

#include <string>

namespace starsift::test {

/// What becomes of a text: a finite number, an infinity, or a refusal.
struct NumberOutcome {
  std::string refusal;  // message of the report or exception; empty: there is a number
  int infinity = 0;     // +1 or -1 for an infinity
  mpq_class value;
};

/// Texts whose exponents are fractions are not covered: the refusal is "fraction".
NumberOutcome referenceParse(const std::string& text);

}  // namespace starsift::test
