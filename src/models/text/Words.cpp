#include "models/text/Words.h"

#include <algorithm>

#include "text/Utf8.h"

namespace starsift {

namespace {

constexpr std::string_view blanks = " \t\r\f\v";
/// Of a piece of input in a report.
constexpr std::size_t shownCharacters = 60;

/// True for a UTF-8 character that controls a terminal: C0, DEL, or C1, which is C2 80 to C2 9F.
bool isControl(std::string_view character) {
  const auto first = static_cast<unsigned char>(character[0]);
  if (character.size() == 1) return first < 0x20 || first == 0x7F;
  return first == 0xC2 && static_cast<unsigned char>(character[1]) < 0xA0;
}

void appendEscapes(std::string& result, std::string_view bytes) {
  constexpr std::string_view digits = "0123456789abcdef";
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    ((result += "\\x") += digits[byte / 16]) += digits[byte % 16];
  }
}

/// escaped(), ended by "..." before the character that would exceed `most`.
std::string escapedUpTo(std::string_view text, std::size_t most) {
  std::string result;
  std::size_t count = 0;
  while (!text.empty()) {
    const std::size_t length = utf8Length(text);
    const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
    const bool isShown = length > 0 && !isControl(character);
    count += isShown ? 1 : 4 * character.size();
    if (count > most) return result + "...";
    if (isShown)
      result += character;
    else
      appendEscapes(result, character);
    text.remove_prefix(character.size());
  }
  return result;
}

}  // namespace

char lowered(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equalsInAnyCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lowered(x) == lowered(y); });
}

std::string escaped(std::string_view text) {
  return escapedUpTo(text, std::string_view::npos);
}

std::string excerpt(std::string_view text) {
  return escapedUpTo(text, shownCharacters);
}

std::string inQuotes(std::string_view text) {
  return '"' + excerpt(text) + '"';
}

std::string counted(std::size_t count, std::string_view noun) {
  std::string result = std::to_string(count) + ' ';
  result += noun;
  if (count != 1) result += 's';
  return result;
}

std::string_view trimmed(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  text.remove_suffix(text.size() - (text.find_last_not_of(blanks) + 1));
  return text;
}

std::string_view takeWord(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
  const std::string_view word = text.substr(0, text.find_first_of(blanks));
  text.remove_prefix(word.size());
  return word;
}

std::string_view takeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  std::string_view line = text.substr(0, end);
  text.remove_prefix(std::min(end + 1, text.size()));
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

}  // namespace starsift
