// Operations on text. All return new strings; characters are bytes.
#pragma once

#include <string>
#include <string_view>

#include "core/Array.h"

namespace starsift {

class Serializable;

/// What trim removes unless told otherwise: the white space of the C library.
constexpr std::string_view trimmedCharacters = " \t\n\r\f\v";

/// Replaces each occurrence of `from`, left to right; what was put in isn't
/// searched again. `from` is not empty.
std::string replaceAll(std::string_view text, std::string_view from, std::string_view to);

std::string trimLeft(std::string_view text, std::string_view characters = trimmedCharacters);
std::string trimRight(std::string_view text, std::string_view characters = trimmedCharacters);
std::string trim(std::string_view text, std::string_view characters = trimmedCharacters);

/// The pieces between the separators, as std::getline delivers them: an empty text
/// has none, and nothing follows a separator at the very end.
Array<std::string> split(std::string_view text, char separator);

/// Case-sensitive; false when the suffix is longer than the text.
bool endsWith(std::string_view text, std::string_view suffix);

/// Each character through the C library's mapping.
std::string toLower(std::string_view text);
std::string toUpper(std::string_view text);

/// Replaces all matches of an ECMAScript regular expression. `replacement` may
/// refer to groups ("$1"). A malformed pattern throws std::regex_error.
std::string regexReplace(const std::string& text, const std::string& pattern,
                         const std::string& replacement);

/// The text form with 17 significant digits. A text longer than `limit` keeps its
/// first and last limit / 2 characters with " ... " between them; limit 0: whole.
std::string limitedText(const Serializable& object, Index limit);

}  // namespace starsift
