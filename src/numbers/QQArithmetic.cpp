// Arithmetic, comparison and rounding of QQ for all but small integers: small fractions
// in 128 bits, larger ones in GMP, infinities separately.
#include <numeric>

#include "numbers/QQ.h"
#include "numbers/QQStorage.h"
#include "system/Failure.h"

namespace starsift {

namespace {

using GmpOperation = void (*)(mpq_ptr, mpq_srcptr, mpq_srcptr);

/// a = operation(a, b), both finite; they may be one object.
void applyBig(QQ& a, const QQ& b, GmpOperation operation) {
  auto* const result = QQStorage::workplace(a);
  operation(result, QQView(a).get(), QQView(b).get());
  QQStorage::finish(a, result);
}

bool bothSmall(const QQ& a, const QQ& b) {
  return QQStorage::isSmall(a) && QQStorage::isSmall(b);
}

/// a += b, or a -= b if `sign` is negative; both small.
void addSmall(QQ& a, const QQ& b, int sign) {
  const Int128 an = QQStorage::numerator(a);
  const Int128 bn = sign * static_cast<Int128>(QQStorage::numerator(b));
  const std::uint64_t ad = QQStorage::denominator(a);
  const std::uint64_t bd = QQStorage::denominator(b);
  if (ad == bd)
    QQStorage::setReduced(a, an + bn, ad);
  else
    QQStorage::setReduced(a, an * static_cast<Int128>(bd) + bn * static_cast<Int128>(ad), ad * bd);
}

std::uint64_t magnitude(std::int64_t value) {
  return static_cast<std::uint64_t>(value < 0 ? -value : value);
}

/// a *= (numerator / denominator), a small and the factor in lowest terms with
/// |numerator| < 2^62, 1 <= denominator < 2^62.
void multiplySmall(QQ& a, std::int64_t numerator, std::uint64_t denominator) {
  const std::int64_t an = QQStorage::numerator(a);
  const std::uint64_t ad = QQStorage::denominator(a);
  // Without the common divisors of each numerator and the other denominator the product
  // is in lowest terms.
  const std::uint64_t g = std::gcd(magnitude(an), denominator);
  const std::uint64_t h = std::gcd(magnitude(numerator), ad);
  QQStorage::set(a,
                 static_cast<Int128>(an / static_cast<std::int64_t>(g)) *
                     (numerator / static_cast<std::int64_t>(h)),
                 static_cast<UInt128>(ad / h) * (denominator / g));
}

/// a += b or a -= b, at least one of them infinite; bSign is the sign of the addend, so
/// that of -b in a difference.
void addInfinity(QQ& a, bool bIsInf, bool bSign) {
  if (!a.isInf())
    a.setInf(bSign);
  else if (bIsInf && a.sign() != bSign)
    fail("INF - INF is not defined");
}

int sense(bool positive) {
  return positive ? 1 : -1;
}

}  // namespace

QQ& QQ::addGeneral(const QQ& other) {
  if (isInf() || other.isInf())
    addInfinity(*this, other.isInf(), other.sign());
  else if (bothSmall(*this, other))
    addSmall(*this, other, 1);
  else
    applyBig(*this, other, mpq_add);
  return *this;
}

QQ& QQ::subtractGeneral(const QQ& other) {
  if (isInf() || other.isInf())
    addInfinity(*this, other.isInf(), !other.sign());
  else if (bothSmall(*this, other))
    addSmall(*this, other, -1);
  else
    applyBig(*this, other, mpq_sub);
  return *this;
}

QQ& QQ::multiplyGeneral(const QQ& other) {
  if (isInf() || other.isInf()) {
    if (isZero()) fail("qq: 0 * INF is not defined!");
    if (other.isZero()) fail("qq: INF * 0 is not defined!");
    setInf(sign() == other.sign());
  } else if (bothSmall(*this, other)) {
    multiplySmall(*this, other.word_, other.tag_);
  } else {
    applyBig(*this, other, mpq_mul);
  }
  return *this;
}

QQ& QQ::operator/=(const QQ& other) {
  if (isInf()) {
    if (other.isInf()) fail("qq: oo / oo is not defined");
    if (!other.sign()) negate();
  } else if (other.isInf()) {
    *this = QQ();
  } else if (other.isZero()) {
    if (isZero()) fail("0 / 0 is not defined");
    setInf(sign());
  } else if (bothSmall(*this, other)) {
    const auto reciprocal = static_cast<std::int64_t>(other.tag_);
    const std::int64_t divisor = other.word_;
    multiplySmall(*this, divisor < 0 ? -reciprocal : reciprocal, magnitude(divisor));
  } else {
    applyBig(*this, other, mpq_div);
  }
  return *this;
}

void QQ::addProductGeneral(QQ& sum, const QQ& a, const QQ& b) {
  if (sum.isInteger() && a.isInteger() && b.isInteger()) {
    auto* const result = QQStorage::workplace(sum);
    if (!sum.isBig()) mpq_set_si(result, sum.word_, 1);
    mpz_addmul(mpq_numref(result), QQView(a).numerator(), QQView(b).numerator());
    QQStorage::finish(sum, result);
  } else {
    sum += a * b;
  }
}

void QQ::subtractProductGeneral(QQ& sum, const QQ& a, const QQ& b) {
  if (sum.isInteger() && a.isInteger() && b.isInteger()) {
    auto* const result = QQStorage::workplace(sum);
    if (!sum.isBig()) mpq_set_si(result, sum.word_, 1);
    mpz_submul(mpq_numref(result), QQView(a).numerator(), QQView(b).numerator());
    QQStorage::finish(sum, result);
  } else {
    sum -= a * b;
  }
}

int QQ::compareGeneral(const QQ& a, const QQ& b) {
  if (&a == &b) return 0;
  const bool positive = a.sign();
  if (positive != b.sign()) return sense(positive);
  if (a.isInf()) return b.isInf() ? 0 : sense(positive);
  if (b.isInf()) return -sense(positive);
  if (!bothSmall(a, b)) {
    const int order = mpq_cmp(QQView(a).get(), QQView(b).get());
    return static_cast<int>(order > 0) - static_cast<int>(order < 0);
  }
  const Int128 left = static_cast<Int128>(a.word_) * static_cast<Int128>(b.tag_);
  const Int128 right = static_cast<Int128>(b.word_) * static_cast<Int128>(a.tag_);
  return static_cast<int>(left > right) - static_cast<int>(left < right);
}

bool QQ::bigEqual(const QQ& a, const QQ& b) {
  return mpq_equal(a.big(), b.big()) != 0;
}

QQ trunc(const QQ& value) {
  if (value.isInteger() || value.isInf()) return value;
  QQ result(value.ganze());
  if (!value.sign()) result.negate();
  return result;
}

QQ floor(const QQ& value) {
  QQ result = trunc(value);
  if (result > value) result -= QQ(1);
  return result;
}

QQ ceil(const QQ& value) {
  QQ result = trunc(value);
  if (result < value) result += QQ(1);
  return result;
}

void commonDenominator(const QQ& a, const QQ& b, ZZ& aScaled, ZZ& bScaled, ZZ& common) {
  if (&aScaled == &bScaled || &aScaled == &common || &bScaled == &common)
    fail("QQ: The ZZs have the same address");
  if (a.isInf() || b.isInf())
    fail("a_z, b_z can not be set to ZZ::INF -- isInf is logic only available in QQ class");
  const ZZ aNenner = a.nenner();
  const ZZ bNenner = b.nenner();
  common = lcm(aNenner, bNenner);
  aScaled = a.zaehler() * exactQuotient(common, aNenner);
  bScaled = b.zaehler() * exactQuotient(common, bNenner);
}

}  // namespace starsift
