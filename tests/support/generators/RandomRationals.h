// Rationals of every size from a fixed seed. Their bits come in long runs of zeros and
// of ones, where rounding has its corners.
#pragma once

#include <gmp.h>

#include "numbers/QQ.h"

namespace starsift::test {

class RandomRationals {
 public:
  explicit RandomRationals(unsigned long seed) {
    gmp_randinit_mt(state_);
    gmp_randseed_ui(state_, seed);
  }
  RandomRationals(const RandomRationals&) = delete;
  RandomRationals& operator=(const RandomRationals&) = delete;
  ~RandomRationals() { gmp_randclear(state_); }

  /// From least to most.
  long between(long least, long most) {
    return least +
           static_cast<long>(gmp_urandomm_ui(state_, static_cast<unsigned long>(most - least + 1)));
  }
  bool coin() { return between(0, 1) == 1; }

  /// Positive, of exactly `bits` bits.
  ZZ integer(long bits) {
    ZZ result;
    mpz_rrandomb(result.get(), state_, static_cast<mp_bitcnt_t>(bits));
    return result;
  }
  /// Positive, with up to `bits` bits in numerator and denominator.
  QQ fraction(long bits) { return {integer(between(1, bits)), integer(between(1, bits))}; }

 private:
  gmp_randstate_t state_;
};

/// 2^exponent.
inline QQ powerOfTwo(long exponent) {
  const QQ power(pow(ZZ(2), ZZ(exponent < 0 ? -exponent : exponent)));
  return exponent < 0 ? QQ(1) / power : power;
}

}  // namespace starsift::test
