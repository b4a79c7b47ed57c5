#include "stars/ProductLimit.h"

#include <algorithm>

namespace starsift {

namespace {

std::int64_t cutInfinity(const QQ& infinity) {
  return infinity.sign() ? productLimit : -productLimit;
}

}  // namespace

std::int64_t cut(const ZZ& value) {
  if (mpz_fits_slong_p(value.get()) == 0) return value.sign() ? productLimit : -productLimit;
  return std::clamp(static_cast<std::int64_t>(mpz_get_si(value.get())), -productLimit,
                    productLimit);
}

std::int64_t cutUp(const QQ& bound) {
  return bound.isInf() ? cutInfinity(bound) : cut(ceil(bound).numerator());
}

std::int64_t cutDown(const QQ& bound) {
  return bound.isInf() ? cutInfinity(bound) : cut(floor(bound).numerator());
}

}  // namespace starsift
