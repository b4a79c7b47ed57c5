#include "models/text/Sha256.h"

#include <array>
#include <cstdint>

namespace starsift {

void Sha256::add(std::string_view bytes) {
  sha256_update(&context_, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
}

std::string Sha256::take() {
  std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
  sha256_digest(&context_, digest.size(), digest.data());
  constexpr std::string_view hexadecimal = "0123456789abcdef";
  std::string text;
  for (const std::uint8_t byte : digest) {
    text += hexadecimal[byte >> 4U];
    text += hexadecimal[byte & 15U];
  }
  return text;
}

std::string sha256(std::string_view bytes) {
  Sha256 digest;
  digest.add(bytes);
  return digest.take();
}

}  // namespace starsift
