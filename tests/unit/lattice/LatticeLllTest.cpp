#include <gtest/gtest.h>

#include "certificates/LllViolations.h"
#include "lattice/Lattice.h"
#include "numbers/Conversion.h"
#include "numbers/QQFunctions.h"
#include "numbers/VectorQQ.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/Problem.h"
#include "support/fixtures/RowsText.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::q;
using test::rowsText;
using test::textOf;

template <class T>
class LllStepsOver : public testing::Test {
 protected:
  /// Rows as the basis; Gram-Schmidt data of the first `done` of them.
  void use(std::initializer_list<std::initializer_list<T>> rows, Index done) {
    const Matrix<T> basis(rows);
    lattice.reset(&basis, LatPath::keep);
    EXPECT_TRUE(done == 0 || lattice.classicOrthogonalise(1, done));
  }

  Lattice<T, long double> lattice;
};
using NumberTypes = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(LllStepsOver, NumberTypes);

TYPED_TEST(LllStepsOver, CoefficientOfOneHalfIsLeft) {
  this->use({{2, 0}, {1, 5}, {-1, 7}}, 1);
  EXPECT_FALSE(this->lattice.sizeReduce(2, false));
  EXPECT_EQ(textOf(this->lattice.basis.B()[2]), "[ 1 5 ]");
  EXPECT_EQ(this->lattice.basis.vecStatus[2], ST_MU | ST_SIZE_REDUCED);
}

TYPED_TEST(LllStepsOver, CoefficientAboveOneHalfIsTakenOff) {
  this->use({{10000000, 0}, {5000001, 5}}, 1);
  EXPECT_TRUE(this->lattice.sizeReduce(2, false));
  EXPECT_EQ(this->lattice.basis.B()[2][1], TypeParam(-4999999));
  EXPECT_EQ(this->lattice.basis.vecStatus[2], ST_SIZE_REDUCED);
}

TYPED_TEST(LllStepsOver, HalvesAreRoundedAwayFromZero) {
  this->use({{2, 0}, {-3, 5}}, 1);
  EXPECT_TRUE(this->lattice.sizeReduce(2, false));
  EXPECT_EQ(textOf(this->lattice.basis.B()[2]), "[ 1 5 ]");
  EXPECT_EQ(this->lattice.gramSchmidt.mu[2][1], 0.5L);
}

TYPED_TEST(LllStepsOver, AllCoefficientsAreReducedFromTheLastOn) {
  this->use({{10, 0, 0}, {4, 10, 0}, {7, 18, 10}}, 2);
  EXPECT_TRUE(this->lattice.sizeReduce(3, false));
  // Two times the second vector, which leaves -1 in the first coordinate.
  EXPECT_EQ(textOf(this->lattice.basis.B()[3]), "[ -1 -2 10 ]");
  EXPECT_EQ(this->lattice.basis.vecStatus[1], ST_MU);
  EXPECT_EQ(this->lattice.basis.vecStatus[2], ST_MU);
}

TYPED_TEST(LllStepsOver, VectorsBehindAreForgotten) {
  this->use({{1, 0, 0}, {5, 1, 0}, {0, 0, 1}}, 3);
  this->lattice.basis.vecStatus[3] |= ST_SWAP_CHECKED;
  EXPECT_TRUE(this->lattice.sizeReduce(2, false));
  EXPECT_EQ(this->lattice.basis.vecStatus[1], ST_MU);
  EXPECT_EQ(this->lattice.basis.vecStatus[3], 0);
}

TYPED_TEST(LllStepsOver, ReducedVectorIsNotLookedAtAgain) {
  this->use({{1, 0}, {5, 1}}, 1);
  this->lattice.basis.vecStatus[2] = ST_SIZE_REDUCED;
  EXPECT_FALSE(this->lattice.sizeReduce(2, false));
  EXPECT_EQ(textOf(this->lattice.basis.B()[2]), "[ 5 1 ]");
}

