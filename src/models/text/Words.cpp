#include "models/text/Words.h"

#include <algorithm>

namespace starsift {

namespace {

constexpr std::string_view blanks = " \t\r\f\v";
/// Bytes of a name that are shown in a report.
constexpr std::size_t shownBytes = 60;

}  // namespace

char lowered(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool equalsInAnyCase(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lowered(x) == lowered(y); });
}

std::string inQuotes(std::string_view text) {
  std::string result = "\"";
  for (const char c : text.substr(0, shownBytes)) {
    const auto byte = static_cast<unsigned char>(c);
    result += byte < 0x20 || byte == 0x7F ? '?' : c;
  }
  if (text.size() > shownBytes) result += "...";
  return result + '"';
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
