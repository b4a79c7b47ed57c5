// Integers of two machine words, and their way to and from GMP.
#pragma once

#include <gmp.h>

#include <array>
#include <cstdint>

namespace starsift {

__extension__ using Int128 = __int128;
__extension__ using UInt128 = unsigned __int128;

/// Stores an integer below 2^63 in magnitude and returns true; else returns false.
inline bool toWord(mpz_srcptr integer, std::int64_t& word) {
  if (mpz_size(integer) > 1) return false;
  word = static_cast<std::int64_t>(mpz_getlimbn(integer, 0));
  if (word < 0) return false;
  if (mpz_sgn(integer) < 0) word = -word;
  return true;
}

inline UInt128 magnitude(Int128 value) {
  return value < 0 ? -static_cast<UInt128>(value) : static_cast<UInt128>(value);
}

/// A wide integer as a GMP one, without allocation. It must not change while the view is in use.
class WideView {
 public:
  explicit WideView(UInt128 value, bool isNegative = false) noexcept
      : limbs_{static_cast<mp_limb_t>(value), static_cast<mp_limb_t>(value >> 64U)}, integer_() {
    mpz_roinit_n(integer_, limbs_.data(), isNegative ? -2 : 2);
  }
  explicit WideView(Int128 value) noexcept : WideView(magnitude(value), value < 0) {}
  WideView(const WideView&) = delete;
  WideView& operator=(const WideView&) = delete;
  ~WideView() = default;

  mpz_srcptr get() const noexcept { return integer_; }

 private:
  std::array<mp_limb_t, 2> limbs_;
  mpz_t integer_;
};

}  // namespace starsift