TYPED_TEST(LllStepsOver, StrictReductionMakesNoCoordinateGreater) {
  this->use({{9, 2, 2}, {9, 9, 1}}, 1);
  EXPECT_TRUE(this->lattice.sizeReduce(2, true));
  EXPECT_EQ(textOf(this->lattice.basis.B()[2]), "[ 0 7 -1 ]");
  // (7, 7, -5) less (4, 4, 4) is shorter, but -9 exceeds 7.
  this->use({{4, 4, 4}, {7, 7, -5}}, 1);
  EXPECT_FALSE(this->lattice.sizeReduce(2, true));
  EXPECT_EQ(textOf(this->lattice.basis.B()[2]), "[ 7 7 -5 ]");
  EXPECT_TRUE(carries(this->lattice.basis.vecStatus[2], ST_SIZE_REDUCED));
  this->use({{4, 4, 4}, {7, 7, -5}}, 1);
  EXPECT_TRUE(this->lattice.sizeReduce(2, false));
  EXPECT_EQ(textOf(this->lattice.basis.B()[2]), "[ 3 3 -9 ]");
}

TYPED_TEST(LllStepsOver, StrictReductionMayKeepTheGreatestCoordinate) {
  this->use({{2, 0}, {3, 5}}, 1);
  EXPECT_TRUE(this->lattice.sizeReduce(2, true));
  EXPECT_EQ(textOf(this->lattice.basis.B()[2]), "[ -1 5 ]");
}

TYPED_TEST(LllStepsOver, DependentVectorIsToldByItsStatus) {
  this->use({{1, 2}, {3, 6}}, 1);
  EXPECT_FALSE(this->lattice.sizeReduce(2, false));
  EXPECT_EQ(this->lattice.basis.vecStatus[2], ST_DEPENDENT);
  EXPECT_EQ(textOf(this->lattice.basis.B()[2]), "[ 3 6 ]");
}

TYPED_TEST(LllStepsOver, ReductionIsTrackedWhereAskedFor) {
  this->use({{1, 0}, {5, 1}}, 1);
  this->lattice.params.consistency = true;
  EXPECT_TRUE(this->lattice.sizeReduce(2, false));
  EXPECT_EQ(rowsText(this->lattice.basis.TT[1]), "[ 1 0 ] [ -5 1 ]");
  const Matrix<TypeParam> product = this->lattice.basis.TT[1] * this->lattice.basis.B_save;
  EXPECT_EQ(rowsText(product), rowsText(this->lattice.basis.B()));
}

TEST(SizeReduce, LongVectorsAreReducedToTheEnd) {
  Matrix<QQ> basis{
      {q("1000000007"), QQ(0), QQ(1)},
      {QQ(3), q("998244353"), QQ(0)},
      {q("123456789012345678901234567890"), q("987654321098765432109876543210"), q("5")}};
  Lattice<QQ, long double> lattice(&basis);
  for (Index k = 1; k <= 3; ++k) lattice.sizeReduce(k, false);
  for (const LllViolation& violation :
       lllViolations(lattice.basis.B(), QQ(1, 2), QQ(1, 2) + q("1/1000000")))
    EXPECT_NE(violation.kind, LllViolation::Kind::size) << violation.k << " " << violation.j;
}

// Each look takes off the 64 bits that long double sees, and there are more than 4000.
TEST(SizeReduce, VectorIsLeftAfterFiftyLooks) {
  const Matrix<QQ> basis{{QQ(1), QQ(0)}, {pow(QQ(3), QQ(2600)), QQ(1)}};
  Lattice<QQ, long double> lattice(&basis);
  EXPECT_TRUE(lattice.classicOrthogonalise(1, 1));
  EXPECT_TRUE(lattice.sizeReduce(2, false));
  EXPECT_EQ(lattice.basis.vecStatus[2], ST_SIZE_REDUCED);
  EXPECT_FALSE(lattice.basis.B()[2][1].isZero());
  lattice.basis.vecStatus[2] = 0;
  EXPECT_TRUE(lattice.sizeReduce(2, false));
  EXPECT_EQ(textOf(lattice.basis.B()[2]), "[ 0 1 ]");
}

