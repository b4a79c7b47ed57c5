// The text of QQ: printing, and reading from a string or from a source of
// characters. What is printed reads back as the same value.
//
// Printed are "inf", "-inf" or a mixed number: "0", "-3", "2:1/2", "-1/3".
// Read are besides
//
//   12.25  12,25     decimals; only the digits right behind the point count, and a
//                    tail of zeros only has none: "1.0" is malformed
//   7/4  -1/-2       fractions that need not be reduced
//   0x1F  0b11  017  integers in the bases that GMP tells from the prefix
//   1.5e2  1e1/2     exponents: in strings, and in tokens of the kind `record`
//
// Malformed text is fatal: "QQ: parse error1" (nothing there), "QQ: parse error2"
// and "...3" (an "i" that doesn't begin "inf"), "QQ: malformed number1" and "...2"
// (the tail behind ":" is no proper fraction), "QQ: division by zero1" and "QQ:
// exponent out of range" (beyond 100000 in magnitude); a stray sign is reported by
// QQ::canonicalise(). Digits that GMP refuses, also none at all as in ".5", throw
// std::invalid_argument("mpz_set_str").
#pragma once

#include <string>
#include <string_view>

#include "numbers/QQ.h"
#include "text/TextCursor.h"

namespace starsift {

/// Which characters make up a number token of a source: digits and "+,-./:" in
/// problem files, "e" and "E" too in the records of stars.
enum class TokenKind { problem, record };

/// The text without white space in front and, where it has an exponent, with that
/// worked out: "1.5e2" gives "150". Text ends at its first zero character.
std::string expandExponent(std::string_view text);

/// Reads one number token behind white space and comments. A "/" that opens a
/// comment ends the token. An "i" at its end is taken, and "nf" behind it as far
/// as it is there; whole, "inf" belongs to the token. An empty token is fatal, so
/// the result is always true, as readComponents() wants it.
template <class Source>
bool readToken(Source& source, QQ& value, TokenKind kind);

/// Appends the printed form.
void append(std::string& out, const QQ& value);

namespace qqtext {

/// The roads of QQ::parse() for plain text: an optional sign and decimal numbers
/// of up to 18 digits in all, alone, with a decimal tail, or as fraction; and
/// integers of up to 90 digits, alone or in front of a short proper fraction. Gives
/// the position behind the number, or null where the text is anything else.
const char* scanPlain(const char* begin, const char* end, QQ& value);

/// QQ::parse() without the roads for plain text.
QQ parseGeneral(std::string_view text);

}  // namespace qqtext

}  // namespace starsift
