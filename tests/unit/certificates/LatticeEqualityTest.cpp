#include "certificates/LatticeEquality.h"

#include <gtest/gtest.h>

#include <random>

#include "numbers/VectorQQ.h"
#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

using M = Matrix<QQ>;

TEST(SameLattice, HasManyBases) {
  EXPECT_TRUE(sameLattice(M{{1, 0}, {0, 1}}, M{{2, 1}, {5, 3}}));
  EXPECT_TRUE(sameLattice(M{{2, 1}, {5, 3}}, M{{1, 0}, {0, 1}}));
  EXPECT_TRUE(sameLattice(M{{1, 2, 3}, {0, 1, 1}}, M{{-1, -1, -2}, {0, -1, -1}}));
}

TEST(SameLattice, HasNoSublattice) {
  EXPECT_FALSE(sameLattice(M{{1, 0}, {0, 1}}, M{{2, 0}, {0, 1}}));
  EXPECT_FALSE(sameLattice(M{{2, 0}, {0, 1}}, M{{1, 0}, {0, 1}}));
}

TEST(SameLattice, IsMoreThanTheSameDeterminant) {
  EXPECT_FALSE(sameLattice(M{{2, 0}, {0, 1}}, M{{1, 0}, {0, 2}}));
}

TEST(SameLattice, HasOneRank) {
  EXPECT_FALSE(sameLattice(M{{1, 0}, {0, 1}}, M{{1, 0}}));
  EXPECT_FALSE(sameLattice(M{{1, 0}}, M{{1, 0}, {0, 1}}));
}

TEST(SameLattice, LiesInOneSpan) {
  EXPECT_FALSE(sameLattice(M{{1, 0, 0}, {0, 1, 0}}, M{{1, 0, 0}, {0, 0, 1}}));
  EXPECT_FALSE(sameLattice(M{{1, 0, 0}, {0, 1, 0}}, M{{1, 0, 0}, {0, 1, 1}}));
}

TEST(SameLattice, TakesRowsOfZeros) {
  EXPECT_TRUE(sameLattice(M{{0, 0}, {1, 2}, {0, 0}}, M{{-1, -2}}));
  EXPECT_TRUE(sameLattice(M{{0, 0}}, M(0, 2)));
  EXPECT_FALSE(sameLattice(M{{0, 0}}, M{{0, 1}}));
}

TEST(SameLattice, TakesDependentRows) {
  EXPECT_TRUE(sameLattice(M{{4, 0}, {6, 0}, {0, 1}}, M{{2, 1}, {0, 1}}));
  EXPECT_FALSE(sameLattice(M{{4, 0}, {8, 0}, {0, 1}}, M{{2, 1}, {0, 1}}));
}

TEST(SameLattice, TakesFractions) {
  EXPECT_TRUE(sameLattice(M{{QQ(1, 2), QQ(1, 3)}}, M{{QQ(-1, 2), QQ(-1, 3)}}));
  EXPECT_FALSE(sameLattice(M{{QQ(1, 2), QQ(1, 3)}}, M{{3, 2}}));
  EXPECT_TRUE(sameLattice(M{{QQ(1, 2)}, {QQ(1, 3)}}, M{{QQ(1, 6)}}));
}

TEST(SameLattice, TakesLongDoublesForTheirDecimals) {
  using L = Matrix<long double>;
  EXPECT_TRUE(sameLattice(L{{0.1L, 0.2L}, {0.3L, 0.7L}}, L{{0.1L, 0}, {0, 0.1L}}));
  EXPECT_FALSE(sameLattice(L{{0.1L}}, L{{0.100000000000000001L}}));
}

TEST(SameLattice, HasOneNumberOfColumns) {
  EXPECT_FALSE(sameLattice(M{{1, 0}}, M{{1}}));
  EXPECT_FALSE(sameLattice(M(0, 1), M(0, 2)));
}

TEST(SameLattice, IsToldApartBehindAPrimeThatHidesARow) {
  const M hidden{{1, 0}, {1, 1'000'000'007}};
  EXPECT_TRUE(sameLattice(hidden, M{{0, 1'000'000'007}, {1, 0}}));
  EXPECT_FALSE(sameLattice(hidden, M{{1, 0}, {0, 1}}));
}

TEST(SameLattice, RefusesAnInfiniteEntry) {
  EXPECT_FAILS_WITH(sameLattice(M{{QQ::infinity()}}, M{{1}}), "exact matrix: infinite entry");
}

/// 60 rows of 70 numbers with a hundred digits.
M longRows(std::mt19937_64& random) {
  M rows(60, 70);
  for (Vector<QQ>& row : rows)
    for (QQ& entry : row)
      entry = QQ(pow(ZZ(static_cast<long>(random() % 20'001) - 10'000), ZZ(25)));
  return rows;
}

TEST(SameLattice, IsToldQuicklyAfterAFewSteps) {
  std::mt19937_64 random(1);
  const M before = longRows(random);
  M after = before;
  for (int step = 0; step < 100; ++step) {
    const auto i = static_cast<Index>(random() % 60) + 1;
    const auto k = static_cast<Index>(random() % 60) + 1;
    if (i == k) continue;
    const QQ factor(static_cast<long>(random() % 19) - 9);
    for (Index j = 1; j <= 70; ++j) addProduct(after[i][j], factor, after[k][j]);
    after.swapRows(i, k);
  }
  EXPECT_TRUE(sameLattice(before, after));
  EXPECT_TRUE(sameLattice(after, before));
  for (Index j = 1; j <= 70; ++j) after[7][j] = after[7][j] + after[7][j];
  EXPECT_FALSE(sameLattice(before, after));
}

}  // namespace
}  // namespace starsift