// The second row is a fifteenth of the first, but for 1 in 2000 digits. Rounding leaves more
// than that of its product with the third, and the square of this is beyond long double.
TEST(SizeReduce, OverflowIsFatalInTheExactLatticeAndAnExceptionElsewhere) {
  const QQ large = pow(QQ(2), QQ(6600));
  const Matrix<QQ> basis{
      {QQ(15) * large, QQ(0), QQ(0)}, {large, QQ(1), QQ(0)}, {QQ(31) * large, QQ(0), QQ(1)}};
  Lattice<QQ, long double> exact(&basis);
  EXPECT_EQ(exact.modifiedOrthogonalise(1, 2, OnDependency::report, LqCache::bypass), 0);
  EXPECT_FAILS_WITH(exact.sizeReduce(3, false), "numbers too large for the reduction");
  Matrix<long double> images;
  images.resize(3, 3, false);
  for (Index k = 1; k <= 3; ++k)
    for (Index j = 1; j <= 3; ++j)
      images[k][j] = NumberConversion<long double, QQ>::nearest(basis[k][j]);
  Lattice<long double, long double> standard(&images);
  EXPECT_EQ(standard.modifiedOrthogonalise(1, 2, OnDependency::report, LqCache::bypass), 0);
  EXPECT_THROW(standard.sizeReduce(3, false), DecimalPrecisionException);
}

TYPED_TEST(LllStepsOver, FirstVectorIsNeverExchanged) {
  this->use({{5, 0}, {1, 0}}, 1);
  EXPECT_EQ(this->lattice.swapStep(1), 2);
}

TYPED_TEST(LllStepsOver, ShorterVectorIsExchangedBackwards) {
  this->use({{5, 0}, {0, 1}}, 2);
  EXPECT_EQ(this->lattice.swapStep(2), 1);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 0 1 ] [ 5 0 ]");
  EXPECT_EQ(this->lattice.basis.vecStatus[1], 0);
}

TYPED_TEST(LllStepsOver, VectorsOfOneLengthStay) {
  this->use({{5, 0}, {0, 5}}, 2);
  EXPECT_EQ(this->lattice.swapStep(2), 3);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 5 0 ] [ 0 5 ]");
}

// The second vector is shorter, orthogonally, but not with what it has of the first.
TYPED_TEST(LllStepsOver, ProjectionCountsInTheExchangeCondition) {
  this->use({{5, 0}, {2, 5}}, 2);
  EXPECT_EQ(this->lattice.swapStep(2), 3);
  this->use({{5, 0}, {2, 4}}, 2);
  EXPECT_EQ(this->lattice.swapStep(2), 1);
}

// The ratio of the squared lengths is 1 - 1e-9 for coordinates of 2e9.
TYPED_TEST(LllStepsOver, ExchangeWantsABillionthOfTheSquaredLength) {
  this->use({{1990000000, 0}, {0, 1989999999}}, 2);
  EXPECT_EQ(this->lattice.swapStep(2), 1);
  this->use({{2010000000, 0}, {0, 2009999999}}, 2);
  EXPECT_EQ(this->lattice.swapStep(2), 3);
}

TYPED_TEST(LllStepsOver, DeepInsertionWantsABillionthOfTheSquaredLength) {
  this->use({{1, 0, 0}, {0, 1990000000, 0}, {0, 0, 1989999999}}, 3);
  EXPECT_EQ(this->lattice.deepInsertStep(3), 2);
  this->use({{1, 0, 0}, {0, 2010000000, 0}, {0, 0, 2009999999}}, 3);
  EXPECT_EQ(this->lattice.deepInsertStep(3), 4);
}

TYPED_TEST(LllStepsOver, DeepInsertionOfNothingThatIsLeftIsNone) {
  this->use({{1, 0, 0}, {0, 4, 0}, {3, 0, 0}}, 2);
  EXPECT_FALSE(this->lattice.classicOrthogonalise(3, 3));
  EXPECT_EQ(this->lattice.deepInsertStep(3), 4);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 0 ] [ 0 4 0 ] [ 3 0 0 ]");
  EXPECT_EQ(this->lattice.run.deepInsertions, 0);
}

TYPED_TEST(LllStepsOver, DeepInsertionGoesToTheFirstPositionThatFits) {
  this->use({{1, 0, 0, 0}, {0, 9, 0, 0}, {0, 0, 8, 0}, {0, 0, 0, 2}}, 4);
  EXPECT_EQ(this->lattice.deepInsertStep(4), 2);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 0 0 ] [ 0 0 0 2 ] [ 0 9 0 0 ] [ 0 0 8 0 ]");
  EXPECT_EQ(this->lattice.basis.vecStatus[1], ST_MU);
  for (const Index k : {2, 3, 4}) EXPECT_EQ(this->lattice.basis.vecStatus[k], 0);
  EXPECT_EQ(this->lattice.run.deepInsertions, 1);
}

