// Words of model files: comparison without case, quotation in reports.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace starsift {

/// Letters A to Z as a to z; all other bytes as they are.
char lowered(char c);

bool equalsInAnyCase(std::string_view a, std::string_view b);

/// `text` in quotation marks for a report: control characters as "?", cut after 60 bytes.
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
