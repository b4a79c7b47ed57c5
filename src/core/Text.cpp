#include "core/Text.h"

#include <algorithm>
#include <cctype>
#include <regex>
#include <sstream>

#include "core/NumberTraits.h"
#include "core/Serializable.h"

namespace starsift {

namespace {

/// Applies a mapping of <cctype>, which is defined on unsigned char only.
std::string mapped(std::string_view text, int (*mapping)(int)) {
  std::string result(text);
  std::transform(result.begin(), result.end(), result.begin(), [mapping](char c) {
    return static_cast<char>(mapping(static_cast<unsigned char>(c)));
  });
  return result;
}

std::string_view withoutHead(std::string_view text, std::string_view characters) {
  return text.substr(std::min(text.find_first_not_of(characters), text.size()));
}

std::string_view withoutTail(std::string_view text, std::string_view characters) {
  // npos + 1 is 0: a text of nothing but `characters` keeps nothing.
  return text.substr(0, text.find_last_not_of(characters) + 1);
}

}  // namespace

std::string replaceAll(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  std::size_t position = 0;
  for (auto hit = text.find(from); hit != std::string_view::npos; hit = text.find(from, position)) {
    result += text.substr(position, hit - position);
    result += to;
    position = hit + from.size();
  }
  result += text.substr(position);
  return result;
}

std::string trimLeft(std::string_view text, std::string_view characters) {
  return std::string(withoutHead(text, characters));
}

std::string trimRight(std::string_view text, std::string_view characters) {
  return std::string(withoutTail(text, characters));
}

std::string trim(std::string_view text, std::string_view characters) {
  return std::string(withoutTail(withoutHead(text, characters), characters));
}

Array<std::string> split(std::string_view text, char separator) {
  // Counted first: an array that grows piece by piece copies them all again and again.
  auto count = std::count(text.begin(), text.end(), separator);
  if (!text.empty() && text.back() != separator) ++count;
  Array<std::string> pieces(count);
  for (std::string& piece : pieces) {
    const auto end = std::min(text.find(separator), text.size());
    piece = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return pieces;
}

bool endsWith(std::string_view text, std::string_view suffix) {
  return text.ends_with(suffix);
}

std::string toLower(std::string_view text) {
  return mapped(text, std::tolower);
}

std::string toUpper(std::string_view text) {
  return mapped(text, std::toupper);
}

std::string regexReplace(const std::string& text, const std::string& pattern,
                         const std::string& replacement) {
  return std::regex_replace(text, std::regex(pattern), replacement);
}

std::string limitedText(const Serializable& object, Index limit) {
  std::ostringstream stream;
  stream.precision(fileDigits);
  stream << object;
  std::string text = stream.str();
  if (limit == 0 || static_cast<Index>(text.size()) <= limit) return text;
  const auto half = static_cast<std::size_t>(limit / 2);
  return text.substr(0, half) + " ... " + text.substr(text.size() - half);
}

}  // namespace starsift
