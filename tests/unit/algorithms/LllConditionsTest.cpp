#include "algorithms/reduction/LllConditions.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

using M = Matrix<long double>;
using V = Vector<long double>;

TEST(SizeReduced, HoldsForExactlyEta) {
  EXPECT_TRUE(sizeReduced(2, 1, M{{1, 0}, {0.5L, 1}}, 0.5L));
  EXPECT_TRUE(sizeReduced(2, 1, M{{1, 0}, {-0.5L, 1}}, 0.5L));
}

TEST(SizeReduced, FailsBeyondEtaInEitherDirection) {
  EXPECT_FALSE(sizeReduced(2, 1, M{{1, 0}, {0.5000001L, 1}}, 0.5L));
  EXPECT_FALSE(sizeReduced(2, 1, M{{1, 0}, {-0.5000001L, 1}}, 0.5L));
}

TEST(SizeReduced, LooksAtTheOneCoefficient) {
  const M mu{{1, 0, 0}, {7, 1, 0}, {0.25L, 7, 1}};
  EXPECT_TRUE(sizeReduced(3, 1, mu, 0.5L));
  EXPECT_FALSE(sizeReduced(3, 2, mu, 0.5L));
}

TEST(LovaszHolds, WithEqualityToo) {
  // 2 + (1/2)^2 * 4 == 3/4 * 4
  EXPECT_TRUE(lovaszHolds(2, M{{1, 0}, {0.5L, 1}}, V{4, 2}, 0.75L));
  EXPECT_FALSE(lovaszHolds(2, M{{1, 0}, {0.5L, 1}}, V{4, 1.999L}, 0.75L));
}

TEST(LovaszHolds, CountsWhatLiesAlongTheRowBefore) {
  EXPECT_TRUE(lovaszHolds(2, M{{1, 0}, {-0.5L, 1}}, V{4, 2}, 0.75L));
  EXPECT_FALSE(lovaszHolds(2, M{{1, 0}, {0, 1}}, V{4, 2}, 0.75L));
}

TEST(LovaszHolds, ComparesNeighbours) {
  const M mu{{1, 0, 0}, {0, 1, 0}, {0.5L, 0, 1}};
  EXPECT_TRUE(lovaszHolds(3, mu, V{100, 4, 4}, 0.75L));
  EXPECT_FALSE(lovaszHolds(2, mu, V{100, 4, 4}, 0.75L));
}

}  // namespace
}  // namespace starsift
