#include "search/enumeration/DyadicRow.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace starsift {

namespace {

/// Bits of the words that numbers are assembled from.
constexpr std::size_t wordBits = 64;
static_assert(std::numeric_limits<unsigned long>::digits == wordBits);

/// The leading bits of an integer as a word, and the exponent that belongs to it.
struct Leading {
  unsigned long word;
  int exponent;
};

Leading leadingBits(const ZZ& value) {
  const std::size_t bits = mpz_sizeinbase(value.get(), 2);
  if (bits <= wordBits) return {mpz_get_ui(value.get()), 0};
  ZZ top;
  mpz_tdiv_q_2exp(top.get(), value.get(), bits - wordBits);
  return {mpz_get_ui(top.get()), static_cast<int>(bits - wordBits)};
}

}  // namespace

template <class Real>
Real Dyadic::rounded() const {
  const Leading leading = leadingBits(mantissa);
  const Real result = std::ldexp(static_cast<Real>(leading.word), leading.exponent + exponent);
  return mantissa.sign() ? result : -result;
}

double Dyadic::magnitude() const {
  if (mantissa.isZero()) return 0;
  constexpr double excess = 1 + 0x1p-10;
  constexpr double least = 0x1p-1000;
  return std::fabs(rounded<double>()) * excess + least;
}

template <class Real>
DyadicRow::DyadicRow(const std::vector<Real>& row) : mantissas_(row.size()) {
  constexpr int digits = std::numeric_limits<Real>::digits;
  std::vector<int> exponents(row.size());
  bool isFirst = true;
  for (std::size_t j = 0; j < row.size(); ++j) {
    if (row[j] == 0) continue;
    const Real fraction = std::frexp(row[j], &exponents[j]);
    exponents[j] -= digits;
    const auto word = static_cast<unsigned long>(std::ldexp(std::fabs(fraction), digits));
    mantissas_[j] = fraction < 0 ? -ZZ(word) : ZZ(word);
    exponent_ = isFirst ? exponents[j] : std::min(exponent_, exponents[j]);
    isFirst = false;
  }
  for (std::size_t j = 0; j < row.size(); ++j)
    if (row[j] != 0)
      mpz_mul_2exp(mantissas_[j].get(), mantissas_[j].get(),
                   static_cast<mp_bitcnt_t>(exponents[j] - exponent_));
}

Dyadic DyadicRow::inner(const std::vector<ZZ>& other) const {
  Dyadic sum{ZZ(), exponent_};
  for (std::size_t j = 0; j < mantissas_.size(); ++j)
    mpz_addmul(sum.mantissa.get(), mantissas_[j].get(), other[j].get());
  return sum;
}

template <class Real>
Real rounded(const BigFloat& value) {
  const double first = value.toDouble();
  if (!std::isfinite(first)) return first;
  BigFloat difference(value);
  BigFloat head(value);
  head = first;
  difference -= head;
  return static_cast<Real>(first) + static_cast<Real>(difference.toDouble());
}

template <class Real>
bool exactlyAs(const ZZ& value, Real& result) {
  constexpr std::size_t digits = std::numeric_limits<Real>::digits;
  if (mpz_sizeinbase(value.get(), 2) > digits - 3) return false;
  const auto word = static_cast<Real>(mpz_get_ui(value.get()));
  result = value.sign() ? word : -word;
  return true;
}

#define STARSIFT_INSTANTIATE(Real)                             \
  template Real Dyadic::rounded<Real>() const;                 \
  template DyadicRow::DyadicRow(const std::vector<Real>& row); \
  template Real rounded<Real>(const BigFloat&);                \
  template bool exactlyAs<Real>(const ZZ&, Real&);
STARSIFT_INSTANTIATE(double)
STARSIFT_INSTANTIATE(long double)
#undef STARSIFT_INSTANTIATE

}  // namespace starsift
