#include "stars/RowTests.h"

#include <cstdlib>

#include "stars/ProductLimit.h"

namespace starsift {

namespace {

ZZ scaledUp(const QQ& value, const ZZ& scale) {
  return value.numerator() * exactQuotient(scale, value.nenner());
}

ZZ denominators(const QQ& a, const QQ& b) {
  return lcm(a.nenner(), b.nenner());
}

}  // namespace

IntervalTest::Bound::Bound(const QQ& bound, const ZZ& scale)
    : isInfinite(bound.isInf()),
      numerator(bound.numerator() * scale),
      denominator(bound.nenner()) {}

int IntervalTest::Bound::compare(const ZZ& product, const ZZ& pointDenominator) const {
  // The signs decide most of the time.
  const int sign = mpz_sgn(numerator.get());
  if (mpz_sgn(product.get()) != sign) return mpz_sgn(product.get()) - sign;
  return cmp(product * denominator, numerator * pointDenominator);
}

template <class T>
IntervalTest::IntervalTest(const Vector<T>& row, const QQ& lower, const QQ& upper)
    : row_(row, ZZ::one()),
      lower_(lower, row_.scale()),
      upper_(upper, row_.scale()),
      lowerIsReachable_(!(lower.isInf() && lower.sign())),
      upperIsReachable_(!(upper.isInf() && !upper.sign())),
      smallLower_(cutUp(lower * QQ(row_.scale()))),
      smallUpper_(cutDown(upper * QQ(row_.scale()))) {}

template IntervalTest::IntervalTest(const Vector<long double>&, const QQ&, const QQ&);
template IntervalTest::IntervalTest(const Vector<QQ>&, const QQ&, const QQ&);

bool IntervalTest::admits(const ExactPoint& point) const {
  if (!lowerIsReachable_ || !upperIsReachable_) return false;
  if (point.isSmall()) {
    const std::optional<std::int64_t> product = row_.times(point.small());
    if (product) return smallLower_ <= *product && *product <= smallUpper_;
  }
  if (!row_.isInteger() || !point.isScalable()) return admits(row_.rationalTimes(point));
  const ScaledPoint& scaled = point.scaled();
  ZZ& product = point.product();
  row_.times(scaled, product);
  return (lower_.isInfinite || lower_.compare(product, scaled.denominator) >= 0) &&
         (upper_.isInfinite || upper_.compare(product, scaled.denominator) <= 0);
}

bool IntervalTest::admits(const QQ& product) const {
  return (lower_.isInfinite || product >= QQ(lower_.numerator, lower_.denominator)) &&
         (upper_.isInfinite || product <= QQ(upper_.numerator, upper_.denominator));
}

template <class T>
CongruenceTest::CongruenceTest(const Vector<T>& row, const QQ& value, const QQ& modulus,
                               const QQ& tolerance)
    : row_(row, denominators(value, modulus)),
      value_(scaledUp(value, row_.scale())),
      modulus_(scaledUp(abs(modulus), row_.scale())),
      tolerance_(tolerance * QQ(row_.scale(), ZZ::one())),
      isSmall_(cmp(abs(value_), ZZ(productLimit)) < 0 && cmp(modulus_, ZZ(productLimit)) < 0) {
  if (!isSmall_) return;
  smallValue_ = cut(value_);
  smallModulus_ = cut(modulus_);
  smallTolerance_ = cut(floor(tolerance_).numerator());
}

template CongruenceTest::CongruenceTest(const Vector<long double>&, const QQ&, const QQ&,
                                        const QQ&);
template CongruenceTest::CongruenceTest(const Vector<QQ>&, const QQ&, const QQ&, const QQ&);

bool CongruenceTest::admits(const ExactPoint& point) const {
  if (isSmall_ && point.isSmall()) {
    const std::optional<std::int64_t> product = row_.times(point.small());
    if (product) return std::abs((*product - smallValue_) % smallModulus_) <= smallTolerance_;
  }
  if (!row_.isInteger() || !point.isScalable()) return admits(row_.rationalTimes(point));
  const ScaledPoint& scaled = point.scaled();
  ZZ& difference = point.product();
  row_.times(scaled, difference);
  difference -= value_ * scaled.denominator;
  mpz_tdiv_r(difference.get(), difference.get(), ZZ(modulus_ * scaled.denominator).get());
  return QQ(abs(difference), scaled.denominator) <= tolerance_;
}

bool CongruenceTest::admits(const QQ& product) const {
  return abs(NumberTraits<QQ>::remainder(product - QQ(value_), QQ(modulus_))) <= tolerance_;
}

}  // namespace starsift
