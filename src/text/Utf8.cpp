#include "text/Utf8.h"

namespace starsift {

std::size_t utf8Length(std::string_view text) {
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
    const std::size_t length = utf8Length(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

}  // namespace starsift
