#include "stars/SmallBox.h"

#include <gtest/gtest.h>

#include "numbers/Conversion.h"

namespace starsift {
namespace {

constexpr std::int64_t twoTo62 = std::int64_t{1} << 62;

template <class T>
class SmallBoxOver : public testing::Test {
 protected:
  static T inf() { return NumberTraits<T>::infinity(); }

  /// Whether the one variable may have the value.
  static bool admits(const T& lower, const T& upper, std::int64_t value) {
    return SmallBox(Vector<T>{lower}, Vector<T>{upper}).contains({{value}, std::abs(value)});
  }
};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(SmallBoxOver, LatticeNumbers);

TYPED_TEST(SmallBoxOver, BoundsBelong) {
  EXPECT_TRUE(this->admits(-3, 5, -3));
  EXPECT_TRUE(this->admits(-3, 5, 5));
  EXPECT_FALSE(this->admits(-3, 5, -4));
  EXPECT_FALSE(this->admits(-3, 5, 6));
}

TYPED_TEST(SmallBoxOver, FractionalBoundsAreRoundedInwards) {
  const TypeParam half = TypeParam(1) / TypeParam(2);
  EXPECT_FALSE(this->admits(half, 5, 0));
  EXPECT_TRUE(this->admits(half, 5, 1));
  EXPECT_TRUE(this->admits(-half, half, 0));
  EXPECT_FALSE(this->admits(-5, -half, 0));
  EXPECT_TRUE(this->admits(-5, -half, -1));
}

TYPED_TEST(SmallBoxOver, OpenSidesAdmitAllSmallValues) {
  EXPECT_TRUE(this->admits(-this->inf(), this->inf(), twoTo62 - 1));
  EXPECT_TRUE(this->admits(-this->inf(), this->inf(), 1 - twoTo62));
}

TYPED_TEST(SmallBoxOver, InfinityOnTheWrongSideAdmitsNothing) {
  EXPECT_FALSE(this->admits(this->inf(), this->inf(), twoTo62 - 1));
  EXPECT_FALSE(this->admits(-this->inf(), -this->inf(), 1 - twoTo62));
}

TYPED_TEST(SmallBoxOver, BoundsBeyondSmallValuesAdmitAllOrNone) {
  const TypeParam huge = TypeParam(twoTo62) * TypeParam(8);
  EXPECT_TRUE(this->admits(-huge, huge, twoTo62 - 1));
  EXPECT_FALSE(this->admits(huge, huge, twoTo62 - 1));
  EXPECT_FALSE(this->admits(-huge, -huge, 1 - twoTo62));
}

TYPED_TEST(SmallBoxOver, EveryComponentHasItsBounds) {
  const SmallBox box(Vector<TypeParam>{0, 10}, Vector<TypeParam>{1, 11});
  EXPECT_TRUE(box.contains({{1, 10}, 10}));
  EXPECT_FALSE(box.contains({{10, 1}, 10}));
  EXPECT_FALSE(box.contains({{2, 10}, 10}));
  EXPECT_FALSE(box.contains({{1, 12}, 12}));
}

}  // namespace
}  // namespace starsift
