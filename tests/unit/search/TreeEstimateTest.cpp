#include "search/enumeration/TreeEstimate.h"

#include <gtest/gtest.h>

#include <cmath>

#include "search/enumeration/Enumeration.h"

namespace starsift {
namespace {

/// All integers points of a cube.
BoxCoset cube(std::size_t n, int side) {
  BoxCoset coset{{}, std::vector<ZZ>(n), std::vector<ZZ>(n), std::vector<ZZ>(n, ZZ(side))};
  for (std::size_t k = 0; k < n; ++k) {
    coset.basis.emplace_back(n);
    coset.basis[k][k] = ZZ(1);
  }
  return coset;
}

TEST(TreeEstimate, RegularTreesAreEstimatedExactly) {
  // Levels of 6, 36 and 216 nodes; every path sees the same.
  const TreeEstimate estimate = Enumeration(cube(3, 5)).estimate({10, 1, {}});
  EXPECT_NEAR(estimate.sampledNodes, 258, 258 * 0.5);
  EXPECT_GT(estimate.gaussianNodes, 100);
  EXPECT_LT(estimate.gaussianNodes, 2000);
  EXPECT_GE(estimate.largestShare, 0.1 - 1e-9);
}

// A node with a billion children isn't visited child by child.
TEST(TreeEstimate, WideTreesAreEstimatedBySomeOfTheirChildren) {
  const double side = 1e9;
  const TreeEstimate estimate = Enumeration(cube(3, 999'999'999)).estimate({100, 1, {}});
  EXPECT_NEAR(std::log10(estimate.sampledNodes), std::log10(side * side * side), 0.5);
}

TEST(TreeEstimate, SameSeedGivesTheSameEstimate) {
  EXPECT_EQ(Enumeration(cube(6, 2)).estimate({50, 7, {}}).sampledNodes,
            Enumeration(cube(6, 2)).estimate({50, 7, {}}).sampledNodes);
  EXPECT_NE(Enumeration(cube(6, 2)).estimate({5, 7, {}}).sampledNodes,
            Enumeration(cube(6, 2)).estimate({5, 8, {}}).sampledNodes);
}

TEST(TreeEstimate, WithoutProbesOnlyTheHeuristicIsLeft) {
  const TreeEstimate estimate = Enumeration(cube(4, 3)).estimate({0, 1, {}});
  EXPECT_EQ(estimate.sampledNodes, 0);
  EXPECT_GT(estimate.gaussianNodes, 0);
}

TEST(TreeEstimate, ProbesThatEndEarlyLeaveTheMeanOfThoseMade) {
  const Enumeration enumeration(cube(3, 5));
  int probes = 0;
  const TreeEstimate ended = enumeration.estimate({1'000, 1, [&probes] { return probes++ < 10; }});
  EXPECT_EQ(probes, 11);
  EXPECT_EQ(ended.sampledNodes, enumeration.estimate({10, 1, {}}).sampledNodes);
  EXPECT_EQ(enumeration.estimate({10, 1, [] { return false; }}).sampledNodes, 0);
}

TEST(TreeEstimate, EmptyBoxAndPointHaveNoTree) {
  BoxCoset coset = cube(2, 3);
  coset.upper[0] = ZZ(-1);
  EXPECT_EQ(Enumeration(coset).estimate({5, 1, {}}).gaussianNodes, 0);
  EXPECT_EQ(Enumeration({{}, {ZZ(1)}, {ZZ(0)}, {ZZ(2)}}).estimate({5, 1, {}}).sampledNodes, 0);
}

}  // namespace
}  // namespace starsift
