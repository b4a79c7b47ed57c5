#include "algorithms/exact/PadicLift.h"

#include <gtest/gtest.h>

#include <limits>

#include "support/fixtures/IntegerRows.h"

namespace starsift {
namespace {

using test::integerRows;

/// All rows kept, pivots in the first columns.
PivotBlock blockOf(const std::vector<IntegerRow>& rows, std::uint32_t prime) {
  const PrimeField field(prime);
  return {rows, splitRows(rows, rows.size(), field), field};
}

/// The solution by as many digits as suffice.
Coefficients solve(const std::vector<IntegerRow>& rows, const IntegerRow& row,
                   std::uint32_t prime) {
  const PivotBlock block = blockOf(rows, prime);
  PadicLift lift(block, row);
  lift.liftTo(block.sufficientDigits(row));
  return lift.over(lift.denominator().value_or(ZZ::one())).value_or(Coefficients{});
}

/// numerators * rows == denominator * row, in every column.
void expectCombination(const Coefficients& c, const std::vector<IntegerRow>& rows,
                       const IntegerRow& row, std::size_t columns) {
  ASSERT_EQ(c.numerators.size(), rows.size());
  EXPECT_GT(c.denominator, ZZ::zero());
  for (std::size_t j = 0; j < columns; ++j) {
    ZZ sum = -c.denominator * row.entry(j);
    for (std::size_t i = 0; i < rows.size(); ++i) rows[i].addProduct(sum, c.numerators[i], j);
    EXPECT_EQ(sum, ZZ::zero()) << "column " << j;
  }
}

TEST(PadicLift, FindsFractionsOverOneDenominator) {
  const auto rows = integerRows({{2, 1, 0}, {1, 3, 5}, {0, 4, 2}});
  const auto row = integerRows({{1, 1, 1}}).front();
  const Coefficients c = solve(rows, row, 1'000'000'007);
  expectCombination(c, rows, row, 3);
  EXPECT_EQ(c.denominator, ZZ(5));
  EXPECT_EQ(c.numerators[0], ZZ(2));
}

TEST(PadicLift, FindsFractionsBySmallPrimesToo) {
  const auto rows = integerRows({{3, 1, 0}, {1, 6, 5}, {0, 4, 5}});
  const auto row = integerRows({{1, -100, 1}}).front();
  for (const std::uint32_t prime : {7U, 11U, 13U})
    expectCombination(solve(rows, row, prime), rows, row, 3);
}

TEST(PadicLift, FindsCoefficientsOfBigRowsBesideSmallOnes) {
  auto rows = integerRows({{2, 1, 0}, {1, 3, 5}});
  const QQ big(pow(ZZ(10), ZZ(40)));
  rows.emplace_back(Vector<QQ>{QQ(7), big, big + QQ(3)});
  const IntegerRow row(Vector<QQ>{big + QQ(1), QQ(5), -big});
  expectCombination(solve(rows, row, 1'000'000'007), rows, row, 3);
}

TEST(PadicLift, FindsCoefficientsOfTheGreatestMachineIntegers) {
  constexpr long most = std::numeric_limits<long>::max();
  const auto rows = integerRows({{most, 1 - most, 3}, {most - 2, most, -most}, {5, most, most}});
  const auto row = integerRows({{1, -most, most}}).front();
  expectCombination(solve(rows, row, 1'000'000'007), rows, row, 3);
}

TEST(PadicLift, FindsTheLongestCoefficientsByTheSufficientDigits) {
  // Hadamard's bound is reached where the rows are orthogonal.
  const long a = 100'000'000'000'000'003;
  const long b = 99'999'999'999'999'998;
  const auto rows = integerRows({{a, b}, {b, -a}});
  const auto row = integerRows({{1, 1}}).front();
  const Coefficients c = solve(rows, row, 1'000'000'007);
  expectCombination(c, rows, row, 2);
  EXPECT_EQ(c.denominator, ZZ(a) * ZZ(a) + ZZ(b) * ZZ(b));
}

TEST(PadicLift, GuessesShortCoefficientsByOneDigit) {
  const auto rows = integerRows({{2, 1, 0}, {1, 3, 5}, {0, 4, 2}});
  const PivotBlock block = blockOf(rows, 1'000'000'007);
  PadicLift lift(block, integerRows({{3, -1, -5}}).front());
  lift.liftTo(1);
  EXPECT_EQ(lift.denominator(), ZZ(1));
  const std::optional<Coefficients> c = lift.over(ZZ(1));
  ASSERT_TRUE(c.has_value());
  EXPECT_EQ(c->numerators, (std::vector<ZZ>{ZZ(2), ZZ(-1), ZZ(0)}));
  EXPECT_EQ(c->denominator, ZZ(1));
}

TEST(PadicLift, GuessesNothingByTooFewDigits) {
  const auto rows = integerRows({{2, 1, 0}, {1, 3, 5}, {0, 4, 2}});
  const PivotBlock block = blockOf(rows, 1'000'000'007);
  PadicLift lift(block, integerRows({{12345, 54321, 1}}).front());
  EXPECT_EQ(lift.denominator(), std::nullopt);
  lift.liftTo(1);
  EXPECT_EQ(lift.denominator(), std::nullopt);
}

TEST(PadicLift, NeedsFewerDigitsForAKnownDenominator) {
  const auto rows = integerRows({{2, 1, 0}, {1, 3, 5}, {0, 4, 2}});
  const auto row = integerRows({{1, 1, 1}}).front();
  const PivotBlock block = blockOf(rows, 101);
  PadicLift lift(block, row);
  lift.liftTo(4);
  // 101^4 has 27 bits, too few for a numerator and a denominator.
  EXPECT_EQ(lift.denominator(), std::nullopt);
  const std::optional<Coefficients> c = lift.over(ZZ(5));
  ASSERT_TRUE(c.has_value());
  EXPECT_EQ(c->numerators, (std::vector<ZZ>{ZZ(2), ZZ(1), ZZ(0)}));
  EXPECT_FALSE(lift.over(ZZ(7)).has_value());
}

}  // namespace
}  // namespace starsift
