// Owns one GMP integer: construction, copying, release. ZZ adds the arithmetic.
#pragma once

#include <gmp.h>

namespace starsift {

class BigInt {
 public:
  BigInt() noexcept : value_() { mpz_init(value_); }
  explicit BigInt(long value) : value_() { mpz_init_set_si(value_, value); }
  explicit BigInt(unsigned long value) : value_() { mpz_init_set_ui(value_, value); }
  BigInt(const BigInt& other) : value_() { mpz_init_set(value_, other.value_); }
  /// Sets `other` to 0.
  BigInt(BigInt&& other) noexcept : BigInt() { swap(other); }
  // mpz_set() allows source and target to be one object.
  BigInt& operator=(const BigInt& other) {  // NOLINT(bugprone-unhandled-self-assignment)
    mpz_set(value_, other.value_);
    return *this;
  }
  /// Gives `other` the former value of this integer.
  BigInt& operator=(BigInt&& other) noexcept {
    swap(other);
    return *this;
  }
  ~BigInt() { mpz_clear(value_); }

  /// Exchanges the values without copying limbs.
  void swap(BigInt& other) noexcept { mpz_swap(value_, other.value_); }

  mpz_srcptr get() const noexcept { return value_; }
  mpz_ptr get() noexcept { return value_; }

 private:
  mpz_t value_;
};

}  // namespace starsift
