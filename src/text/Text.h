// Functions on text; characters are bytes.
#pragma once

#include <string>
#include <string_view>

namespace starsift {

/// Removed by trim() by default: the white space of the C library.
constexpr std::string_view trimmedCharacters = " \t\n\r\f\v";

/// Replaces each occurrence of `from`, left to right; inserted text is not searched
/// again. `from` is not empty.
std::string replaceAll(std::string_view text, std::string_view from, std::string_view to);

std::string trimLeft(std::string_view text, std::string_view characters = trimmedCharacters);
std::string trimRight(std::string_view text, std::string_view characters = trimmedCharacters);
std::string trim(std::string_view text, std::string_view characters = trimmedCharacters);

/// trim() as a part of `text`.
std::string_view trimmed(std::string_view text, std::string_view characters = trimmedCharacters);

/// Case-sensitive; false if the suffix is longer than the text.
bool endsWith(std::string_view text, std::string_view suffix);

}  // namespace starsift
