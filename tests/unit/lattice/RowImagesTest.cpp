#include "lattice/state/RowImages.h"

#include <gtest/gtest.h>

#include "core/Matrix.inl"
#include "support/fixtures/ExpectFails.h"

namespace starsift {

namespace {

/// Rows converted so far, times their entries.
Index conversions = 0;

}  // namespace

/// Basis entries that count how often they are looked at.
template <>
struct NumberConversion<long double, short> {
  static long double nearest(short value) {
    ++conversions;
    return value;
  }
};

namespace {

using M = Matrix<long double>;

class RowImagesOfIntegers : public testing::Test {
 protected:
  void SetUp() override { conversions = 0; }

  Matrix<short> basis{{1, 2}, {3, 4}, {5, 6}};
  RowImages<short, long double> images;
};

TEST_F(RowImagesOfIntegers, AreTheRows) {
  const M& rows = images.of(basis, 3);
  EXPECT_EQ(rows[1][2], 2);
  EXPECT_EQ(rows[3][1], 5);
}

TEST_F(RowImagesOfIntegers, AreMadeOncePerChange) {
  images.of(basis, 2);
  EXPECT_EQ(conversions, 4);
  images.of(basis, 3);
  EXPECT_EQ(conversions, 6);
  images.of(basis, 1);
  EXPECT_EQ(conversions, 6);
  images.forget(2);
  images.of(basis, 3);
  EXPECT_EQ(conversions, 8);
}

TEST_F(RowImagesOfIntegers, ShowTheChangeOfARowThatIsForgotten) {
  images.of(basis, 3);
  basis[2][1] = 9;
  images.forget(2);
  EXPECT_EQ(images.of(basis, 3)[2][1], 9);
}

TEST_F(RowImagesOfIntegers, ShowAllChangesWhenAllIsForgotten) {
  images.of(basis, 3);
  basis[1][1] = 7;
  basis[3][1] = 8;
  images.forgetAll();
  EXPECT_EQ(images.of(basis, 3)[1][1], 7);
  EXPECT_EQ(images.of(basis, 3)[3][1], 8);
}

TEST_F(RowImagesOfIntegers, FollowAnExchangeWithoutBeingMadeAnew) {
  images.of(basis, 2);
  basis.swapRows(2, 3);
  images.swap(2, 3);
  EXPECT_EQ(images.of(basis, 3)[3][1], 3);
  EXPECT_EQ(images.of(basis, 3)[2][1], 5);
  EXPECT_EQ(conversions, 6);
}

TEST_F(RowImagesOfIntegers, AreMadeAnewForAnotherShape) {
  images.of(basis, 3);
  basis = Matrix<short>{{7, 8, 9}};
  EXPECT_EQ(images.of(basis, 1)[1][1], 7);
  basis = Matrix<short>{{4, 5, 6}, {1, 1, 1}};
  EXPECT_EQ(images.of(basis, 2)[1][1], 4);
}

TEST_F(RowImagesOfIntegers, MayBeForgottenBeforeTheyAreMade) {
  images.forget(3);
  images.forgetAll();
  images.swap(1, 3);
  EXPECT_EQ(images.of(basis, 3)[1][1], 1);
}

TEST_F(RowImagesOfIntegers, EndWithTheBasis) {
  EXPECT_EQ(images.of(basis, 4).rowCount(), 3);
}

TEST(RowImages, AreTheBasisWhereItHasTheTypeAlready) {
  const M basis{{1, 2}};
  RowImages<long double, long double> images;
  EXPECT_EQ(&images.of(basis, 1), &basis);
}

}  // namespace
}  // namespace starsift
