#include "algorithms/exact/Unimodular.h"

#include <gtest/gtest.h>

#include <random>

#include "numbers/VectorQQ.h"
#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

TEST(Unimodular, IsTheIdentity) {
  EXPECT_TRUE(isUnimodular(Matrix<QQ>::identity(3)));
  EXPECT_TRUE(isUnimodular(Matrix<long double>::identity(3)));
}

TEST(Unimodular, IsAMatrixWithoutRows) {
  EXPECT_TRUE(isUnimodular(Matrix<QQ>()));
}

TEST(Unimodular, IsAnExchangeOfRows) {
  EXPECT_TRUE(isUnimodular(Matrix<QQ>{{0, 1}, {1, 0}}));
}

TEST(Unimodular, IsNothingThatIsNotSquare) {
  EXPECT_FALSE(isUnimodular(Matrix<QQ>{{1, 0}}));
  EXPECT_FALSE(isUnimodular(Matrix<QQ>{{1}, {0}}));
}

TEST(Unimodular, IsNoMatrixOfAnotherDeterminant) {
  EXPECT_FALSE(isUnimodular(Matrix<QQ>{{1, 1}, {1, 1}}));
  EXPECT_FALSE(isUnimodular(Matrix<QQ>{{1, 1}, {-1, 1}}));
  EXPECT_FALSE(isUnimodular(Matrix<QQ>{{0, 0}, {0, 0}}));
}

TEST(Unimodular, IsAMatrixWithARestThatIs) {
  EXPECT_TRUE(isUnimodular(Matrix<QQ>{{1, 5, 7, 0}, {0, 2, 1, 0}, {0, 1, 1, 0}, {8, 9, 4, -1}}));
  EXPECT_FALSE(isUnimodular(Matrix<QQ>{{1, 5, 7, 0}, {0, 2, 1, 0}, {0, 2, 2, 0}, {8, 9, 4, -1}}));
  EXPECT_FALSE(isUnimodular(Matrix<QQ>{{1, 5, 7, 0}, {0, 2, 1, 0}, {0, 1, 1, 0}, {8, 9, 4, 2}}));
}

TEST(Unimodular, IsNoMatrixWithAFractionOutsideOfTheRest) {
  EXPECT_FALSE(isUnimodular(Matrix<QQ>{{1, QQ(1, 2), 0}, {0, 2, 1}, {0, 1, 1}}));
}

TEST(Unimodular, IsNoMatrixOfFractions) {
  EXPECT_FALSE(isUnimodular(Matrix<QQ>{{QQ(1, 2), 0}, {0, 2}}));
  EXPECT_FALSE(isUnimodular(Matrix<long double>{{0.5L, 0}, {0, 2}}));
  EXPECT_FALSE(isUnimodular(Matrix<QQ>{{1, QQ(1, 3)}, {0, 1}}));
}

TEST(Unimodular, RefusesAnInfiniteEntry) {
  EXPECT_FAILS_WITH(isUnimodular(Matrix<QQ>{{QQ::infinity()}}), "exact matrix: infinite entry");
}

/// A product of triangular matrices with ones in their diagonals: entries of forty
/// digits, and a longer inverse.
Matrix<QQ> longUnimodular(Index order) {
  std::mt19937_64 random(1);
  const auto entry = [&random] { return QQ(static_cast<long>(random() % 2'001) - 1'000); };
  Matrix<QQ> lower = Matrix<QQ>::identity(order);
  Matrix<QQ> upper = Matrix<QQ>::identity(order);
  for (Index i = 1; i <= order; ++i)
    for (Index j = 1; j < i; ++j) {
      lower[i][j] = entry() * entry() * entry() * entry();
      upper[j][i] = entry() * entry() * entry() * entry();
    }
  return lower * upper * lower;
}

TEST(Unimodular, IsExactForSixtyRowsOfLongEntries) {
  Matrix<QQ> matrix = longUnimodular(60);
  EXPECT_TRUE(isUnimodular(matrix));
  matrix[17][23] += QQ(1);
  EXPECT_FALSE(isUnimodular(matrix));
}

}  // namespace
}  // namespace starsift
