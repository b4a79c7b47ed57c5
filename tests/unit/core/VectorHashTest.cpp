#include "core/VectorHash.h"

#include <gtest/gtest.h>

#include <set>

namespace starsift {
namespace {

using Numbers = Vector<long double>;

TEST(VectorHash, IdenticalVectorsHaveTheSame) {
  EXPECT_EQ(hashOf(Numbers{1, 2.5L, -3}), hashOf(Numbers{1, 2.5L, -3}));
  EXPECT_EQ(hashOf(Numbers{}), hashOf(Numbers{}));
}

TEST(VectorHash, BothZerosHaveTheSame) {
  EXPECT_EQ(hashOf(Numbers{0.0L, 1}), hashOf(Numbers{-0.0L, 1}));
}

TEST(VectorHash, EachComponentCounts) {
  const Numbers base{1, 2, 3, 4, 5, 6, 7, 8, 9};
  for (Index i = 1; i <= base.dimension(); ++i) {
    Numbers other(base);
    other[i] += 1;
    EXPECT_NE(hashOf(other), hashOf(base)) << i;
    other[i] = -base[i];
    EXPECT_NE(hashOf(other), hashOf(base)) << i;
  }
}

TEST(VectorHash, OrderAndLengthCount) {
  std::set<std::size_t> hashes;
  const Numbers orders[] = {{1, 2, 3}, {1, 3, 2}, {2, 1, 3}, {2, 3, 1}, {3, 1, 2},
                            {3, 2, 1}, {1, 2},    {1},       {}};
  for (const Numbers& vector : orders) hashes.insert(hashOf(vector));
  EXPECT_EQ(hashes.size(), 9U);
  // Components a round of the chains apart.
  EXPECT_NE(hashOf(Numbers{1, 0, 0, 0, 2}), hashOf(Numbers{2, 0, 0, 0, 1}));
}

TEST(VectorHash, SmallVectorsHardlyShareOne) {
  std::set<std::size_t> hashes;
  for (int x = -10; x <= 10; ++x)
    for (int y = -10; y <= 10; ++y)
      for (int z = -10; z <= 10; ++z)
        hashes.insert(hashOf(Numbers{static_cast<long double>(x), static_cast<long double>(y),
                                     static_cast<long double>(z)}));
  EXPECT_EQ(hashes.size(), 21U * 21U * 21U);
}

TEST(VectorHash, StepLeavesComponentsOut) {
  EXPECT_EQ(hashOf(Numbers{1, 2, 3, 4, 5}, 2), hashOf(Numbers{1, 9, 3, 8, 5}, 2));
  EXPECT_EQ(hashOf(Numbers{1, 2, 3, 4, 5}, 4), hashOf(Numbers{1, 9, 9, 9, 5}, 4));
  EXPECT_NE(hashOf(Numbers{1, 2, 3, 4, 5}, 2), hashOf(Numbers{1, 2, 4, 4, 5}, 2));
  EXPECT_NE(hashOf(Numbers{1, 2, 3, 4, 5}, 2), hashOf(Numbers{1, 2, 3, 4, 6}, 2));
}

}  // namespace
}  // namespace starsift
