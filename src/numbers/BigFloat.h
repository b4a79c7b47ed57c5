// Floating-point numbers with a precision chosen at run time, for data that are rounded once.
#pragma once

#include <gmp.h>

#include <cmath>

#include "numbers/ZZ.h"

namespace starsift {

/// Owns one GMP float. Results are truncated to the precision of the object that they are
/// written to, with a relative error below 2^(1 - precision). The exponent has the range of a
/// machine word.
class BigFloat {
 public:
  /// 0 with at least `precision` bits.
  explicit BigFloat(mp_bitcnt_t precision) : value_() { mpf_init2(value_, precision); }
  BigFloat(const BigFloat& other) : BigFloat(mpf_get_prec(other.value_)) {
    mpf_set(value_, other.value_);
  }
  BigFloat(BigFloat&& other) noexcept : BigFloat(mpf_get_prec(other.value_)) { swap(other); }
  /// The precision of this number stays.
  BigFloat& operator=(const BigFloat& other) {  // NOLINT(bugprone-unhandled-self-assignment)
    mpf_set(value_, other.value_);
    return *this;
  }
  /// The precision moves with the value.
  BigFloat& operator=(BigFloat&& other) noexcept {
    swap(other);
    return *this;
  }
  ~BigFloat() { mpf_clear(value_); }

  void swap(BigFloat& other) noexcept { mpf_swap(value_, other.value_); }

  BigFloat& operator=(const ZZ& integer) {
    mpf_set_z(value_, integer.get());
    return *this;
  }
  BigFloat& operator=(double real) {
    mpf_set_d(value_, real);
    return *this;
  }
  BigFloat& operator+=(const BigFloat& other) {
    mpf_add(value_, value_, other.value_);
    return *this;
  }
  BigFloat& operator-=(const BigFloat& other) {
    mpf_sub(value_, value_, other.value_);
    return *this;
  }
  BigFloat& operator*=(const BigFloat& other) {
    mpf_mul(value_, value_, other.value_);
    return *this;
  }
  /// The divisor is not 0.
  BigFloat& operator/=(const BigFloat& other) {
    mpf_div(value_, value_, other.value_);
    return *this;
  }
  /// *this := a * b.
  void setProduct(const BigFloat& a, const BigFloat& b) { mpf_mul(value_, a.value_, b.value_); }
  /// *this /= 2^exponent.
  void divideByPowerOfTwo(mp_bitcnt_t exponent) { mpf_div_2exp(value_, value_, exponent); }

  bool isZero() const noexcept { return mpf_sgn(value_) == 0; }
  friend bool operator<(const BigFloat& a, const BigFloat& b) {
    return mpf_cmp(a.value_, b.value_) < 0;
  }

  /// Truncated to 53 bits; infinite beyond the range of double.
  double toDouble() const {
    long exponent = 0;
    const double fraction = mpf_get_d_2exp(&exponent, value_);
    constexpr long limit = 4000;  // far outside the range of double on both sides
    if (exponent > limit || exponent < -limit) return exponent < 0 ? 0.0 : fraction * HUGE_VAL;
    return std::ldexp(fraction, static_cast<int>(exponent));
  }
  /// Log2 of the magnitude; the value is not 0.
  double log2() const {
    long exponent = 0;
    const double fraction = mpf_get_d_2exp(&exponent, value_);
    return std::log2(std::fabs(fraction)) + static_cast<double>(exponent);
  }
  /// An integer within 1/2 of the value, up to its precision.
  ZZ nearestInteger() const {
    BigFloat half(*this);
    BigFloat shift(mpf_get_prec(value_));
    shift = 0.5;
    half += shift;
    mpf_floor(half.value_, half.value_);
    ZZ result;
    mpz_set_f(result.get(), half.value_);
    return result;
  }

 private:
  mpf_t value_;
};

}  // namespace starsift