TYPED_TEST(LllStepsOver, DeepInsertionNeverGoesToTheFirstPosition) {
  this->use({{9, 0, 0}, {0, 1, 0}, {0, 0, 2}}, 3);
  EXPECT_EQ(this->lattice.deepInsertStep(3), 4);
  EXPECT_EQ(this->lattice.run.deepInsertions, 0);
}

TYPED_TEST(LllStepsOver, DeepInsertionLeavesTheSecondVector) {
  this->use({{9, 0}, {0, 1}}, 2);
  EXPECT_EQ(this->lattice.deepInsertStep(2), 3);
  EXPECT_EQ(this->lattice.deepInsertStep(1), 2);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 9 0 ] [ 0 1 ]");
}

TYPED_TEST(LllStepsOver, DeepInsertionMeasuresWithoutTheVectorsBefore) {
  this->use({{3, 0, 0}, {0, 4, 0}, {3, 0, 1}}, 3);
  // Of length 10, but only 1 of it is left behind the first vector.
  EXPECT_EQ(this->lattice.deepInsertStep(3), 2);
}

TYPED_TEST(LllStepsOver, IndependentVectorIsNotBlended) {
  this->use({{1, 0}, {0, 1}}, 2);
  EXPECT_EQ(this->lattice.blendDependent(2, 2), 0);
}

TYPED_TEST(LllStepsOver, DependentVectorMovesBehindTheLastIndependentOne) {
  this->use({{1, 0, 0}, {0, 0, 0}, {0, 1, 0}, {0, 0, 1}}, 1);
  this->lattice.basis.vecStatus[2] = ST_DEPENDENT;
  EXPECT_EQ(this->lattice.blendDependent(2, 4), -2);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 0 ] [ 0 1 0 ] [ 0 0 1 ] [ 0 0 0 ]");
}

TYPED_TEST(LllStepsOver, DependentVectorMovesNoFurtherThanItMay) {
  this->use({{1, 0, 0}, {0, 0, 0}, {0, 1, 0}, {0, 0, 1}}, 1);
  this->lattice.basis.vecStatus[2] = ST_DEPENDENT;
  EXPECT_EQ(this->lattice.blendDependent(2, 3), -2);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 0 ] [ 0 1 0 ] [ 0 0 0 ] [ 0 0 1 ]");
}

TYPED_TEST(LllStepsOver, DependentVectorsAtTheEndArePassedOver) {
  this->use({{1, 0}, {0, 0}, {0, 1}, {2, 0}, {0, 0}}, 1);
  this->lattice.basis.vecStatus[2] = ST_DEPENDENT;
  this->lattice.basis.vecStatus[4] = ST_DEPENDENT;
  EXPECT_EQ(this->lattice.blendDependent(2, 5), -2);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 ] [ 0 1 ] [ 0 0 ] [ 2 0 ] [ 0 0 ]");
}

TYPED_TEST(LllStepsOver, DependentVectorMayBeInsertedDeeply) {
  this->use({{1, 0, 0}, {0, 4, 0}, {0, 2, 0}}, 2);
  EXPECT_FALSE(this->lattice.classicOrthogonalise(3, 3));
  EXPECT_EQ(this->lattice.blendDependent(3, 3), 2);
  EXPECT_EQ(rowsText(this->lattice.basis.B()), "[ 1 0 0 ] [ 0 2 0 ] [ 0 4 0 ]");
}

TYPED_TEST(LllStepsOver, DependentVectorWithoutAPlaceIsTold) {
  this->use({{1, 0}, {0, 0}, {0, 0}}, 1);
  this->lattice.basis.vecStatus[2] = ST_DEPENDENT;
  try {
    this->lattice.blendDependent(2, 3);
    FAIL() << "nothing thrown";
  } catch (const DependencyException& exception) {
    EXPECT_EQ(exception.message(), "Blending is not possible");
  }
}

}  // namespace
}  // namespace starsift
