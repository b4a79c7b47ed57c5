// The tests of rows: the roads over machine integers and over GMP against plain
// arithmetic of rationals.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

#include "stars/RowTests.h"

namespace starsift {
namespace {

/// Small integers, integers about the limits of machine words, fractions.
QQ arbitraryRational() {
  const QQ edge = QQ(1L << 62);
  switch (*rc::gen::inRange(0, 8)) {
    case 0:
      return QQ(*rc::gen::inRange(-3L, 4L), *rc::gen::inRange(1L, 8L));
    case 1:
      return QQ(*rc::gen::element(-1L, 1L)) * (edge + QQ(*rc::gen::inRange(-2L, 3L)));
    case 2:
      return QQ(*rc::gen::arbitrary<long>());
    default:
      return QQ(*rc::gen::inRange(-9L, 10L));
  }
}

Vector<QQ> arbitraryVector(Index n) {
  Vector<QQ> vector(n);
  for (QQ& component : vector) component = arbitraryRational();
  return vector;
}

/// The row and the point with one more column that takes no part: a half, so that
/// the road over machine integers is closed.
Vector<QQ> extended(Vector<QQ> vector, const QQ& last) {
  vector.insertComponent(vector.dimension() + 1, last);
  return vector;
}

/// The vector with a tail that has no common scale.
Vector<QQ> withoutScale(const Vector<QQ>& vector) {
  constexpr Index ones = 200;
  Vector<QQ> result(vector);
  result.resize(vector.dimension() + ones, false);
  std::fill(result.begin() + vector.dimension(), result.end(), QQ(1));
  result[result.dimension()] = QQ::parse("1e-9000");
  return result;
}

/// The vector with zeros in that place.
Vector<QQ> padded(const Vector<QQ>& vector) {
  Vector<QQ> result = withoutScale(vector);
  std::fill(result.begin() + vector.dimension(), result.end(), QQ(0));
  return result;
}

ExactPoint pointAt(const Vector<QQ>& x) {
  ExactPoint point;
  RC_ASSERT(point.assign(x));
  return point;
}

QQ boundNear(const QQ& value) {
  if (*rc::gen::inRange(0, 6) == 0) return *rc::gen::element(-QQ::infinity(), QQ::infinity());
  return value + QQ(*rc::gen::inRange(-1L, 2L), *rc::gen::element(1L, 1'000'000'000L));
}

RC_GTEST_PROP(IntervalTest, AdmitsWhatLiesBetweenItsBounds, ()) {
  const auto n = *rc::gen::inRange<Index>(1, 5);
  const Vector<QQ> row = arbitraryVector(n);
  const Vector<QQ> x = arbitraryVector(n);
  const QQ value = row * x;
  const QQ lower = boundNear(value);
  const QQ upper = boundNear(value);
  const bool expected = lower <= value && value <= upper;
  RC_ASSERT(IntervalTest(row, lower, upper).admits(pointAt(x)) == expected);
  RC_ASSERT(
      IntervalTest(extended(row, QQ(0)), lower, upper).admits(pointAt(extended(x, QQ(1, 2)))) ==
      expected);
}

RC_GTEST_PROP(IntervalTest, AdmitsTheSameWithoutACommonScale, ()) {
  const auto n = *rc::gen::inRange<Index>(1, 5);
  const Vector<QQ> row = arbitraryVector(n);
  const Vector<QQ> x = arbitraryVector(n);
  const QQ lower = boundNear(row * x);
  const QQ upper = boundNear(row * x);
  const bool expected = IntervalTest(row, lower, upper).admits(pointAt(x));
  RC_ASSERT(IntervalTest(withoutScale(row), lower, upper).admits(pointAt(padded(x))) == expected);
  RC_ASSERT(IntervalTest(padded(row), lower, upper).admits(pointAt(withoutScale(x))) == expected);
}

RC_GTEST_PROP(CongruenceTest, AdmitsWhatLeavesNoRemainder, ()) {
  const auto n = *rc::gen::inRange<Index>(1, 5);
  const Vector<QQ> row = arbitraryVector(n);
  const Vector<QQ> x = arbitraryVector(n);
  const QQ modulus = arbitraryRational();
  RC_PRE(!modulus.isZero());
  const QQ tolerance = *rc::gen::element(QQ(0), QQ(1, 1'000'000'000), QQ(1, 3), QQ(2));
  const QQ residue = QQ(*rc::gen::inRange(-2L, 3L)) * tolerance;
  const QQ value = *rc::gen::element(arbitraryRational(),
                                     row * x - modulus * QQ(*rc::gen::inRange(-3L, 4L)) + residue);
  const QQ difference = row * x - value;
  const QQ remainder = difference - trunc(difference / modulus) * modulus;
  const bool expected = abs(remainder) <= tolerance;
  RC_ASSERT(CongruenceTest(row, value, modulus, tolerance).admits(pointAt(x)) == expected);
  RC_ASSERT(CongruenceTest(extended(row, QQ(0)), value, modulus, tolerance)
                .admits(pointAt(extended(x, QQ(1, 2)))) == expected);
  RC_ASSERT(
      CongruenceTest(withoutScale(row), value, modulus, tolerance).admits(pointAt(padded(x))) ==
      expected);
  RC_ASSERT(
      CongruenceTest(padded(row), value, modulus, tolerance).admits(pointAt(withoutScale(x))) ==
      expected);
}

}  // namespace
}  // namespace starsift
