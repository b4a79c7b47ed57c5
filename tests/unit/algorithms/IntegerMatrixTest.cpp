#include "algorithms/exact/IntegerMatrix.h"

#include <gtest/gtest.h>

#include <limits>

#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "support/fixtures/ExpectFails.h"

namespace starsift {
namespace {

TEST(ScaledIntegers, HaveTheLeastCommonDenominator) {
  const ScaledIntegers result =
      scaledIntegers(Matrix<QQ>{{QQ(1, 6), QQ(-3)}, {QQ(), QQ(5, 4)}, {QQ(2), QQ(2)}});
  EXPECT_EQ(result.scale, ZZ(12));
  EXPECT_EQ(result.rows, (IntegerMatrix{{ZZ(2), ZZ(-36)}, {ZZ(0), ZZ(15)}, {ZZ(24), ZZ(24)}}));
}

TEST(ScaledIntegers, KeepCommonFactorsOfIntegers) {
  const ScaledIntegers result = scaledIntegers(Matrix<QQ>{{QQ(4), QQ(-6)}});
  EXPECT_EQ(result.scale, ZZ(1));
  EXPECT_EQ(result.rows, (IntegerMatrix{{ZZ(4), ZZ(-6)}}));
}

TEST(ScaledIntegers, TakeALongDoubleForTheDecimalThatItStandsFor) {
  const ScaledIntegers result = scaledIntegers(Matrix<long double>{{0.1L, 2}});
  EXPECT_EQ(result.scale, ZZ(10));
  EXPECT_EQ(result.rows, (IntegerMatrix{{ZZ(1), ZZ(20)}}));
}

TEST(ScaledIntegers, OfNoEntriesAreNone) {
  EXPECT_TRUE(scaledIntegers(Matrix<QQ>()).rows.empty());
  EXPECT_EQ(scaledIntegers(Matrix<QQ>(2, 0)).rows, IntegerMatrix(2));
}

TEST(ScaledIntegers, RefuseAnInfiniteEntry) {
  EXPECT_FAILS_WITH(scaledIntegers(Matrix<QQ>{{QQ(1), QQ::infinity()}}),
                    "exact matrix: infinite entry");
  EXPECT_FAILS_WITH(
      scaledIntegers(Matrix<long double>{{-std::numeric_limits<long double>::infinity()}}),
      "exact matrix: infinite entry");
}

TEST(TransposedIntegers, ExchangeRowsAndColumns) {
  EXPECT_EQ(transposed({{ZZ(1), ZZ(2), ZZ(3)}, {ZZ(4), ZZ(5), ZZ(6)}}, 3),
            (IntegerMatrix{{ZZ(1), ZZ(4)}, {ZZ(2), ZZ(5)}, {ZZ(3), ZZ(6)}}));
  EXPECT_EQ(transposed({}, 2), IntegerMatrix(2));
}

TEST(NormBits, BoundTheNorm) {
  const auto bound = [](long a, long b) { return normBits(std::vector<ZZ>{ZZ(a), ZZ(b)}); };
  EXPECT_EQ(bound(3, 4), 3U);    // 5 <= 8
  EXPECT_EQ(bound(0, -16), 5U);  // 16 <= 32
  EXPECT_LE(bound(0, 1), 1U);
}

}  // namespace
}  // namespace starsift
