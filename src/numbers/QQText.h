// The text of QQ: printing, and reading from a string or from a source of
// characters. Reading a printed value returns the same value.
//
// A value is printed as "inf", "-inf" or a mixed number: "0", "-3", "2:1/2", "-1/3".
// The reader also accepts
//
//   12.25  12,25     decimals; only the digits directly after the point count, and
//                    digits other than 0 are required: "1.0" is malformed
//   7/4  -1/-2       fractions, in lowest terms or not
//   0x1F  0b11  017  integers with a prefix that means another base to GMP
//   1.5e2  1e1/2     exponents: in strings, and in tokens of the kind `record`
//
// Malformed text is fatal: "QQ: parse error1" (empty), "QQ: parse error2" and "...3"
// (an "i" that doesn't begin "inf"), "QQ: malformed number1" and "...2" (no proper
// fraction after ":"), "QQ: division by zero1" and "QQ: exponent out of range" (above
// 100000 in magnitude); QQ::canonicalise() reports a sign at the wrong place. Digits
// that GMP rejects, and missing ones as in ".5", throw
// std::invalid_argument("mpz_set_str").
#pragma once

#include <string>
#include <string_view>

#include "numbers/QQ.h"
#include "text/TextCursor.h"

namespace starsift {

/// The characters of a number token in a source: digits and "+,-./:" in problem
/// files, also "e" and "E" in the records of stars.
enum class TokenKind { problem, record };

/// Returns the text without leading white space, and if it has an exponent, the text of
/// its value: "150" for "1.5e2". Text ends at its first zero character.
std::string expandExponent(std::string_view text);

/// Skips white space and comments and reads one number token. A "/" that opens a comment
/// ends the token. A following "i" is consumed, and so is as much of "nf" as follows it;
/// only a complete "inf" is part of the token. An empty token is fatal, so the result is
/// always true; readComponents() requires a result.
template <class Source>
bool readToken(Source& source, QQ& value, TokenKind kind);

/// Appends the text of `value`.
void append(std::string& out, const QQ& value);

namespace qqtext {

/// The fast part of QQ::parse() for plain text: an optional sign before decimal numbers
/// of up to 18 digits in all, alone, with decimal places or as a fraction, or before
/// an integer of up to 90 digits, alone or followed by a short proper fraction, or before a
/// fraction of integers of up to 38 digits. Returns the position after the number, or null for any
/// other text.
const char* scanPlain(const char* begin, const char* end, QQ& value);

/// Multiplies a mantissa by the power of ten of an exponent "e5", "E-18" of up to 18 at `begin`.
/// Returns the position after it, or null, and the mantissa is unchanged, if there is none.
const char* scanExponent(const char* begin, const char* end, QQ& mantissa);

/// QQ::parse() by the complete grammar.
QQ parseGeneral(std::string_view text);

}  // namespace qqtext

}  // namespace starsift
