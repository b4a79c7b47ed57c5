// SHA-256 digests (FIPS 180-4), by which files know each other again.
#pragma once

#include <nettle/sha2.h>

#include <string>
#include <string_view>

namespace starsift {

/// Digests a text that comes in pieces.
class Sha256 {
 public:
  Sha256() { sha256_init(&context_); }

  void add(std::string_view bytes);
  /// 64 hexadecimal digits; the next text begins.
  std::string take();

 private:
  sha256_ctx context_{};
};

std::string sha256(std::string_view bytes);

}  // namespace starsift
