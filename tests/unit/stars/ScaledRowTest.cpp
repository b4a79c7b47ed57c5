#include "stars/ScaledRow.h"

#include <gtest/gtest.h>

namespace starsift {
namespace {

constexpr std::int64_t twoTo61 = std::int64_t{1} << 61;
constexpr std::int64_t twoTo62 = std::int64_t{1} << 62;

SmallPoint smallPoint(const std::vector<std::int64_t>& components, std::int64_t magnitude) {
  return {components, magnitude};
}

ZZ generalProduct(const ScaledRow& row, const std::vector<ZZ>& numerators) {
  ZZ product(99);
  row.times(ScaledPoint{numerators, ZZ(1)}, product);
  return product;
}

ScaledRow integerRow(const Vector<QQ>& row) {
  return {row, ZZ::one()};
}

TEST(ScaledRow, ScaleIsTheCommonMultipleOfAllDenominators) {
  const ScaledRow row(Vector<QQ>{QQ(1, 2), QQ(0), QQ(-1, 3)}, ZZ(4));
  EXPECT_EQ(row.scale(), ZZ(12));
}

TEST(ScaledRow, RowOfIntegersKeepsItsScale) {
  EXPECT_EQ(integerRow({QQ(3), QQ(0), QQ(-4)}).scale(), ZZ(1));
}

TEST(ScaledRow, SmallProductIsThatOfTheScaledRow) {
  const ScaledRow row(Vector<QQ>{QQ(1, 2), QQ(0), QQ(-1, 3)}, ZZ(1));
  EXPECT_EQ(row.times(smallPoint({5, 7, -2}, 7)), 5 * 3 + 2 * 2);
}

TEST(ScaledRow, GeneralProductIsThatOfTheScaledRow) {
  const ScaledRow row(Vector<QQ>{QQ(1, 2), QQ(0), QQ(-1, 3)}, ZZ(1));
  EXPECT_EQ(generalProduct(row, {ZZ(5), ZZ(7), ZZ(-2)}), ZZ(5 * 3 + 2 * 2));
}

TEST(ScaledRow, LargestProductBelowTwoTo62IsSmall) {
  EXPECT_EQ(integerRow({QQ(1)}).times(smallPoint({twoTo62 - 1}, twoTo62 - 1)), twoTo62 - 1);
}

TEST(ScaledRow, ProductThatMightReachTwoTo62IsRefused) {
  const ScaledRow row = integerRow({QQ(1), QQ(-1)});
  EXPECT_EQ(row.times(smallPoint({twoTo61 - 1, 1 - twoTo61}, twoTo61 - 1)), twoTo62 - 2);
  EXPECT_EQ(row.times(smallPoint({twoTo61, -twoTo61}, twoTo61)), std::nullopt);
}

TEST(ScaledRow, GeneralProductOfWordsMayPassTwoTo127) {
  const std::int64_t entry = 9'000'000'000'000'000'000;
  for (const std::int64_t sign : {1, -1}) {
    const ScaledRow row = integerRow({QQ(entry), QQ(entry), QQ(entry), QQ(7)});
    const ZZ large(sign * 9'200'000'000'000'000'000);
    EXPECT_EQ(generalProduct(row, {large, large, large, ZZ(1)}), ZZ(entry) * large * ZZ(3) + ZZ(7));
  }
}

TEST(ScaledRow, GeneralProductTakesWordsAndLongIntegers) {
  const ZZ large("123456789012345678901234567890", 10);
  const ScaledRow row = integerRow({QQ(large), QQ(-3), QQ(5), QQ(-large)});
  EXPECT_EQ(generalProduct(row, {ZZ(2), -large, ZZ(-7), large}),
            large * ZZ(5) - ZZ(35) - large * large);
}

TEST(ScaledRow, EntryOfTwoTo62LeavesOnlyTheZeroPoint) {
  const ScaledRow row = integerRow({QQ(twoTo62)});
  EXPECT_EQ(row.times(smallPoint({0}, 0)), 0);
  EXPECT_EQ(row.times(smallPoint({1}, 1)), std::nullopt);
  EXPECT_EQ(generalProduct(row, {ZZ(3)}), ZZ(twoTo62) * ZZ(3));
}

TEST(ScaledRow, EntryBeyondMachineIntegersHasNoSmallProduct) {
  const ZZ big = pow(ZZ(10), ZZ(30));
  const ScaledRow row = integerRow({QQ(big)});
  EXPECT_EQ(row.times(smallPoint({0}, 0)), std::nullopt);
  EXPECT_EQ(generalProduct(row, {ZZ(-2)}), ZZ(-2) * big);
}

TEST(ScaledRow, SumOfEntriesBeyondMachineIntegersHasNoSmallProduct) {
  const QQ entry(std::numeric_limits<long>::max());
  const ScaledRow row = integerRow({entry, entry, entry});
  EXPECT_EQ(row.times(smallPoint({0, 0, 0}, 0)), std::nullopt);
}

TEST(ScaledRow, RowOfZerosGivesZeroForEveryPoint) {
  const ScaledRow row = integerRow({QQ(0), QQ(0)});
  EXPECT_EQ(row.times(smallPoint({twoTo62 - 1, 1}, twoTo62 - 1)), 0);
  EXPECT_EQ(generalProduct(row, {ZZ(5), ZZ(6)}), ZZ(0));
}

/// 10^-9000 and as many ones as make one scale too much.
Vector<QQ> rowWithoutScale() {
  Vector<QQ> row(200);
  for (QQ& entry : row) entry = QQ(1);
  row[2] = QQ::parse("1e-9000");
  row[3] = QQ(0);
  return row;
}

TEST(ScaledRow, RowWithoutACommonScaleStaysRational) {
  const ScaledRow row(rowWithoutScale(), ZZ(4));
  EXPECT_FALSE(row.isInteger());
  EXPECT_EQ(row.scale(), ZZ(4));
  EXPECT_EQ(row.times(smallPoint(std::vector<std::int64_t>(200), 0)), std::nullopt);
}

TEST(ScaledRow, RationalProductIsThatOfTheScaledRow) {
  Vector<QQ> x(200);
  x[1] = QQ(1, 2);
  x[2] = QQ(3);
  x[3] = QQ(5);
  x[200] = QQ(-7);
  ExactPoint point;
  ASSERT_TRUE(point.assign(x));
  const QQ tiny = QQ::parse("1e-9000");
  EXPECT_EQ(ScaledRow(rowWithoutScale(), ZZ(4)).rationalTimes(point),
            QQ(4) * (QQ(1, 2) + QQ(3) * tiny - QQ(7)));
}

TEST(ScaledRow, IntegerRowHasRationalProductsToo) {
  const ScaledRow row(Vector<QQ>{QQ(1, 2), QQ(0), QQ(-1, 3)}, ZZ(1));
  EXPECT_TRUE(row.isInteger());
  ExactPoint point;
  ASSERT_TRUE(point.assign(Vector<QQ>{QQ(5), QQ(7), QQ(-2)}));
  EXPECT_EQ(row.rationalTimes(point), QQ(5 * 3 + 2 * 2));
  ASSERT_TRUE(point.assign(Vector<QQ>{QQ(1, 5), QQ(7), QQ(-2)}));
  EXPECT_EQ(row.rationalTimes(point), QQ(3, 5) + QQ(2 * 2));
  EXPECT_EQ(integerRow({QQ(0)}).rationalTimes(point), QQ(0));
}

}  // namespace
}  // namespace starsift
