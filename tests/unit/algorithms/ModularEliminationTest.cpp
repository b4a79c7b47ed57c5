#include "algorithms/exact/ModularElimination.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/fixtures/IntegerRows.h"

namespace starsift {
namespace {

using test::integerRows;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(SplitRows, KeepsWhatIsIndependentOfTheRowsAbove) {
  const auto rows = integerRows({{1, 2, 3, 0}, {1, 2, 4, 0}, {0, 0, 5, 0}, {0, 1, 1, 0}});
  const ModularSplit split = splitRows(rows, 4, PrimeField(101));
  EXPECT_THAT(split.kept, ElementsAre(0U, 1U, 3U));
  EXPECT_THAT(split.pivots, ElementsAre(0U, 2U, 1U));
  EXPECT_THAT(split.doubtful, ElementsAre(2U));
}

TEST(SplitRows, TakesARowForDependentThatIsSoModuloThePrimeOnly) {
  const auto rows = integerRows({{1, 0}, {1, 7}});
  EXPECT_THAT(splitRows(rows, 2, PrimeField(7)).doubtful, ElementsAre(1U));
  EXPECT_THAT(splitRows(rows, 2, PrimeField(5)).doubtful, IsEmpty());
}

TEST(SplitRows, HasNoDoubtsBehindAsManyRowsAsColumns) {
  const auto rows = integerRows({{1, 1}, {2, 3}, {5, 7}, {1, 4}});
  const ModularSplit split = splitRows(rows, 2, PrimeField(101));
  EXPECT_THAT(split.kept, ElementsAre(0U, 1U));
  EXPECT_THAT(split.doubtful, IsEmpty());
}

TEST(SplitRows, OfNoRowsIsEmpty) {
  EXPECT_THAT(splitRows({}, 3, PrimeField(7)).kept, IsEmpty());
  EXPECT_THAT(splitRows({}, 0, PrimeField(7)).kept, IsEmpty());
}

TEST(SeparatingField, KeepsIndependentRowsApart) {
  EXPECT_EQ(separatingField(integerRows({{1, 0}, {1, 7}}), 2).prime(), firstPrime);
  EXPECT_EQ(separatingField(integerRows({{1, 0}, {1, firstPrime}}), 2).prime(), 1'000'000'009U);
}

TEST(ModularDeterminant, IsTheResidueOfTheDeterminant) {
  // 15
  const ModularMatrix matrix{{2, 1, 0}, {1, 3, 5}, {3, 1, 2}};
  EXPECT_EQ(determinant(matrix, PrimeField(101)), 15U);
  EXPECT_EQ(determinant(matrix, PrimeField(5)), 0U);
}

TEST(ModularDeterminant, ChangesSignWithTheOrderOfRows) {
  const PrimeField field(11);
  EXPECT_EQ(determinant({{0, 2, 0}, {3, 0, 0}, {0, 0, 1}}, field), 5U);  // -6
  EXPECT_EQ(determinant({{0, 2, 0}, {0, 0, 1}, {3, 0, 0}}, field), 6U);
}

TEST(ModularDeterminant, OfNoRowsIsOne) {
  EXPECT_EQ(determinant({}, PrimeField(2)), 1U);
}

TEST(Invert, GivesTheInverseModuloThePrime) {
  ModularMatrix matrix{{2, 1, 0}, {1, 3, 5}, {0, 4, 2}};
  invert(matrix, PrimeField(11));
  EXPECT_THAT(matrix, ElementsAre(ElementsAre(10U, 3U, 9U), ElementsAre(3U, 5U, 4U),
                                  ElementsAre(5U, 1U, 9U)));
}

TEST(Invert, LeavesTheIdentityAlone) {
  ModularMatrix matrix{{1, 0}, {0, 1}};
  invert(matrix, PrimeField(2));
  EXPECT_THAT(matrix, ElementsAre(ElementsAre(1U, 0U), ElementsAre(0U, 1U)));
}

}  // namespace
}  // namespace starsift
