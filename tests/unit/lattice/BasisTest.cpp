#include "lattice/state/Basis.h"

#include <gtest/gtest.h>

#include "numbers/Conversion.h"
#include "numbers/VectorQQ.h"
#include "support/fixtures/RowsText.h"
#include "support/fixtures/TextOf.h"

namespace starsift {
namespace {

using test::rowsText;
using test::textOf;

template <class T>
class BasisOver : public testing::Test {
 protected:
  BasisOver() {
    const Matrix<T> rows{{1, 0, 5}, {0, 2, 0}, {3, 3, 5}};
    basis.reset(&rows, T(5));
  }

  std::string rows() const { return rowsText(basis.B()); }

  Basis<T, long double> basis;
};

using Numbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(BasisOver, Numbers);

TYPED_TEST(BasisOver, StartsFromTheGeneratedRows) {
  EXPECT_EQ(this->basis.n, 3);
  EXPECT_EQ(this->basis.m, 3);
  EXPECT_EQ(this->rows(), rowsText(this->basis.B_save));
  EXPECT_EQ(textOf(this->basis.scale), "[ 1 1 1 ]");
  ASSERT_EQ(this->basis.TT.dimension(), 1);
  EXPECT_TRUE(identical(this->basis.TT[1], Matrix<TypeParam>::identity(3)));
  EXPECT_EQ(this->basis.homScaled, TypeParam(5));
}

TYPED_TEST(BasisOver, TrackedMovesLeadFromTheGeneratedRowsToThePresentOnes) {
  this->basis.tracksMoves = true;
  this->basis.swap(1, 3, RowStatus::forget);
  this->basis.subtract(3, {{2, 4}});
  this->basis.subtract(2, {{1, -1}});
  EXPECT_TRUE(identical(this->basis.TT[1] * this->basis.B_save, this->basis.B()));
}

TYPED_TEST(BasisOver, UntrackedMovesLeaveTheTransformation) {
  this->basis.swap(1, 3, RowStatus::forget);
  this->basis.subtract(3, {{1, 2}});
  EXPECT_TRUE(identical(this->basis.TT[1], Matrix<TypeParam>::identity(3)));
}

TYPED_TEST(BasisOver, RowThatChangesHasToBeCheckedAgain) {
  for (Index k = 1; k <= 3; ++k) EXPECT_FALSE(this->basis.markChecked(k));
  this->basis.subtract(3, {{1, 2}});
  EXPECT_TRUE(this->basis.markChecked(1));
  EXPECT_FALSE(this->basis.markChecked(3));
  this->basis.swap(1, 3, RowStatus::keep);
  EXPECT_TRUE(this->basis.markChecked(1));
  this->basis.setScale(2, TypeParam(7), TypeParam(5));
  for (Index k = 1; k <= 3; ++k) EXPECT_FALSE(this->basis.markChecked(k));
}

TYPED_TEST(BasisOver, ImagesFollowEachVerb) {
  const auto expectImages = [this](const char* verb) {
    SCOPED_TRACE(verb);
    const Matrix<long double>& images = this->basis.imagesUpTo(3);
    for (Index k = 1; k <= 3; ++k)
      for (Index j = 1; j <= 3; ++j)
        EXPECT_EQ(TypeParam(static_cast<long>(images[k][j])), this->basis.B()[k][j]);
  };
  expectImages("reset");
  this->basis.swap(1, 2, RowStatus::forget);
  expectImages("swap");
  this->basis.subtract(3, {{1, -3}});
  expectImages("subtract");
  this->basis.setScale(1, TypeParam(4), TypeParam(5));
  expectImages("setScale");
  this->basis.replace(Matrix<TypeParam>{{1, 2, 3}, {4, 5, 6}, {7, 8, 9}});
  expectImages("replace");
}

TYPED_TEST(BasisOver, SwapClearsTheStatusFromTheFirstOfBothOnUnlessToldOtherwise) {
  for (Index k = 1; k <= 3; ++k) this->basis.vecStatus[k] = ST_MU;
  this->basis.swap(2, 3, RowStatus::keep);
  EXPECT_EQ(this->basis.vecStatus[2], ST_MU);
  this->basis.swap(2, 3, RowStatus::forget);
  EXPECT_EQ(this->basis.vecStatus[1], ST_MU);
  EXPECT_EQ(this->basis.vecStatus[2], 0);
  EXPECT_EQ(this->basis.vecStatus[3], 0);
}

TYPED_TEST(BasisOver, DependentRowsKeepTheirStatusWhileToldTo) {
  this->basis.keepDependent = true;
  this->basis.vecStatus[2] = ST_MU;
  this->basis.vecStatus[3] = ST_DEPENDENT;
  this->basis.forgetFrom(2);
  EXPECT_EQ(this->basis.vecStatus[2], 0);
  EXPECT_EQ(this->basis.vecStatus[3], ST_DEPENDENT);
  this->basis.forgetFrom(1);
  EXPECT_EQ(this->basis.vecStatus[3], 0);
}

TYPED_TEST(BasisOver, WorkingSpaceIsScaledAndTranslatedByHTimes) {
  this->basis.isTranslated = true;
  this->basis.translation = Vector<TypeParam>{10, 20, 0};
  this->basis.setScale(1, TypeParam(2), TypeParam(5));
  this->basis.setScale(3, TypeParam(3), TypeParam(5));
  EXPECT_EQ(this->basis.homScaled, TypeParam(15));
  const Vector<TypeParam> raw{1, 1, 10};
  const Vector<TypeParam> working = this->basis.toWorking(raw, TypeParam(5));
  EXPECT_EQ(textOf(working), "[ -18 -39 30 ]");
  EXPECT_TRUE(identical(this->basis.toRaw(working), raw));
}

TYPED_TEST(BasisOver, CentreIsTheOriginOfInhomogeneousRows) {
  this->basis.isTranslated = true;
  this->basis.setScale(2, TypeParam(4), TypeParam(5));
  const Matrix<TypeParam> raw = this->basis.untransformed();
  this->basis.setCentre({TypeParam(3), TypeParam(3), TypeParam(0)}, TypeParam(5));
  EXPECT_EQ(this->rows(), rowsText(Matrix<TypeParam>{{-2, -12, 5}, {0, 8, 0}, {0, 0, 5}}));
  EXPECT_TRUE(identical(this->basis.untransformed(), raw));
}

TYPED_TEST(BasisOver, ScaleThatIsThereAlreadyChangesNothing) {
  this->basis.vecStatus[1] = ST_MU;
  this->basis.setScale(2, TypeParam(1), TypeParam(5));
  EXPECT_EQ(this->basis.vecStatus[1], ST_MU);
}

TEST(Basis, ConvertsBetweenTheNumberTypes) {
  const Matrix<QQ> rows{{1, 2}, {3, 4}};
  Basis<QQ, long double> exact;
  exact.reset(&rows, QQ(1));
  exact.subtract(2, {{1, 3}});
  exact.vecStatus[1] = ST_MU;
  exact.tracksMoves = true;
  Basis<long double, long double> standard;
  standard.convertFrom(exact);
  EXPECT_EQ(rowsText(standard.B()), "[ 1 2 ] [ 0 -2 ]");
  EXPECT_EQ(standard.vecStatus[1], ST_MU);
  EXPECT_TRUE(standard.tracksMoves);
  exact.replace(Matrix<QQ>{{QQ(1, 3), 2}, {3, 4}});
  EXPECT_THROW(standard.convertFrom(exact), PrecisionException);
}

}  // namespace
}  // namespace starsift
