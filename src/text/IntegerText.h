// The decimal text of machine integers, the most frequent output of the system, and integers as
// texts.
#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace starsift {

/// Maximum number of characters of a 64-bit integer.
constexpr std::size_t integerTextSize = 20;

namespace integertext {

constexpr std::size_t shortTextSize = 4;

/// The digits of 0 to 999, each padded to four characters: copying four characters
/// every time is faster than counting the digits first.
inline constexpr auto shortTexts = []() {
  std::array<std::array<char, shortTextSize>, 1000> texts{};
  for (std::size_t i = 0; i < texts.size(); ++i) {
    std::size_t position = 0;
    if (i >= 100) texts[i][position++] = static_cast<char>('0' + i / 100);
    if (i >= 10) texts[i][position++] = static_cast<char>('0' + i / 10 % 10);
    texts[i][position] = static_cast<char>('0' + i % 10);
  }
  return texts;
}();

}  // namespace integertext

/// Writes the digits of `value` at `out`, which has room for integerTextSize
/// characters. Returns the position after them.
inline char* writeInteger(char* out, std::int64_t value) {
  auto magnitude = static_cast<std::uint64_t>(value);
  if (value < 0) {
    *out++ = '-';
    magnitude = 0 - magnitude;
  }
  if (magnitude < integertext::shortTexts.size()) {
    std::memcpy(out, integertext::shortTexts[magnitude].data(), integertext::shortTextSize);
    return out + 1 + static_cast<int>(magnitude >= 10) + static_cast<int>(magnitude >= 100);
  }
  return std::to_chars(out, out + integerTextSize, magnitude).ptr;
}

inline void appendInteger(std::string& out, std::int64_t value) {
  std::array<char, integerTextSize> text;
  out.append(text.data(), writeInteger(text.data(), value));
}

/// The integer from `least` to `most` that is the whole of `text`: digits, behind a minus sign
/// where Number has one. Nothing for any other text.
template <class Number>
std::optional<Number> parseInteger(std::string_view text,
                                   Number least = std::numeric_limits<Number>::min(),
                                   Number most = std::numeric_limits<Number>::max()) {
  Number number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || stop != end || number < least || number > most) return std::nullopt;
  return number;
}

}  // namespace starsift
