#include "algorithms/exact/Combinations.h"

#include <gtest/gtest.h>

#include "support/fixtures/IntegerRows.h"

namespace starsift {
namespace {

using test::integerRows;
using Integers = std::vector<ZZ>;

class CombinationsOfTwo : public ::testing::Test {
 protected:
  /// Of 2 1 0 0 and 1 3 1 0: the third row depends, on both.
  std::vector<IntegerRow> rows = integerRows({{2, 1, 0, 0}, {1, 3, 1, 0}, {3, 4, 1, 0}});
  PrimeField field{1'000'000'007};
  ModularSplit split = splitRows(rows, 4, field);
  PivotBlock block{rows, split, field};
  Combinations combinations{block, 4};

  std::optional<Coefficients> find(std::initializer_list<long> row) {
    return combinations.find(integerRows({row}).front());
  }
};

TEST_F(CombinationsOfTwo, AreFound) {
  const std::optional<Coefficients> found = find({5, 0, -1, 0});  // 3, -1
  ASSERT_TRUE(found.has_value());
  EXPECT_EQ(found->numerators, (Integers{ZZ(3), ZZ(-1)}));
  EXPECT_EQ(found->denominator, ZZ(1));
}

TEST_F(CombinationsOfTwo, AreNotFoundForARowBesideTheirSpan) {
  EXPECT_FALSE(find({5, 0, -1, 1}).has_value());
  EXPECT_FALSE(find({5, 0, -2, 0}).has_value());
}

TEST_F(CombinationsOfTwo, AreNotFoundAboveWhereARowBelowTakesPart) {
  EXPECT_TRUE(combinations.findAbove(2, rows[2]).has_value());
  EXPECT_FALSE(combinations.findAbove(1, rows[2]).has_value());
  EXPECT_TRUE(combinations.findAbove(1, rows[0]).has_value());
}

TEST(Combinations, HaveDenominators) {
  const auto rows = integerRows({{2, 1}, {1, 2}});
  const PrimeField field(1'000'000'007);
  const PivotBlock block(rows, splitRows(rows, 2, field), field);
  const std::optional<Coefficients> found =
      Combinations(block, 2).find(integerRows({{1, 0}}).front());
  ASSERT_TRUE(found.has_value());
  EXPECT_EQ(found->numerators, (Integers{ZZ(2), ZZ(-1)}));
  EXPECT_EQ(found->denominator, ZZ(3));
}

}  // namespace
}  // namespace starsift
