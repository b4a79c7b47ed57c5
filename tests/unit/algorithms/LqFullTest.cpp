#include "algorithms/reduction/LqFull.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "support/fixtures/ExpectFails.h"
#include "support/oracles/OrthogonalCertificate.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::ExactRows;
using test::exactRows;
using test::tenth;
using M = Matrix<long double>;
using V = Vector<long double>;

constexpr long double nan = std::numeric_limits<long double>::quiet_NaN();

struct Factors {
  M L;
  M Q;
  Reflectors<long double> Ps;

  Index run(const M& a, Index kk = 1, Index mm = 0) { return lq_full(a, L, Q, Ps, kk, mm); }
};

/// The rank; every certificate is checked on the way.
Index rankOf(const M& a) {
  Factors factors;
  const Index rank = factors.run(a);
  EXPECT_TRUE(test::isProduct(exactRows(factors.L), exactRows(factors.Q), exactRows(a), tenth(17)));
  EXPECT_TRUE(test::areOrthogonal(exactRows(factors.Q), tenth(17)));
  EXPECT_EQ(factors.Q.rowCount(), a.columnCount());
  for (Index i = 1; i <= a.rowCount(); ++i) {
    for (Index j = i + 1; j <= a.columnCount(); ++j) EXPECT_LE(std::abs(factors.L[i][j]), eps);
  }
  return rank;
}

std::string refusal(const M& a, Factors factors = {}, Index kk = 1) {
  try {
    factors.run(a, kk);
  } catch (const DecimalPrecisionException& exception) {
    return exception.message();
  }
  return "factored";
}

TEST(LqFull, FactorsSquareAndOtherShapes) {
  EXPECT_EQ(rankOf({{3, 4, 0}, {4, 3, 1}, {1, 1, 7}}), 3);
  EXPECT_EQ(rankOf({{3, 4, 0}, {4, 3, 1}}), 2);
  EXPECT_EQ(rankOf({{3, 4}, {4, 3}, {1, 5}}), 2);
  EXPECT_EQ(rankOf({{-5}}), 1);
}

TEST(LqFull, FindsTheRankOfDependentRows) {
  EXPECT_EQ(rankOf({{1, 2, 3}, {1, 2, 3}}), 1);
  EXPECT_EQ(rankOf({{1, 2, 3, 4}, {4, 5, 6, 8}, {5, 7, 9, 12}}), 2);
  EXPECT_EQ(rankOf({{0, 0}, {1, 2}}), 1);
  EXPECT_EQ(rankOf({{0}}), 0);
}

TEST(LqFull, HasTheIdentityForQWithoutReflectors) {
  Factors factors;
  EXPECT_EQ(factors.run({{7}, {8}}), 1);
  EXPECT_EQ(factors.Ps.count(), 0);
  EXPECT_EQ(factors.Q[1][1], 1);
  EXPECT_EQ(factors.L[2][1], 8);
}

TEST(LqFull, HasADiagonalOfTheOppositeSign) {
  Factors factors;
  factors.run({{3, 4}, {-4, 3}});
  EXPECT_EQ(factors.L[1][1], -5);
  factors.run({{-3, 4}});
  EXPECT_EQ(factors.L[1][1], 5);
}

TEST(LqFull, FactorsOneRow) {
  const M a{{3, 4, 0}, {4, 3, 1}, {1, 1, 7}};
  Factors factors;
  factors.run(a, 1, 2);
  EXPECT_EQ(factors.L.rowCount(), 2);
  EXPECT_EQ(factors.run(a, 3, 3), 3);
  EXPECT_TRUE(test::isProduct(exactRows(factors.L), exactRows(factors.Q), exactRows(a), tenth(17)));
}

TEST(LqFull, LeavesTheRowsBeforeTheFirstAlone) {
  const M a{{3, 4, 0}, {4, 3, 1}, {1, 1, 7}};
  Factors factors;
  factors.run(a);
  factors.Q[2] = V{9, 9, 9};
  factors.run(a, 3, 3);
  EXPECT_TRUE(identical(factors.Q[2], V{9, 9, 9}));
}

TEST(LqFull, RestartsFromTheReflectorsThatThereAre) {
  const M a{{3}, {4}};
  Factors factors;
  EXPECT_EQ(factors.run(a), 1);
  EXPECT_EQ(factors.run(a, 2, 2), 1);
  EXPECT_EQ(factors.L[2][1], 4);
}

