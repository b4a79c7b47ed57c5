#include "algorithms/exact/IntegerRow.h"

#include <gtest/gtest.h>

#include <limits>

#include "numbers/VectorQQ.h"

namespace starsift {
namespace {

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t least = std::numeric_limits<std::int64_t>::min();

IntegerRow rowOf(const Vector<QQ>& row) {
  return IntegerRow(row);
}

ZZ scaledEntry(const IntegerRow& row, const ZZ& factor) {
  ZZ sum(5);
  row.addProduct(sum, factor, 0);
  return sum - ZZ(5);
}

TEST(IntegerRow, HasNoDenominators) {
  const IntegerRow row = rowOf({QQ(1, 2), QQ(0), QQ(-1, 3), QQ(5)});
  ASSERT_TRUE(row.isSmall());
  EXPECT_EQ(row.small(0), 3);
  EXPECT_EQ(row.small(1), 0);
  EXPECT_EQ(row.small(2), -2);
  EXPECT_EQ(row.small(3), 30);
}

TEST(IntegerRow, HasNoCommonFactor) {
  EXPECT_EQ(rowOf({QQ(6), QQ(0), QQ(-9)}), rowOf({QQ(2), QQ(0), QQ(-3)}));
  EXPECT_EQ(rowOf({QQ(0), QQ(7)}).small(1), 1);
}

TEST(IntegerRow, StartsWithAPositiveEntry) {
  EXPECT_EQ(rowOf({QQ(0), QQ(-1, 2), QQ(3)}), rowOf({QQ(0), QQ(1), QQ(-6)}));
}

TEST(IntegerRow, DiffersFromRowsThatAreNoMultiples) {
  EXPECT_NE(rowOf({QQ(1), QQ(2)}), rowOf({QQ(1), QQ(-2)}));
  EXPECT_NE(rowOf({QQ(1), QQ(pow(ZZ(10), ZZ(30)))}), rowOf({QQ(1), QQ(2)}));
}

TEST(IntegerRow, ZeroRowIsTheOneOfZerosOnly) {
  EXPECT_TRUE(rowOf({}).isZero());
  EXPECT_TRUE(rowOf({QQ(0), QQ(0)}).isZero());
  EXPECT_FALSE(rowOf({QQ(0), QQ(1)}).isZero());
  EXPECT_FALSE(rowOf({QQ(1), QQ(pow(ZZ(10), ZZ(30)))}).isZero());
}

TEST(IntegerRow, IsSmallUpToTheLimitsOfMachineIntegers) {
  EXPECT_TRUE(rowOf({QQ(1), QQ(most), QQ(least)}).isSmall());
  EXPECT_FALSE(rowOf({QQ(1), QQ(ZZ(most) + ZZ(1))}).isSmall());
  EXPECT_FALSE(rowOf({QQ(1), QQ(ZZ(least) - ZZ(1))}).isSmall());
}

TEST(IntegerRow, GivesEntriesOfEverySize) {
  const ZZ big = pow(ZZ(10), ZZ(30));
  EXPECT_EQ(rowOf({QQ(1), QQ(-4)}).entry(1), ZZ(-4));
  EXPECT_EQ(rowOf({QQ(1), QQ(big)}).entry(1), big);
  EXPECT_EQ(rowOf({QQ(1), QQ(big)}).big(0), ZZ(1));
}

TEST(IntegerRow, AddsProductsOfEverySize) {
  const ZZ big = pow(ZZ(10), ZZ(30));
  const IntegerRow small = rowOf({QQ(1), QQ(least), QQ(most)});
  ZZ sum(7);
  small.addProduct(sum, ZZ(-3), 1);
  EXPECT_EQ(sum, ZZ(7) - ZZ(3) * ZZ(least));
  small.addProduct(sum, big, 2);
  EXPECT_EQ(sum, ZZ(7) - ZZ(3) * ZZ(least) + big * ZZ(most));
  EXPECT_EQ(scaledEntry(rowOf({QQ(big), QQ(1)}), ZZ(-2)), ZZ(-2) * big);
}

TEST(FactorOfALine, GivesTheRowBack) {
  const auto factor = [](const Vector<QQ>& row) { return factorOf(row, IntegerRow(row)); };
  EXPECT_EQ(factor({QQ(), QQ(6), QQ(-4)}), QQ(2));
  EXPECT_EQ(factor({QQ(), QQ(-1, 6), QQ(1, 4)}), QQ(-1, 12));
  EXPECT_EQ(factor({QQ(3), QQ(2)}), QQ(1));
}

TEST(IntegerRow, TakesALongDoubleForItsEighteenDigits) {
  EXPECT_EQ(IntegerRow(Vector<long double>{0.1L, 0.25L, -3.0L}), rowOf({QQ(2), QQ(5), QQ(-60)}));
}

}  // namespace
}  // namespace starsift
