#include "algorithms/reduction/SizeReduce.h"

#include <gtest/gtest.h>

#include <span>
#include <vector>

#include "numbers/VectorQQ.h"
#include "support/fixtures/TextOf.h"

namespace starsift {
namespace {

using test::textOf;

template <class T>
class SizeReduceOver : public testing::Test {};
using NumberTypes = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(SizeReduceOver, NumberTypes);

TYPED_TEST(SizeReduceOver, SubtractsAMultipleOfARow) {
  for (const int q : {1, -1, 3, -7, 0}) {
    Vector<TypeParam> row{TypeParam(4), TypeParam(0), TypeParam(-2)};
    const Vector<TypeParam> other{TypeParam(1), TypeParam(5), TypeParam(0)};
    subtractMultiple(row, other, TypeParam(q));
    EXPECT_TRUE(
        identical(row, Vector<TypeParam>{TypeParam(4 - q), TypeParam(-5 * q), TypeParam(-2)}));
  }
}

TYPED_TEST(SizeReduceOver, SupNormIsTheGreatestMagnitude) {
  EXPECT_EQ(supNorm(Vector<TypeParam>{TypeParam(4), TypeParam(-9), TypeParam(2)}), TypeParam(9));
  EXPECT_EQ(supNorm(Vector<TypeParam>{TypeParam(4), TypeParam(0)}), TypeParam(4));
  EXPECT_EQ(supNorm(Vector<TypeParam>()), TypeParam(0));
}

TEST(SizeReduce, CoefficientsFollowTheRow) {
  for (const long double q : {1.0L, -1.0L, 4.0L}) {
    Matrix<long double> mu{{1, 0, 0, 0}, {0.25L, 1, 0, 0}, {0.5L, 0.75L, 1, 0}, {8, 9, 10, 1}};
    subtractCoefficients(mu, 4, {3, q}, 1);
    EXPECT_EQ(mu[4][1], 8 - q * 0.5L);
    EXPECT_EQ(mu[4][2], 9 - q * 0.75L);
    EXPECT_EQ(mu[4][3], 10 - q);
    EXPECT_EQ(mu[4][4], 1);
  }
}

TEST(SizeReduce, CoefficientsOfSeveralRowsAreThoseOfOneAfterTheOther) {
  constexpr Index order = 9;
  Matrix<long double> mu(order, order);
  for (Index i = 1; i <= order; ++i)
    for (Index j = 1; j <= order; ++j) mu[i][j] = 1.0L / (3 * i + j);
  Matrix<long double> expected(mu);
  // Six rows: four together, two alone.
  std::vector<RowMultiple<long double>> multiples;
  for (Index j = order - 1; j >= 3; --j) {
    multiples.push_back({j, j % 2 == 0 ? 1.0L : -3.0L});
    subtractCoefficients(expected, order, multiples.back(), 1);
  }
  ASSERT_EQ(multiples.size(), 6U);
  subtractCoefficients(mu, order, std::span<const RowMultiple<long double>>(multiples), 2);
  EXPECT_EQ(mu[order][1], expected[order][1]);
  EXPECT_EQ(mu[order][2], expected[order][2]);
  EXPECT_EQ(mu[order][3], 1.0L / (3 * order + 3));
}

}  // namespace
}  // namespace starsift