TEST(LqFull, ProductOfTheReflectorsTurnsTheBasisIntoL) {
  const M a{{3, 4, 0}, {4, 3, 1}, {1, 1, 7}};
  Factors factors;
  factors.run(a);
  ASSERT_EQ(factors.Ps.count(), 2);
  const M product = a * factors.Ps.product(2, 3);
  for (Index i = 1; i <= 3; ++i) EXPECT_TRUE(product[i] == factors.L[i]);
  const M none = factors.Ps.product(0, 3);
  EXPECT_TRUE(identical(none[2], V{0, 1, 0}));
}

TEST(LqFull, ThrowsForANanInTheReflectors) {
  EXPECT_EQ(refusal({{nan, 1}, {1, 1}}), "Ps has nan entry");
  EXPECT_EQ(refusal({{1, 1}, {1, 1e2500L}, {1, 1}}), "factored");
  EXPECT_EQ(refusal({{1, 1e2500L}, {1, 1}}), "Ps has nan entry");
}

TEST(LqFull, ThrowsForANanInTheTriangle) {
  EXPECT_EQ(refusal({{1}, {nan}}), "L has nan entry");
  EXPECT_EQ(refusal({{1, 0}, {0, 1}, {nan, 0}}), "L has nan entry");
}

TEST(LqFull, ThrowsForANanInTheOrthogonalFactor) {
  // The row is 0, so nothing shows in it what the reflectors do to others.
  Factors factors;
  factors.run({{1, 0, 0}, {0, 1, 0}});
  factors.Ps.set(1, {V{1e4900L, 1e4900L, 0}, -1});
  factors.Ps.set(2, {V{1e4900L, 1e4900L}, -1});
  EXPECT_EQ(refusal({{1, 0, 0}, {0, 1, 0}, {0, 0, 0}}, factors, 3), "Q has nan entry");
}

TEST(LqFull, RefusesIndicesThatAreNoRows) {
  Factors factors;
  const M a{{1, 0}, {0, 1}};
  EXPECT_FAILS_WITH(factors.run(a, 0, 3), "lq_full: kk is invalid (< 1)");
  EXPECT_FAILS_WITH(factors.run(a, 4, 3), "lq_full: end index overflow");
  EXPECT_FAILS_WITH(factors.run(a, 2, 1), "lq_full: dimension mismatch");
  EXPECT_FAILS_WITH(factors.run(a, 3, 0), "lq_full: dimension mismatch");
}

TEST(Reflector, TurnsItsRowIntoAMultipleOfAUnitVector) {
  const M a{{3, 4}};
  M reflector;
  Ps(a, reflector, 1);
  EXPECT_TRUE(a[1] * reflector == (V{-5, 0}));
  EXPECT_EQ(reflector[1][2], reflector[2][1]);
}

TEST(Reflector, OfALaterColumnIsSmaller) {
  M reflector;
  Ps({{9, 9, 9}, {7, -3, 4}}, reflector, 2);
  ASSERT_EQ(reflector.rowCount(), 2);
  EXPECT_TRUE((V{-3, 4} * reflector == V{5, 0}));
}

TEST(Reflector, OfAZeroRowIsTheIdentity) {
  M reflector;
  Ps({{0, 0, 0}}, reflector, 1);
  for (Index i = 1; i <= 3; ++i) EXPECT_TRUE(identical(reflector[i], M::identity(3)[i]));
}

TEST(Reflector, TakesALengthUpToTheToleranceForZero) {
  M reflector;
  Ps({{1e-9L, 0}}, reflector, 1);
  EXPECT_EQ(reflector[1][1], 1);
  Ps({{1.1e-9L, 0}}, reflector, 1);
  EXPECT_EQ(reflector[1][1], -1);
}

TEST(Reflector, RefusesANan) {
  M reflector;
  EXPECT_THROW(Ps({{1, nan}}, reflector, 1), DecimalPrecisionException);
}

TEST(Reflectors, AreIdentitiesWhenTheyAreNew) {
  Reflectors<long double> reflectors;
  reflectors.resize(1);
  reflectors.set(1, {V{1, 1}, -1});
  reflectors.resize(0);
  reflectors.resize(1);
  V row{3, 4};
  reflectors.apply(1, row);
  EXPECT_TRUE(identical(row, V{3, 4}));
}

}  // namespace
}  // namespace starsift
