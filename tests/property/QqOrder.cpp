// Order laws, agreement with GMP's order, rounding to integers, and divisors.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "numbers/Gcd.h"
#include "support/generators/NumberGenerators.h"

namespace starsift {
namespace {

using test::arbitraryFraction;
using test::gmpRational;
using test::toQQ;

int signOf(int v) {
  return (v > 0) - (v < 0);
}

RC_GTEST_PROP(QqOrder, AgreesWithGmp, ()) {
  const mpq_class x = gmpRational(*arbitraryFraction());
  mpq_class y = gmpRational(*arbitraryFraction());
  // Close neighbours tie in the integer part.
  if (y != 0 && *rc::gen::arbitrary<bool>()) y = x + 1 / y;
  RC_ASSERT(signOf(compare(toQQ(x), toQQ(y))) == signOf(cmp(x, y)));
  RC_ASSERT((toQQ(x) == toQQ(y)) == (x == y));
}

RC_GTEST_PROP(QqOrder, IsTotal, (const QQ& a, const QQ& b, const QQ& c)) {
  RC_ASSERT(compare(a, b) == -compare(b, a));
  RC_ASSERT((compare(a, b) == 0) == (a == b));
  RC_ASSERT(int{a < b} + int{a == b} + int{a > b} == 1);
  if (a <= b && b <= c) RC_ASSERT(a <= c);
}

RC_GTEST_PROP(QqOrder, IsKeptByAdditionAndPositiveFactors,
              (const QQ& a, const QQ& b, const QQ& c)) {
  RC_ASSERT(signOf(compare(a + c, b + c)) == signOf(compare(a, b)));
  RC_PRE(c > QQ::zero());
  RC_ASSERT(signOf(compare(a * c, b * c)) == signOf(compare(a, b)));
}

RC_GTEST_PROP(QqOrder, InfinitiesAreTheEnds, (const QQ& a)) {
  RC_ASSERT(-QQ::infinity() < a && a < QQ::infinity());
}

RC_GTEST_PROP(QqOrder, MaxIsOneOfTheTwoAndBelowNone, (const QQ& a, const QQ& b)) {
  const QQ greater = max(a, b);
  RC_ASSERT(greater == a || greater == b);
  RC_ASSERT(greater >= a && greater >= b);
}

RC_GTEST_PROP(QqRounding, NeighboursAreIntegersWithinOne, (const QQ& a)) {
  RC_ASSERT(floor(a).isInteger() && ceil(a).isInteger() && trunc(a).isInteger());
  RC_ASSERT(floor(a) <= a && a < floor(a) + QQ::one());
  RC_ASSERT(ceil(a) >= a && a > ceil(a) - QQ::one());
  RC_ASSERT(trunc(a) == (a.sign() ? floor(a) : ceil(a)));
  RC_ASSERT(ceil(a) == -floor(-a));
  RC_ASSERT((floor(a) == ceil(a)) == a.isInteger());
}

/// Euclid's scheme over the rationals, step by step.
QQ euclid(QQ a, QQ b) {
  a = abs(a);
  b = abs(b);
  while (!b.isZero()) {
    QQ rest = a - floor(a / b) * b;
    a = b;
    b = rest;
  }
  return a;
}

RC_GTEST_PROP(QqGcd, AgreesWithEuclidsScheme, (const QQ& a, const QQ& b)) {
  RC_ASSERT(gcdQQ(a, b) == euclid(a, b));
}

RC_GTEST_PROP(QqGcd, LcmIsAMultipleOfBoth, (const QQ& a, const QQ& b)) {
  RC_PRE(!a.isZero() && !b.isZero());
  const QQ multiple = lcmQQ(a, b);
  RC_ASSERT((multiple / a).isInteger() && (multiple / b).isInteger());
  RC_ASSERT(gcdQQ(multiple / a, multiple / b) == QQ::one());
}

RC_GTEST_PROP(QqGcd, LongDoubleAgreesOnIntegers, ()) {
  const auto a = *rc::gen::inRange(0L, 1L << 40);
  const auto b = *rc::gen::inRange(1L, 1L << 20);
  RC_ASSERT(QQ(gcdQQ(static_cast<long double>(a), static_cast<long double>(b))) ==
            gcdQQ(QQ(a), QQ(b)));
}

}  // namespace
}  // namespace starsift
