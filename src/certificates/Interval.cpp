#include "certificates/Interval.h"

#include <array>

#include "numbers/QQStorage.h"

namespace starsift {

Interval::Interval(const ZZ& value, long precision)
    : low_(value.get(), precision, MPFR_RNDD), high_(value.get(), precision, MPFR_RNDU) {}

Interval::Interval(const QQ& value, long precision)
    : low_(QQView(value).get(), precision, MPFR_RNDD),
      high_(QQView(value).get(), precision, MPFR_RNDU) {}

void Interval::subtractProduct(const Interval& a, const Interval& b) {
  // The extremes are among the products of bounds.
  const std::array<std::array<mpfr_srcptr, 2>, 4> pairs{
      {{a.low_.mpfr_srcptr(), b.low_.mpfr_srcptr()},
       {a.low_.mpfr_srcptr(), b.high_.mpfr_srcptr()},
       {a.high_.mpfr_srcptr(), b.low_.mpfr_srcptr()},
       {a.high_.mpfr_srcptr(), b.high_.mpfr_srcptr()}}};
  mpfr::mpreal least(0, low_.getPrecision());
  mpfr::mpreal greatest(least);
  mpfr::mpreal product(least);
  mpfr_set_inf(least.mpfr_ptr(), 1);
  mpfr_set_inf(greatest.mpfr_ptr(), -1);
  for (const auto& [first, second] : pairs) {
    mpfr_mul(product.mpfr_ptr(), first, second, MPFR_RNDD);
    mpfr_min(least.mpfr_ptr(), least.mpfr_srcptr(), product.mpfr_srcptr(), MPFR_RNDD);
    mpfr_mul(product.mpfr_ptr(), first, second, MPFR_RNDU);
    mpfr_max(greatest.mpfr_ptr(), greatest.mpfr_srcptr(), product.mpfr_srcptr(), MPFR_RNDU);
  }
  mpfr_sub(low_.mpfr_ptr(), low_.mpfr_srcptr(), greatest.mpfr_srcptr(), MPFR_RNDD);
  mpfr_sub(high_.mpfr_ptr(), high_.mpfr_srcptr(), least.mpfr_srcptr(), MPFR_RNDU);
}

Interval& Interval::operator/=(const Interval& divisor) {
  // A greater divisor decreases a positive quotient and increases a negative one.
  const auto& lowest = mpfr_sgn(low_.mpfr_srcptr()) >= 0 ? divisor.high_ : divisor.low_;
  const auto& highest = mpfr_sgn(high_.mpfr_srcptr()) >= 0 ? divisor.low_ : divisor.high_;
  mpfr_div(low_.mpfr_ptr(), low_.mpfr_srcptr(), lowest.mpfr_srcptr(), MPFR_RNDD);
  mpfr_div(high_.mpfr_ptr(), high_.mpfr_srcptr(), highest.mpfr_srcptr(), MPFR_RNDU);
  return *this;
}

Interval abs(const Interval& a) {
  Interval result(a);
  if (mpfr_sgn(a.low_.mpfr_srcptr()) >= 0) return result;
  mpfr_neg(result.high_.mpfr_ptr(), a.low_.mpfr_srcptr(), MPFR_RNDU);
  if (mpfr_sgn(a.high_.mpfr_srcptr()) <= 0) {
    mpfr_neg(result.low_.mpfr_ptr(), a.high_.mpfr_srcptr(), MPFR_RNDD);
    return result;
  }
  mpfr_set_zero(result.low_.mpfr_ptr(), 1);
  mpfr_max(result.high_.mpfr_ptr(), result.high_.mpfr_srcptr(), a.high_.mpfr_srcptr(), MPFR_RNDU);
  return result;
}

std::optional<bool> atMost(const Interval& a, const Interval& b) {
  if (a.high_ <= b.low_) return true;
  if (a.low_ > b.high_) return false;
  return std::nullopt;
}

}  // namespace starsift
