#include "models/text/JsonText.h"

#include <array>
#include <cstdio>

namespace starsift {

namespace {

/// The bytes of the UTF-8 character at the front of `text`, 0 if there is none (RFC 3629).
std::size_t characterLength(std::string_view text) {
  const auto byte = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  const auto follows = [&](std::size_t i, unsigned least, unsigned most) {
    return i < text.size() && byte(i) >= least && byte(i) <= most;
  };
  const unsigned first = byte(0);
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return follows(1, 0x80, 0xBF) ? 2 : 0;
  if (first >= 0xE0 && first <= 0xEF) {
    const unsigned least = first == 0xE0 ? 0xA0 : 0x80;
    const unsigned most = first == 0xED ? 0x9F : 0xBF;
    return follows(1, least, most) && follows(2, 0x80, 0xBF) ? 3 : 0;
  }
  if (first >= 0xF0 && first <= 0xF4) {
    const unsigned least = first == 0xF0 ? 0x90 : 0x80;
    const unsigned most = first == 0xF4 ? 0x8F : 0xBF;
    return follows(1, least, most) && follows(2, 0x80, 0xBF) && follows(3, 0x80, 0xBF) ? 4 : 0;
  }
  return 0;
}

bool isUtf8(std::string_view text) {
  while (!text.empty()) {
    const std::size_t length = characterLength(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

void appendEscaped(std::string& out, unsigned code) {
  std::array<char, 8> escape{};
  std::snprintf(escape.data(), escape.size(), "\\u%04x", code);
  out += escape.data();
}

}  // namespace

void JsonText::newLine() {
  text_ += '\n';
  text_.append(2 * depth_, ' ');
}

void JsonText::separate() {
  if (followsKey_) {
    followsKey_ = false;
    return;
  }
  if (depth_ == 0) return;
  if (!isFirst_) text_ += ',';
  isFirst_ = false;
  newLine();
}

JsonText& JsonText::begin(char bracket) {
  separate();
  text_ += bracket;
  ++depth_;
  isFirst_ = true;
  return *this;
}

JsonText& JsonText::end(char bracket) {
  --depth_;
  if (!isFirst_) newLine();
  isFirst_ = false;
  text_ += bracket;
  return *this;
}

JsonText& JsonText::key(std::string_view name) {
  value(name);
  text_ += ": ";
  followsKey_ = true;
  return *this;
}

JsonText& JsonText::value(std::string_view text) {
  separate();
  const bool isLatin = !isUtf8(text);
  text_ += '"';
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x20 || byte == 0x7F || (isLatin && byte >= 0x80)) {
      appendEscaped(text_, byte);
    } else {
      if (c == '"' || c == '\\') text_ += '\\';
      text_ += c;
    }
  }
  text_ += '"';
  return *this;
}

JsonText& JsonText::value(std::size_t number) {
  separate();
  text_ += std::to_string(number);
  return *this;
}

JsonText& JsonText::value(bool truth) {
  separate();
  text_ += truth ? "true" : "false";
  return *this;
}

}  // namespace starsift
