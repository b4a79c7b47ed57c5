// Words of model files: comparison without case, quotation in reports.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace starsift {

/// Letters A to Z as a to z; all other bytes as they are.
char lowered(char c);

bool equalsInAnyCase(std::string_view a, std::string_view b);

/// `text` of an input as a terminal may show it: bytes of control characters (C0, DEL and C1), and
/// those that aren't UTF-8, as "\x1b"; all others as they are.
std::string escaped(std::string_view text);

/// escaped(), cut with "..." after 60 characters, of which an escape has four.
std::string excerpt(std::string_view text);

/// excerpt() in quotation marks.
std::string inQuotes(std::string_view text);

/// "1 row", "2 rows".
std::string counted(std::size_t count, std::string_view noun);

/// `text` without blanks, tabs, carriage returns, form feeds and vertical tabs at its ends.
std::string_view trimmed(std::string_view text);

/// Removes the next word, up to white space, from the front of `text` and returns it; empty at
/// the end.
std::string_view takeWord(std::string_view& text);

/// Removes the next line from the front of `text` and returns it without its line feed and the
/// carriage return before that.
std::string_view takeLine(std::string_view& text);

}  // namespace starsift
