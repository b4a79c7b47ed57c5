#include "algorithms/exact/Determinant.h"

#include <gtest/gtest.h>

#include "support/fixtures/IntegerRows.h"

namespace starsift {
namespace {

using test::integerMatrix;

/// Rows 1, x, x^2 ... for x = 1, 2 ... : the determinant is the product of factorials.
IntegerMatrix vandermonde(long order) {
  IntegerMatrix matrix;
  for (long x = 1; x <= order; ++x) {
    std::vector<ZZ>& row = matrix.emplace_back();
    for (long power = 0; power < order; ++power) row.push_back(pow(ZZ(x), ZZ(power)));
  }
  return matrix;
}

ZZ productOfFactorials(long count) {
  ZZ factorial = ZZ::one();
  ZZ product = ZZ::one();
  for (long k = 1; k <= count; ++k) product *= factorial *= ZZ(k);
  return product;
}

TEST(Determinant, HasItsSign) {
  EXPECT_EQ(determinant(integerMatrix({{2, 1}, {5, 7}})), ZZ(9));
  EXPECT_EQ(determinant(integerMatrix({{5, 7}, {2, 1}})), ZZ(-9));
  EXPECT_EQ(determinant(integerMatrix({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}})), ZZ(0));
}

TEST(Determinant, OfNoRowsIsOne) {
  EXPECT_EQ(determinant({}), ZZ(1));
}

TEST(Determinant, ReachesTheBound) {
  // Orthogonal rows.
  const ZZ a = pow(ZZ(10), ZZ(50));
  const ZZ b = pow(ZZ(3), ZZ(90));
  EXPECT_EQ(determinant({{a, b}, {-b, a}}), a * a + b * b);
  EXPECT_EQ(determinant({{b, a}, {a, -b}}), -a * a - b * b);
}

TEST(Determinant, OfHundredsOfDigitsIsExact) {
  EXPECT_EQ(determinant(vandermonde(40)), productOfFactorials(39));
}

TEST(Determinant, IsZeroModuloAPrimeWithoutBeingZero) {
  EXPECT_EQ(determinant(integerMatrix({{1'000'000'007, 0}, {0, 1}})), ZZ(1'000'000'007));
}

TEST(DeterminantBits, TakeTheShorterOfRowsAndColumns) {
  const ZZ big = pow(ZZ(2), ZZ(100));
  EXPECT_LE(determinantBits({{big, ZZ(0)}, {big, ZZ(1)}}), 105U);
  EXPECT_LE(determinantBits({{big, big}, {ZZ(0), ZZ(1)}}), 105U);
  EXPECT_GE(determinantBits({{big, ZZ(0)}, {ZZ(0), ZZ(1)}}), 100U);
}

TEST(UnitDeterminant, IsOneOrMinusOne) {
  EXPECT_TRUE(hasUnitDeterminant(integerMatrix({{2, 1}, {5, 3}})));
  EXPECT_TRUE(hasUnitDeterminant(integerMatrix({{5, 3}, {2, 1}})));
  EXPECT_TRUE(hasUnitDeterminant({}));
  EXPECT_FALSE(hasUnitDeterminant(integerMatrix({{2, 1}, {4, 3}})));
  EXPECT_FALSE(hasUnitDeterminant(integerMatrix({{2, 1}, {4, 2}})));
}

TEST(UnitDeterminant, IsMoreThanOneModuloTheFirstPrime) {
  EXPECT_FALSE(hasUnitDeterminant(integerMatrix({{1'000'000'006, 0}, {0, 1}})));
  const ZZ big = ZZ(1'000'000'007) * ZZ(1'000'000'009) * ZZ(1'000'000'021);
  EXPECT_FALSE(hasUnitDeterminant({{big + ZZ(1), ZZ(0)}, {ZZ(0), ZZ(1)}}));
}

TEST(UnitDeterminant, HasOneSignForAllPrimes) {
  // 1 modulo the first prime, -1 modulo the second one.
  const ZZ value(1'000'000'008);
  EXPECT_FALSE(hasUnitDeterminant({{value, ZZ(0)}, {ZZ(0), ZZ(1)}}));
  EXPECT_FALSE(hasUnitDeterminant({{-value, ZZ(0)}, {ZZ(0), ZZ(1)}}));
}

}  // namespace
}  // namespace starsift
