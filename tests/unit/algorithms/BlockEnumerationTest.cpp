#include "algorithms/reduction/BlockEnumeration.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace starsift {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;

constexpr BlockPruning prunings[] = {BlockPruning::complete, BlockPruning::linear,
                                     BlockPruning::strong, BlockPruning::extreme};

/// Rows whose lengths decrease like those of a reduced basis, with coefficients below 1/2.
ProjectedBlock reducedBlock(std::size_t d) {
  ProjectedBlock block;
  unsigned state = 1;
  for (std::size_t i = 0; i < d; ++i) {
    block.lengths.push_back(std::pow(0.93, static_cast<double>(i)));
    block.mu.emplace_back();
    for (std::size_t k = 0; k < i; ++k) {
      state = state * 1103515245U + 12345U;
      block.mu[i].push_back(static_cast<double>(state >> 16U) / 65536.0 - 0.5);
    }
  }
  return block;
}

BlockResult shortest(const ProjectedBlock& block, BlockPruning pruning = BlockPruning::complete,
                     double bound = 0.99) {
  return enumerateBlock(block, {bound, pruning, {}});
}

TEST(BlockEnumeration, FindsAShortCombination) {
  // Rows (4, 0) and (2, 1): twice the second one less the first one is (0, 2).
  const ProjectedBlock block{{{}, {0.5}}, {16, 1}};
  const BlockResult result = shortest(block, BlockPruning::complete, 15.9);
  ASSERT_TRUE(result.shortest);
  EXPECT_NEAR(result.shortest->squaredLength, 4, 1e-12);
  EXPECT_THAT(result.shortest->coefficients, ElementsAre(-1, 2));
}

TEST(BlockEnumeration, FindsNothingIfNothingIsBelowTheBound) {
  EXPECT_FALSE(shortest({{{}}, {1}}, BlockPruning::complete, 1).shortest);
  EXPECT_FALSE(shortest({{{}, {0.5}}, {16, 1}}, BlockPruning::complete, 4).shortest);
  EXPECT_TRUE(shortest({{{}}, {1}}, BlockPruning::complete, 1.1).shortest);
}

TEST(BlockEnumeration, LastCoefficientOtherThanZeroIsPositive) {
  for (const std::size_t d : {5U, 9U, 14U, 20U}) {
    const BlockResult result = shortest(reducedBlock(d));
    ASSERT_TRUE(result.shortest);
    std::vector<double> x = result.shortest->coefficients;
    while (x.back() == 0) x.pop_back();
    EXPECT_GT(x.back(), 0);
  }
}

TEST(BlockEnumeration, PrunedTreesAreSmallerAndFindNothingShorter) {
  const ProjectedBlock block = reducedBlock(32);
  std::uint64_t nodes = ~std::uint64_t{0};
  double length = 0;
  for (const BlockPruning pruning : prunings) {
    const BlockResult result = shortest(block, pruning);
    EXPECT_LT(result.nodes, nodes);
    nodes = result.nodes;
    const double found = result.shortest ? result.shortest->squaredLength : 1;
    EXPECT_GE(found, length - 1e-12);
    length = std::max(length, found);
  }
}

TEST(BlockEnumeration, BoundsOfNodesAscendToTheWholeBound) {
  for (const std::size_t d : {1U, 2U, 7U, 40U}) {
    EXPECT_THAT(pruningBounds(BlockPruning::complete, d), Each(1.0));
    std::vector<double> before(d, 1.0);
    for (const BlockPruning pruning : prunings) {
      const std::vector<double> bounds = pruningBounds(pruning, d);
      ASSERT_EQ(bounds.size(), d);
      EXPECT_GT(bounds.front(), 0);
      EXPECT_EQ(bounds.back(), 1);
      EXPECT_TRUE(std::is_sorted(bounds.begin(), bounds.end()));
      for (std::size_t k = 0; k < d; ++k) EXPECT_LE(bounds[k], before[k]);
      before = bounds;
    }
  }
}

TEST(BlockEnumeration, EndsWhenItIsToldTo) {
  int calls = 0;
  const BlockResult whole = enumerateBlock(reducedBlock(30), {0.99, BlockPruning::complete, {}});
  const BlockResult ended =
      enumerateBlock(reducedBlock(30), {0.99, BlockPruning::complete, [&] { return ++calls < 3; }});
  EXPECT_EQ(calls, 3);
  EXPECT_LT(ended.nodes, whole.nodes);
  EXPECT_EQ(ended.nodes, 3000U);
}

}  // namespace
}  // namespace starsift
