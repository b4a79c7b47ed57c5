#include "algorithms/reduction/RowProducts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <utility>
#include <vector>

#include "algorithms/reduction/GramSchmidt.h"
#include "algorithms/reduction/SizeReduce.h"

namespace starsift {
namespace {

using M = Matrix<long double>;
using V = Vector<long double>;

/// Gram-Schmidt data that a step brings up to date, beside data made anew.
class RowProductsOf : public testing::Test {
 protected:
  static constexpr Index n = 11;

  void SetUp() override {
    std::mt19937 random(7);
    for (Vector<long double>& row : rows)
      for (long double& entry : row) entry = static_cast<long double>(random() % 2001) - 1000;
    products.resize(n);
    update(1, n);
  }

  void update(Index first, Index last) {
    for (Index k = first; k <= last; ++k) classicGramSchmidt(rows, k, products, mu, cLen, bSq);
  }

  void exchange(Index i, Index j) {
    rows.swapRows(i, j);
    products.swap(i, j);
  }

  /// As size reduction does.
  void subtract(Index k, Index j, long double q) {
    subtractCoefficients(mu, k, {j, q}, 1);
    products.subtract(rows, k, {{j, q}});
    products.keep(k, j, mu[k], cLen);
  }

  /// Of the data that are kept from those that aren't, relative to the coefficients 1.
  long double error() const {
    M newMu(n, n);
    V newLengths(n);
    V newSquares(n);
    RowProducts<long double> fresh;
    fresh.resize(n);
    long double worst = 0;
    for (Index k = 1; k <= n; ++k) {
      classicGramSchmidt(rows, k, fresh, newMu, newLengths, newSquares);
      worst = std::max(worst, std::fabs(newLengths[k] / cLen[k] - 1));
      worst = std::max(worst, std::fabs(newSquares[k] - bSq[k]));
      for (Index j = 1; j <= k; ++j) worst = std::max(worst, std::fabs(newMu[k][j] - mu[k][j]));
    }
    return worst;
  }

  static constexpr long double rounding = 1e-15L;

  M rows{n, n + 2};
  M mu{n, n};
  V cLen{V(n)};
  V bSq{V(n)};
  RowProducts<long double> products;
};

TEST_F(RowProductsOf, RowsThatStayAreTheSame) {
  update(1, n);
  EXPECT_EQ(error(), 0);
}

TEST_F(RowProductsOf, ExchangedNeighboursAreRight) {
  exchange(4, 5);
  update(4, n);
  EXPECT_LT(error(), rounding);
  exchange(10, 11);
  exchange(2, 1);
  update(1, n);
  EXPECT_LT(error(), rounding);
}

TEST_F(RowProductsOf, ExchangedDistantRowsAreRight) {
  exchange(9, 3);
  update(3, n);
  EXPECT_LT(error(), rounding);
}

TEST_F(RowProductsOf, RowsBehindTheirOldPlaceAreRight) {
  // A row goes down and up again while others change before it.
  exchange(6, 7);
  update(6, 6);
  exchange(5, 6);
  update(5, 7);
  exchange(6, 7);
  exchange(5, 6);
  update(5, n);
  EXPECT_LT(error(), rounding);
}

TEST_F(RowProductsOf, ReducedRowIsRight) {
  subtract(8, 7, 3);
  subtract(8, 2, -1);
  update(8, n);
  EXPECT_LT(error(), rounding);
}

TEST_F(RowProductsOf, ReducedRowIsRightWhereItIsNotKept) {
  rows[8][1] += 1000 * rows[3][1];
  for (Index i = 2; i <= n + 2; ++i) rows[8][i] += 1000 * rows[3][i];
  products.change(8, 1000);
  update(8, n);
  // What is left of a row a thousand times as long has lost six digits.
  EXPECT_LT(error(), 1e6L * rounding);
}

TEST_F(RowProductsOf, ChangedRowIsRight) {
  rows[5][3] += 17;
  products.forget(5);
  update(5, n);
  EXPECT_LT(error(), rounding);
}

TEST_F(RowProductsOf, AllRowsAreRightAfterAnyChange) {
  for (Index k = 1; k <= n; ++k) rows[k][k] += 99;
  products.forgetAll();
  update(1, n);
  EXPECT_EQ(error(), 0);
}

TEST_F(RowProductsOf, RowsOfAnotherNumberAreNew) {
  rows[1][1] += 1;
  products.resize(n - 1);
  products.resize(n);
  update(1, n);
  EXPECT_EQ(error(), 0);
}

// The products would be those of a row that long since isn't there.
TEST_F(RowProductsOf, RoundingErrorsDoNotGrowForEver) {
  for (int round = 0; round < 200; ++round) {
    subtract(n, 1, round % 2 == 0 ? 40 : -40);
    update(n, n);
  }
  EXPECT_LT(error(), rounding);
}

TEST_F(RowProductsOf, ProductsOfAChangedRowAreMadeAnewUnlessKept) {
  rows[n][1] += 5;
  update(n, n);
  EXPECT_GT(error(), rounding);
  products.change(n, 1);
  update(n, n);
  EXPECT_LT(error(), rounding);
}

TEST(RowProducts, OfIntegersHaveNoRoundingErrors) {
  const M rows{{1, 2, 3}, {2, -1, 0}, {5, 0, 7}};
  M mu(3, 3);
  RowProducts<long double> products;
  products.resize(3);
  mu[2][1] = 0;
  const V& third = products.ofRow(rows, 3, mu, V{14, 5, 0});
  EXPECT_EQ(third[1], 26);
  EXPECT_EQ(third[2], 10);
  EXPECT_EQ(products.squaredLength(rows, 3), 74);
}

/// Asks for the product of a row with (1, -1); the exact one is -7, and who asks for it is seen.
class RoundedRowProducts : public testing::Test {
 protected:
  long double productWith(const V& second) {
    rows[2] = second;
    products.resize(2);
    products.roundedFrom([this](Index i, Index j) {
      asked.emplace_back(i, j);
      return -7.0L;
    });
    return products.ofRow(rows, 2, M(2, 2), V{length, 0})[1];
  }

