#include "numbers/QQDecimal.h"

#include <algorithm>

#include "numbers/QQStorage.h"

namespace starsift {

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

}  // namespace starsift
