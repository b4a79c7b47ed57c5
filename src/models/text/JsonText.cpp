#include "models/text/JsonText.h"

#include <array>
#include <cstdio>

#include "text/Utf8.h"

namespace starsift {

namespace {

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
