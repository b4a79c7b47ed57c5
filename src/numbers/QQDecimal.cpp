#include "numbers/QQDecimal.h"

#include <algorithm>
#include <bit>

#include "numbers/QQStorage.h"

namespace starsift {

namespace {

constexpr int mostPlaces = 18;

bool isShort(std::int64_t digits) {
  return digits > -powersOfTen[mostPlaces] && digits < powersOfTen[mostPlaces];
}

}  // namespace

QQ decimal(std::int64_t digits, int places) {
  std::int64_t denominator = powersOfTen[static_cast<std::size_t>(places)];
  for (int i = 0; i < places && digits % 2 == 0; ++i) {
    digits /= 2;
    denominator /= 2;
  }
  for (int i = 0; i < places && digits % 5 == 0; ++i) {
    digits /= 5;
    denominator /= 5;
  }
  QQ result;
  QQStorage::set(result, digits, static_cast<UInt128>(denominator));
  return result;
}

QQ decimal(const ZZ& digits, unsigned long places) {
  if (places == 0 || digits.isZero()) return QQ(digits);
  QQ result;
  auto* const work = QQStorage::workplace(result);
  auto* const numerator = mpq_numref(work);
  auto* const denominator = mpq_denref(work);

  const ZZ five(5);
  const unsigned long fives = mpz_remove(numerator, digits.get(), five.get());
  const unsigned long commonFives = std::min(fives, places);
  if (fives > places) {
    mpz_ui_pow_ui(denominator, 5, fives - places);
    mpz_mul(numerator, numerator, denominator);
  }
  const unsigned long commonTwos = std::min(mpz_scan1(numerator, 0), places);
  mpz_tdiv_q_2exp(numerator, numerator, commonTwos);

  mpz_ui_pow_ui(denominator, 5, places - commonFives);
  mpz_mul_2exp(denominator, denominator, places - commonTwos);
  QQStorage::finish(result, work);
  return result;
}

std::optional<ShortDecimal> shortDecimal(const QQ& value) {
  std::int64_t digits = 0;
  if (value.toInt64(digits) && isShort(digits)) return ShortDecimal{digits, 0};
  if (value.isInf()) return std::nullopt;
  const QQView view(value);
  if (mpz_fits_slong_p(view.numerator()) == 0 || mpz_fits_slong_p(view.denominator()) == 0)
    return std::nullopt;
  const long denominator = mpz_get_si(view.denominator());
  const int twos = std::countr_zero(static_cast<unsigned long>(denominator));
  long rest = denominator >> twos;
  int fives = 0;
  for (; rest % 5 == 0; rest /= 5) ++fives;
  const int places = std::max(twos, fives);
  if (rest != 1 || places > mostPlaces) return std::nullopt;
  const bool overflows =
      __builtin_mul_overflow(mpz_get_si(view.numerator()),
                             powersOfTen[static_cast<std::size_t>(places)] / denominator, &digits);
  if (overflows || !isShort(digits)) return std::nullopt;
  return ShortDecimal{digits, places};
}

}  // namespace starsift
