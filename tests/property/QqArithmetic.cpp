// Field laws, the table of the infinities, aliased operands, and agreement with
// GMP's rationals.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "support/generators/NumberGenerators.h"

namespace starsift {
namespace {

using test::arbitraryFraction;
using test::gmpRational;
using test::isCanonical;
using test::toQQ;

RC_GTEST_PROP(QqArithmetic, AdditionIsAnAbelianGroup, (const QQ& a, const QQ& b, const QQ& c)) {
  RC_ASSERT(a + b == b + a);
  RC_ASSERT((a + b) + c == a + (b + c));
  RC_ASSERT(a + QQ::zero() == a);
  RC_ASSERT((a + -a).isZero());
  RC_ASSERT(a - b == a + -b);
}

RC_GTEST_PROP(QqArithmetic, MultiplicationIsAnAbelianGroup,
              (const QQ& a, const QQ& b, const QQ& c)) {
  RC_ASSERT(a * b == b * a);
  RC_ASSERT((a * b) * c == a * (b * c));
  RC_ASSERT(a * QQ::one() == a);
  RC_PRE(!b.isZero());
  RC_ASSERT(a / b * b == a);
  RC_ASSERT(a / b == a * (QQ::one() / b));
}

RC_GTEST_PROP(QqArithmetic, MultiplicationDistributes, (const QQ& a, const QQ& b, const QQ& c)) {
  RC_ASSERT(a * (b + c) == a * b + a * c);
}

RC_GTEST_PROP(QqArithmetic, AgreesWithGmp, ()) {
  const std::string first = *arbitraryFraction();
  const std::string second = *arbitraryFraction();
  const mpq_class x = gmpRational(first);
  const mpq_class y = gmpRational(second);
  const QQ a = toQQ(first);
  const QQ b = toQQ(second);
  RC_ASSERT(a == toQQ(x));
  RC_ASSERT(a + b == toQQ(mpq_class(x + y)));
  RC_ASSERT(a - b == toQQ(mpq_class(x - y)));
  RC_ASSERT(a * b == toQQ(mpq_class(x * y)));
  if (y != 0) RC_ASSERT(a / b == toQQ(mpq_class(x / y)));
}

RC_GTEST_PROP(QqArithmetic, ResultsAreCanonical, (const QQ& a, const QQ& b)) {
  RC_ASSERT(isCanonical(a));
  RC_ASSERT(isCanonical(a + b));
  RC_ASSERT(isCanonical(a - b));
  RC_ASSERT(isCanonical(a * b));
  if (!b.isZero()) RC_ASSERT(isCanonical(a / b));
  RC_ASSERT(isCanonical(-a));
}

RC_GTEST_PROP(QqArithmetic, OperandsMayBeTheResult, (const QQ& a)) {
  QQ x = a;
  x += *&x;
  RC_ASSERT(x == a * QQ(2));
  x = a;
  x -= *&x;
  RC_ASSERT(x.isZero());
  x = a;
  x *= *&x;
  RC_ASSERT(x == a * (a + QQ::zero()));
  RC_PRE(!a.isZero());
  x = a;
  x /= *&x;
  RC_ASSERT(x == QQ::one());
}

RC_GTEST_PROP(QqArithmetic, AddProductIsSumAndProduct, (const QQ& s, const QQ& a, const QQ& b)) {
  QQ sum = s;
  addProduct(sum, a, b);
  RC_ASSERT(sum == s + a * b);
  RC_ASSERT(isCanonical(sum));
  subtractProduct(sum, a, b);
  RC_ASSERT(sum == s);
  addProduct(sum, sum, b);
  RC_ASSERT(sum == s + s * b);
  sum = s;
  subtractProduct(sum, a, sum);
  RC_ASSERT(sum == s - a * s);
}

RC_GTEST_PROP(QqArithmetic, NegationIsItsOwnInverse, (const QQ& a)) {
  RC_ASSERT(-(-a) == a);
  RC_ASSERT(-a == QQ::minusOne() * a);
  RC_ASSERT(abs(a) == (a.sign() ? a : -a));
}

RC_GTEST_PROP(QqArithmetic, InfinitySwallowsFiniteNumbers, (const QQ& a)) {
  const QQ inf = QQ::infinity();
  RC_ASSERT(inf + a == inf);
  RC_ASSERT(a - inf == -inf);
  RC_ASSERT((a / inf).isZero());
  RC_ASSERT(inf / a == (a.sign() ? inf : -inf));
  RC_PRE(!a.isZero());
  RC_ASSERT(a * inf == (a.sign() ? inf : -inf));
  RC_ASSERT(-inf * a == (a.sign() ? -inf : inf));
  RC_ASSERT(a / QQ::zero() == (a.sign() ? inf : -inf));
}

RC_GTEST_PROP(QqArithmetic, PartsMakeUpTheNumber, (const QQ& a)) {
  RC_ASSERT(a.zaehler() < a.nenner());
  RC_ASSERT(QQ::canonicalise(a.sign(), a.ganze(), a.zaehler(), a.nenner()) == a);
  RC_ASSERT(QQ(a.numerator(), a.nenner()) == a);
  RC_ASSERT(QQ(a.numerator()) / a.denominator() == a);
}

RC_GTEST_PROP(QqArithmetic, EqualValuesHaveEqualHashes, (const QQ& a, const QQ& b)) {
  const QQ back = a + b - b;
  RC_ASSERT(back == a);
  RC_ASSERT(NumberTraits<QQ>::hash(back) == NumberTraits<QQ>::hash(a));
}

RC_GTEST_PROP(QqArithmetic, RemainderIsWhatTruncationLeaves, (const QQ& a, const QQ& b)) {
  RC_PRE(!b.isZero());
  const QQ rest = NumberTraits<QQ>::remainder(a, b);
  RC_ASSERT(abs(rest) < abs(b));
  RC_ASSERT(rest.isZero() || rest.sign() == a.sign());
  RC_ASSERT(((a - rest) / b).isInteger());
}

}  // namespace
}  // namespace starsift
