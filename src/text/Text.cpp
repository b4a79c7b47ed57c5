#include "text/Text.h"

#include <algorithm>

namespace starsift {

namespace {

std::string_view withoutHead(std::string_view text, std::string_view characters) {
  return text.substr(std::min(text.find_first_not_of(characters), text.size()));
}

std::string_view withoutTail(std::string_view text, std::string_view characters) {
  // npos + 1 is 0: a text of `characters` only becomes empty.
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
  return std::string(trimmed(text, characters));
}

std::string_view trimmed(std::string_view text, std::string_view characters) {
  return withoutTail(withoutHead(text, characters), characters);
}

bool endsWith(std::string_view text, std::string_view suffix) {
  return text.ends_with(suffix);
}

}  // namespace starsift
