#include "search/enumeration/TreeReduction.h"

#include <gtest/gtest.h>

#include <random>

#include "certificates/LatticeEquality.h"
#include "numbers/VectorQQ.h"
#include "search/enumeration/CosetReduction.h"
#include "search/enumeration/TreeEstimate.h"
#include "support/fixtures/EquationCoset.h"

namespace starsift {
namespace {

bool always() {
  return true;
}

/// A market split of m equations and 10 (m - 1) variables that are 0 or 1.
BoxCoset marketSplit(std::size_t m) {
  const std::size_t n = 10 * (m - 1);
  std::mt19937_64 random(1);
  std::vector<std::vector<ZZ>> rows(m);
  std::vector<ZZ> sides;
  for (std::vector<ZZ>& row : rows) {
    long sum = 0;
    for (std::size_t j = 0; j < n; ++j) {
      const auto entry = static_cast<long>(random() % 100);
      row.emplace_back(entry);
      sum += entry;
    }
    sides.emplace_back(sum / 2);
  }
  std::optional<BoxCoset> coset =
      test::cosetOfEquations(rows, sides, std::vector<ZZ>(n), std::vector<ZZ>(n, ZZ(1)));
  EXPECT_TRUE(coset.has_value());
  return *std::move(coset);
}

Matrix<QQ> rowsOf(const BoxCoset& coset) {
  Matrix<QQ> rows(static_cast<Index>(coset.basis.size()), static_cast<Index>(coset.point.size()));
  for (Index k = 1; k <= rows.rowCount(); ++k)
    for (Index j = 1; j <= rows.columnCount(); ++j)
      rows[k][j] =
          QQ(coset.basis[static_cast<std::size_t>(k - 1)][static_cast<std::size_t>(j - 1)]);
  return rows;
}

double expectedNodes(const BoxCoset& coset) {
  return gaussianNodes(coset, cosetDirections(coset));
}

TEST(TreeReduction, SmallTreesAreLeftToLllReduction) {
  BoxCoset coset = marketSplit(4);
  BoxCoset other = coset;
  reduceForTree(coset, StageLimit::time, always);
  reduceCoset(other, always);
  EXPECT_EQ(coset.basis, other.basis);
  EXPECT_EQ(coset.point, other.point);
}

TEST(TreeReduction, LargeTreesBecomeSmallerByBlocks) {
  BoxCoset coset = marketSplit(7);
  BoxCoset other = coset;
  const std::optional<CosetDirections> data = reduceForTree(coset, StageLimit::time, always);
  ASSERT_TRUE(data.has_value());
  reduceCoset(other, always);
  EXPECT_TRUE(sameLattice(rowsOf(coset), rowsOf(other)));
  EXPECT_LT(expectedNodes(coset), expectedNodes(other));
  EXPECT_EQ(gaussianNodes(coset, *data), expectedNodes(coset));
  // Both points lie in the coset.
  std::vector<ZZ> difference(coset.point);
  for (std::size_t j = 0; j < difference.size(); ++j) difference[j] -= other.point[j];
  BoxCoset withDifference(coset);
  withDifference.basis.push_back(difference);
  EXPECT_TRUE(sameLattice(rowsOf(withDifference), rowsOf(coset)));
}

TEST(TreeReduction, LeavesTheSameLatticeWhereverItIsEnded) {
  const BoxCoset whole = marketSplit(7);
  for (const int most : {0, 10, 1000, 100'000, 110'000}) {
    BoxCoset coset = whole;
    int steps = 0;
    const auto data =
        reduceForTree(coset, StageLimit::time, [&steps, most] { return ++steps <= most; });
    EXPECT_EQ(data.has_value(), steps <= most);
    EXPECT_TRUE(sameLattice(rowsOf(coset), rowsOf(whole)));
  }
}

TEST(TreeReduction, BlocksNeedNumbersThatLongDoubleHolds) {
  const ZZ large = ZZ(1L << 62) * ZZ(1L << 62);
  BoxCoset coset{{{large, ZZ(1)}, {ZZ(), ZZ(3)}}, {ZZ(), ZZ()}, {ZZ(), ZZ()}, {ZZ(9), ZZ(9)}};
  const auto before = coset.basis;
  EXPECT_FALSE(reduceBlocks(coset, 2, {}, always));
  EXPECT_EQ(coset.basis, before);
}

}  // namespace
}  // namespace starsift
