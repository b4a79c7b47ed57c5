// A short digest of a text, to recognise what was seen before.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace starsift {

/// FNV-1a over 64 bits: differs by accident only once in 10^19, and protects against no intention.
/// G. Fowler, L. C. Noll, K.-P. Vo (1991).
class Digest {
 public:
  void add(std::string_view text) {
    for (const char c : text) value_ = (value_ ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
  }

  /// 16 lower-case hexadecimal digits.
  std::string text() const {
    std::string digits(16, '0');
    for (std::size_t i = 0; i < digits.size(); ++i)
      digits[i] = "0123456789abcdef"[value_ >> (60 - 4 * i) & 15U];
    return digits;
  }

 private:
  std::uint64_t value_ = 0xcbf29ce484222325U;
};

}  // namespace starsift
