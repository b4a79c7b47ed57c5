// Ownership of one GMP integer: construction, copying, release. The arithmetic
// over it is ZZ.
#pragma once

#include <gmp.h>

namespace starsift {

class BigInt {
 public:
  BigInt() noexcept : value_() { mpz_init(value_); }
  explicit BigInt(long value) : value_() { mpz_init_set_si(value_, value); }
  explicit BigInt(unsigned long value) : value_() { mpz_init_set_ui(value_, value); }
  BigInt(const BigInt& other) : value_() { mpz_init_set(value_, other.value_); }
  /// Leaves `other` 0.
  BigInt(BigInt&& other) noexcept : BigInt() { swap(other); }
  // GMP copes with source and target being one object.
  BigInt& operator=(const BigInt& other) {  // NOLINT(bugprone-unhandled-self-assignment)
    mpz_set(value_, other.value_);
    return *this;
  }
  /// Leaves `other` with this integer's former value.
  BigInt& operator=(BigInt&& other) noexcept {
    swap(other);
    return *this;
  }
  ~BigInt() { mpz_clear(value_); }

  /// Exchanges the contents without touching limbs.
  void swap(BigInt& other) noexcept { mpz_swap(value_, other.value_); }

  mpz_srcptr get() const noexcept { return value_; }
  mpz_ptr get() noexcept { return value_; }

 private:
  mpz_t value_;
};

}  // namespace starsift
