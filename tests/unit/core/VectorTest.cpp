#include "core/Vector.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <type_traits>

#include "support/fixtures/LossyConversion.h"
#include "support/fixtures/VectorSuite.h"
#include "system/Exceptions.h"

namespace starsift {

namespace test {
INSTANTIATE_TYPED_TEST_SUITE_P(LongDouble, VectorOver, long double);
INSTANTIATE_TYPED_TEST_SUITE_P(Long, VectorOver, long);
INSTANTIATE_TYPED_TEST_SUITE_P(Short, VectorOver, short);
}  // namespace test

namespace {

constexpr long double infinity = std::numeric_limits<long double>::infinity();
constexpr long double nan = std::numeric_limits<long double>::quiet_NaN();

using V = Vector<long double>;

TEST(Vector, IsEqualWithinTheTolerance) {
  EXPECT_TRUE((V{1, 2}) == (V{1 + 0.9e-9L, 2 - 0.9e-9L}));
  EXPECT_FALSE((V{1, 2}) == (V{1, 2 + 1.1e-9L}));
}

TEST(Vector, IsIdenticalWithoutTolerance) {
  EXPECT_FALSE(identical(V{1, 2}, V{1 + 0.9e-9L, 2}));
  EXPECT_TRUE(identical(V{0.0L}, V{-0.0L}));
}

TEST(Vector, IsEqualInEqualInfinities) {
  EXPECT_TRUE((V{infinity, -infinity}) == (V{infinity, -infinity}));
  EXPECT_FALSE((V{infinity}) == (V{-infinity}));
}

TEST(Vector, IsEqualToNoOtherVectorThatHoldsANan) {
  EXPECT_FALSE((V{nan}) == (V{nan}));
  EXPECT_FALSE(identical(V{nan}, V{nan}));
}

TEST(Vector, IsEqualToItselfWithoutALook) {
  const V vector{nan};
  EXPECT_TRUE(vector == vector);
  EXPECT_TRUE(identical(vector, vector));
}

TEST(Vector, ComparesWithoutTolerance) {
  EXPECT_FALSE((V{1}) >= (V{1 + 1e-12L}));
  EXPECT_FALSE((V{1 + 1e-12L}) <= (V{1}));
}

TEST(Vector, ComparesANanAsAViolation) {
  EXPECT_FALSE((V{nan}) >= (V{0}));
  EXPECT_FALSE((V{nan}) <= (V{0}));
}

TEST(Vector, ComparesInfinities) {
  EXPECT_TRUE((V{infinity}) >= (V{infinity}));
  EXPECT_TRUE((V{-infinity}) <= (V{0}));
  EXPECT_FALSE((V{-infinity}) >= (V{0}));
}

TEST(Vector, DividesByZeroAsItsNumbersDo) {
  V vector{1, -1, 0};
  vector /= V{0, 0, 0};
  EXPECT_EQ(vector[1], infinity);
  EXPECT_EQ(vector[2], -infinity);
  EXPECT_TRUE(std::isnan(vector[3]));
}

TEST(Vector, SumsInIndexOrder) {
  // 1 is lost beside 2^64, so the order decides what is left.
  constexpr long double large = 0x1p64L;
  EXPECT_EQ((V{large, -large, 1}) * (V{1, 1, 1}), 1);
  EXPECT_EQ((V{1, large, -large}) * (V{1, 1, 1}), 0);
}

TEST(Vector, TakesItsComponentsFromAList) {
  const V vector{1, 2, 3};
  EXPECT_EQ(vector.dimension(), 3);
  EXPECT_EQ(vector[3], 3);
}

TEST(Vector, RefusesANegativeDimension) {
  V vector;
  EXPECT_FAILS_WITH(vector.resize(-1, true), "array: dimension < 0");
}

TEST(Vector, ConvertsBothWaysWithInfinities) {
  V source{1, infinity, -infinity};
  V target;
  target.convertFrom(source, true);
  EXPECT_TRUE(identical(target, source));
}

TEST(Vector, TellsALossInAConversion) {
  Vector<long> target;
  EXPECT_THROW(target.convertFrom(V{1, 0.5L}, true), PrecisionException);
  target.convertFrom(V{1, 2}, true);
  EXPECT_EQ(target[2], 2);
}

TEST(Vector, MovesWithoutThrowingSoThatListsOfVectorsMoveThem) {
  EXPECT_TRUE(std::is_nothrow_move_constructible_v<V>);
  EXPECT_TRUE(std::is_nothrow_move_assignable_v<V>);
}

TEST(RemoveElement, RemovesFromAnArrayOfIntegers) {
  Array<short> array(3);
  array[1] = 1;
  array[2] = 2;
  array[3] = 3;
  removeElement(array, 1);
  EXPECT_EQ(array.dimension(), 2);
  EXPECT_EQ(array[1], 2);
  EXPECT_EQ(array[2], 3);
}

TEST(RemoveElement, SharesTheTextOfTheVector) {
  Array<long> array(3);
  EXPECT_FAILS_WITH(removeElement(array, 4), "removeComponent: invalid index");
}

}  // namespace
}  // namespace starsift
