#include "certificates/Kernel.h"

#include <gtest/gtest.h>

#include "numbers/VectorQQ.h"
#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

using M = Matrix<QQ>;

TEST(SaturatedBasis, MayBePartOfABasisOfAllIntegers) {
  EXPECT_TRUE(isSaturatedBasis(M{{1, 0, 0}, {0, 1, 0}}));
  EXPECT_TRUE(isSaturatedBasis(M{{2, 3}}));
  EXPECT_TRUE(isSaturatedBasis(M{{2, 0, 1}, {0, 3, 1}}));
  EXPECT_TRUE(isSaturatedBasis(M(0, 3)));
}

TEST(SaturatedBasis, HasRowsWithoutCommonFactor) {
  EXPECT_FALSE(isSaturatedBasis(M{{2, 4}}));
  EXPECT_FALSE(isSaturatedBasis(M{{1, 0, 0}, {0, -3, 0}}));
}

TEST(SaturatedBasis, HasMinorsWithoutCommonFactor) {
  // Half the sum of the rows is a vector of integers.
  EXPECT_FALSE(isSaturatedBasis(M{{1, 1, 0}, {1, -1, 0}}));
  EXPECT_FALSE(isSaturatedBasis(M{{1, 2, 3}, {1, 5, 9}}));
}

TEST(SaturatedBasis, IsKnownThoughTwoMinorsHaveACommonFactor) {
  // The minors furthest left and right are 2 and 4, that of columns 1, 3 and 4 is 1.
  EXPECT_TRUE(isSaturatedBasis(M{{1, 0, 1, 0, 0}, {0, 2, 1, 2, 0}, {0, 0, 0, 1, 2}}));
  EXPECT_TRUE(isSaturatedBasis(M{{2, 1, 2}}));
}

TEST(SaturatedBasis, IsIndependentAndOfIntegers) {
  EXPECT_FALSE(isSaturatedBasis(M{{1, 0}, {1, 0}}));
  EXPECT_FALSE(isSaturatedBasis(M{{0, 0}}));
  EXPECT_FALSE(isSaturatedBasis(M{{QQ(1, 2), 1}}));
}

TEST(SaturatedBasis, IsKnownBehindAPrimeThatHidesARow) {
  EXPECT_TRUE(isSaturatedBasis(M{{1, 0, 0}, {1, 1'000'000'007, 1}}));
  EXPECT_FALSE(isSaturatedBasis(M{{1, 0, 0}, {1, 1'000'000'007, 0}}));
}

TEST(KernelBasis, SpansAllSolutions) {
  EXPECT_TRUE(isKernelBasis(M{{1, -1, 0}, {0, 1, -1}}, M{{1, 1, 1}}));
  EXPECT_TRUE(isKernelBasis(M{{3, -2}}, M{{2, 3}}));
  EXPECT_TRUE(isKernelBasis(M{{1, 1, -1}}, M{{1, 2, 3}, {0, 1, 1}}));
}

TEST(KernelBasis, OfNoEquationsSpansAllIntegers) {
  EXPECT_TRUE(isKernelBasis(M{{2, 1}, {1, 1}}, M(0, 2)));
  EXPECT_TRUE(isKernelBasis(M{{2, 1}, {1, 1}}, M{{0, 0}}));
  EXPECT_FALSE(isKernelBasis(M{{2, 1}, {1, 2}}, M(0, 2)));
}

TEST(KernelBasis, OfEquationsOfFullRankIsEmpty) {
  EXPECT_TRUE(isKernelBasis(M(0, 2), M{{1, 2}, {3, 4}}));
  EXPECT_FALSE(isKernelBasis(M(0, 2), M{{1, 2}, {2, 4}}));
}

TEST(KernelBasis, HasSolutionsOnly) {
  EXPECT_FALSE(isKernelBasis(M{{1, -1, 0}, {0, 1, 1}}, M{{1, 1, 1}}));
  EXPECT_FALSE(isKernelBasis(M{{3, 2}}, M{{2, 3}}));
}

TEST(KernelBasis, LacksNoSolution) {
  EXPECT_FALSE(isKernelBasis(M{{1, -1, 0}}, M{{1, 1, 1}}));
  EXPECT_FALSE(isKernelBasis(M{{1, -1, 0}, {1, 1, -2}}, M{{1, 1, 1}}));
  EXPECT_FALSE(isKernelBasis(M{{6, -4}}, M{{2, 3}}));
}

TEST(KernelBasis, IsIndependent) {
  EXPECT_FALSE(isKernelBasis(M{{1, -1, 0}, {-1, 1, 0}}, M{{1, 1, 1}}));
  EXPECT_FALSE(isKernelBasis(M{{1, -1, 0}, {0, 1, -1}, {0, 0, 0}}, M{{1, 1, 1}}));
}

TEST(KernelBasis, CountsDependentEquationsOnce) {
  EXPECT_TRUE(isKernelBasis(M{{1, -1, 0}, {0, 1, -1}}, M{{1, 1, 1}, {2, 2, 2}}));
}

TEST(KernelBasis, TakesFractionsInEquationsOnly) {
  EXPECT_TRUE(isKernelBasis(M{{3, -2}}, M{{QQ(1, 3), QQ(1, 2)}}));
  EXPECT_FALSE(isKernelBasis(M{{QQ(3, 2), -1}}, M{{QQ(1, 3), QQ(1, 2)}}));
}

TEST(KernelBasis, TakesLongDoublesForTheirDecimals) {
  using L = Matrix<long double>;
  EXPECT_TRUE(isKernelBasis(L{{3, -1}}, L{{0.1L, 0.3L}}));
  EXPECT_FALSE(isKernelBasis(L{{3, -1}}, L{{0.1L, 0.300000000000000001L}}));
}

TEST(KernelBasis, HasOneNumberOfColumns) {
  EXPECT_FALSE(isKernelBasis(M{{1, -1}}, M{{1, 1, 1}}));
  EXPECT_FALSE(isKernelBasis(M(), M{{1}}));
}

TEST(KernelBasis, RefusesAnInfiniteEntry) {
  EXPECT_FAILS_WITH(isKernelBasis(M{{1, -1}}, M{{QQ::infinity(), 1}}),
                    "exact matrix: infinite entry");
}

/// Solutions x of the one equation with coefficients 1, a, a^2 ...: each entry paid for
/// by the one before.
M kernelOfPowers(Index columns, const QQ& a) {
  M rows(columns - 1, columns);
  for (Index i = 1; i < columns; ++i) {
    rows[i][i] = -a;
    rows[i][i + 1] = QQ(1);
  }
  return rows;
}

TEST(KernelBasis, OfAHundredColumnsIsExact) {
  const QQ a(1'000'003);
  M equation(1, 100);
  equation[1][1] = QQ(1);
  for (Index j = 2; j <= 100; ++j) equation[1][j] = equation[1][j - 1] * a;
  M rows = kernelOfPowers(100, a);
  EXPECT_TRUE(isKernelBasis(rows, equation));
  for (Index j = 1; j <= 100; ++j) rows[50][j] = rows[50][j] + rows[50][j] + rows[49][j];
  EXPECT_FALSE(isKernelBasis(rows, equation));
}

}  // namespace
}  // namespace starsift