  M rows{{1, -1}, {0, 0}};
  long double length = 2;
  RowProducts<long double> products;
  std::vector<std::pair<Index, Index>> asked;
};

TEST_F(RoundedRowProducts, AreExactWhereCancellationLeavesTooLittle) {
  EXPECT_EQ(productWith({0x1p60L + 1, 0x1p60L}), -7);
  EXPECT_EQ(asked, (std::vector<std::pair<Index, Index>>{{2, 1}}));
}

TEST_F(RoundedRowProducts, AreTakenAsTheyAreWhereMostDigitsAreLeft) {
  EXPECT_EQ(productWith({0x1p60L, 0x1p59L}), 0x1p59L);
  EXPECT_TRUE(asked.empty());
}

TEST_F(RoundedRowProducts, AreTakenAsTheyAreWhereTheCoefficientIsSmallAllTheSame) {
  length = 0x1p40L;
  EXPECT_EQ(productWith({0x1p60L + 1, 0x1p60L}), 1);
  EXPECT_TRUE(asked.empty());
}

TEST_F(RoundedRowProducts, OfShortRowsAreExactAnyway) {
  length = 0;
  EXPECT_EQ(productWith({0x1p45L + 1, 0x1p45L}), 1);
  EXPECT_TRUE(asked.empty());
}

TEST(RowProducts, MayBeForgottenBeforeThereAreAny) {
  RowProducts<long double> products;
  products.forget(3);
  products.change(3, 1);
  products.swap(1, 3);
  products.forgetAll();
  products.resize(1);
  EXPECT_EQ(products.squaredLength(M{{3, 4}}, 1), 25);
}

/// Row 4 of `rows` minus multiples of the others, by the products and one by one.
void compareSubtraction(M rows) {
  const std::vector<RowMultiple<long double>> multiples{{3, 2}, {2, -1}, {1, 5}};
  M expected(rows);
  for (const auto& one : multiples) subtractMultiple(expected[4], expected[one.row], one.factor);
  RowProducts<long double> products;
  products.resize(4);
  products.squaredLength(rows, 4);
  products.subtract(rows, 4, multiples);
  EXPECT_TRUE(identical(rows, expected));
  EXPECT_EQ(products.squaredLength(rows, 4), expected[4] * expected[4]);
}

TEST(RowProducts, SubtractMultiplesOfShortRows) {
  compareSubtraction({{1, 0, 2}, {0, -3, 1}, {7, 8, 9}, {10, 20, 30}});
}

TEST(RowProducts, SubtractMultiplesOfLongRows) {
  compareSubtraction({{1, 0, 2}, {0, 0x1p54L + 1, 1}, {7, 8, 9}, {10, 20, 30}});
  compareSubtraction({{1, 0, 2}, {0, 3, 1}, {7, 8, 9}, {10, 0x1p53L - 1, 30}});
}

TEST(RowProducts, SubtractMultiplesBeforeTheyHaveASize) {
  M rows{{1, 2}, {3, 4}};
  RowProducts<long double> products;
  products.subtract(rows, 2, {{1, 3}});
  EXPECT_TRUE(identical(rows, M{{1, 2}, {0, -2}}));
}

}  // namespace
}  // namespace starsift
