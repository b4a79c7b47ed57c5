// What becomes of the generated basis: tracking, the test that nothing was lost, scales.
#include <gtest/gtest.h>

#include "certificates/LatticeEquality.h"
#include "support/fixtures/BasisRows.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/LatticeOfProblem.h"
#include "support/fixtures/RowsText.h"
#include "support/fixtures/ScratchDir.h"

namespace starsift {
namespace {

using test::messageOf;
using test::q;
using test::rowsText;
using test::textOf;

template <class T>
class LatticeTransformOver : public test::LatticeOfProblem<T> {
 protected:
  LatticeTransformOver() { this->live.reset(&basis, LatPath::keep); }

  /// Two times the second row on the first one, then both exchanged.
  void move() { this->live.basis.replace(Matrix<T>{{5, 1, 8}, {11, 2, 20}}); }

  /// The second row reduced and exchanged with the first one, which may be tracked.
  void moveTracked() {
    this->live.classicOrthogonalise(1, 1);
    EXPECT_TRUE(this->live.sizeReduce(2, false));
    this->live.swapBasisVectors(1, 2, RowStatus::forget);
  }

  /// Verifies without a file; the error stream goes to `errors`.
  bool verify(bool aardal = false) {
    testing::internal::CaptureStderr();
    const bool agrees = this->live.verifyTransformation(
        aardal ? LatticeKind::equations : LatticeKind::full, Announce::silent);
    errors = testing::internal::GetCapturedStderr();
    return agrees;
  }

  void expectRestarted() const {
    EXPECT_EQ(rowsText(this->live.basis.B()), rowsText(basis));
    EXPECT_EQ(rowsText(this->live.basis.B_save), rowsText(basis));
    EXPECT_TRUE(this->live.run.consistencyForced);
    EXPECT_TRUE(this->live.params.consistency);
    EXPECT_EQ(this->live.basis.vecStatus[1], 0);
    ASSERT_EQ(this->live.basis.TT.dimension(), 1);
    EXPECT_TRUE(this->isIdentity(this->live.basis.TT[1], 2));
  }

  const Matrix<T> basis{{1, 0, 4}, {5, 1, 8}};
  std::string errors;
};
TYPED_TEST_SUITE(LatticeTransformOver, test::LatticeNumbers);

TYPED_TEST(LatticeTransformOver, MovedBasisBecomesTheSavedOne) {
  this->move();
  auto& lattice = this->live;
  const std::string moved = rowsText(lattice.basis.B());
  lattice.basis.vecStatus[1] = ST_MU;
  EXPECT_TRUE(this->verify());
  EXPECT_EQ(rowsText(lattice.basis.B_save), moved);
  EXPECT_EQ(rowsText(lattice.basis.B()), moved);
  EXPECT_TRUE(sameLattice(lattice.basis.B_save, this->basis));
  ASSERT_EQ(lattice.basis.TT.dimension(), 1);
  EXPECT_TRUE(this->isIdentity(lattice.basis.TT[1], 2));
  EXPECT_EQ(lattice.basis.vecStatus[1], ST_MU);
  EXPECT_FALSE(lattice.params.consistency);
}

TYPED_TEST(LatticeTransformOver, TrackedBasisBecomesTheSavedOne) {
  auto& lattice = this->live;
  this->setSilently(lattice.params.consistency, true);
  this->moveTracked();
  const std::string moved = rowsText(lattice.basis.B());
  ASSERT_NE(moved, rowsText(this->basis));
  EXPECT_TRUE(this->verify());
  EXPECT_EQ(rowsText(lattice.basis.B_save), moved);
  EXPECT_EQ(rowsText(lattice.basis.B()), moved);
  EXPECT_TRUE(this->isIdentity(lattice.basis.TT[1], 2));
  EXPECT_TRUE(lattice.params.consistency);
}

TYPED_TEST(LatticeTransformOver, SavedBasisIsRaw) {
  auto& lattice = this->live;
  lattice.setScale(3, TypeParam(3));
  test::exchangeRows(lattice, 1, 2);
  EXPECT_TRUE(this->verify());
  EXPECT_EQ(rowsText(lattice.basis.B_save), "[ 5 1 8 ] [ 1 0 4 ]");
  EXPECT_EQ(rowsText(lattice.basis.B()), "[ 5 1 24 ] [ 1 0 12 ]");
}

TYPED_TEST(LatticeTransformOver, CoordinatesAfterwardsAreThoseOverTheNewBasis) {
  auto& lattice = this->live;
  EXPECT_EQ(rowsText(lattice.coordinatesOfAll(this->basis, Over::saved)), "[ 1 0 ] [ 0 1 ]");
  EXPECT_EQ(rowsText(lattice.coordinatesOfAll(this->basis, Over::working)), "[ 1 0 ] [ 0 1 ]");
  lattice.swapBasisVectors(1, 2, RowStatus::forget);
  EXPECT_TRUE(this->verify());
  EXPECT_EQ(rowsText(lattice.coordinatesOfAll(this->basis, Over::saved)), "[ 0 1 ] [ 1 0 ]");
  EXPECT_EQ(rowsText(lattice.coordinatesOfAll(this->basis, Over::working)), "[ 0 1 ] [ 1 0 ]");
}

TYPED_TEST(LatticeTransformOver, FactorsOfTheWorkingBasisAreTakenOver) {
  auto& lattice = this->live;
  lattice.swapBasisVectors(1, 2, RowStatus::forget);
  lattice.basis.workingFactors.echelon = this->basis;
  EXPECT_TRUE(this->verify());
  EXPECT_EQ(rowsText(lattice.basis.savedFactors.echelon), rowsText(this->basis));
}

TYPED_TEST(LatticeTransformOver, VectorOffTheLatticeRestartsTheTracking) {
  auto& lattice = this->live;
  test::setEntry(lattice, 2, 3, TypeParam(1));
  lattice.basis.vecStatus[1] = ST_MU;
  EXPECT_FALSE(this->verify());
  this->expectRestarted();
}

TYPED_TEST(LatticeTransformOver, RestartOfTheTrackingKeepsTheScale) {
  auto& lattice = this->live;
  lattice.setScale(3, TypeParam(3));
  test::setEntry(lattice, 2, 3, TypeParam(1));
  EXPECT_FALSE(this->verify());
  EXPECT_EQ(rowsText(lattice.basis.B()), "[ 1 0 12 ] [ 5 1 24 ]");
}

TYPED_TEST(LatticeTransformOver, NextSuccessEndsTheForcedTracking) {
  auto& lattice = this->live;
  test::setEntry(lattice, 2, 3, TypeParam(1));
  EXPECT_FALSE(this->verify());
  this->moveTracked();
  const std::string moved = rowsText(lattice.basis.B());
  EXPECT_TRUE(this->verify());
  EXPECT_EQ(rowsText(lattice.basis.B_save), moved);
  EXPECT_FALSE(lattice.run.consistencyForced);
  EXPECT_FALSE(lattice.params.consistency);
}

TYPED_TEST(LatticeTransformOver, BasisThatIsNotTheTrackedOneIsMadeAnew) {
  auto& lattice = this->live;
  this->setSilently(lattice.params.consistency, true);
  lattice.setScale(3, TypeParam(3));
  lattice.swapBasisVectors(1, 2, RowStatus::forget);
  test::setEntry(lattice, 1, 1, TypeParam(6));
  lattice.basis.vecStatus[1] = ST_MU;
  EXPECT_FALSE(this->verify());
  EXPECT_EQ(rowsText(lattice.basis.B_save), "[ 5 1 8 ] [ 1 0 4 ]");
  EXPECT_EQ(rowsText(lattice.basis.B()), "[ 5 1 24 ] [ 1 0 12 ]");
  EXPECT_EQ(lattice.basis.vecStatus[1], 0);
  EXPECT_EQ(rowsText(lattice.coordinatesOfAll(lattice.basis.B_save, Over::saved)),
            "[ 1 0 ] [ 0 1 ]");
}

TYPED_TEST(LatticeTransformOver, AardalReductionGetsAMatrixForEachRound) {
  auto& lattice = this->live;
  this->setSilently(lattice.params.consistency, true);
  this->moveTracked();
  EXPECT_TRUE(this->verify(true));
  ASSERT_EQ(lattice.basis.TT.dimension(), 2);
  EXPECT_TRUE(this->isIdentity(lattice.basis.TT[2], 2));
  // Nothing happened since: the matrix is still free.
  EXPECT_TRUE(this->verify(true));
  EXPECT_EQ(lattice.basis.TT.dimension(), 2);
  Matrix<TypeParam> rows(this->basis);
  lattice.applyTransformations(rows);
  EXPECT_EQ(rowsText(rows), rowsText(lattice.basis.B()));
}

TYPED_TEST(LatticeTransformOver, SeveralMatricesAreFatalOutsideAnAardalReduction) {
  this->live.basis.TT.resize(2, false);
  EXPECT_FAILS_WITH(this->live.verifyTransformation(LatticeKind::full, Announce::silent),
                    "In the non-aardal case TT.MN should always be == 1");
}

TYPED_TEST(LatticeTransformOver, LatticeFileIsWrittenUnlessSilent) {
  test::ScratchDir scratch;
  auto& lattice = this->live;
  lattice.run.outputSwitch = true;
  lattice.latFile = scratch.file("p.lat");
  lattice.verifyTransformation(LatticeKind::full, Announce::silent);
  EXPECT_TRUE(scratch.names().empty());
  // Nor where the lattice got lost.
  test::setEntry(lattice, 2, 3, TypeParam(1));
  lattice.verifyTransformation(LatticeKind::full, Announce::full);
  EXPECT_TRUE(scratch.names().empty());
  lattice.verifyTransformation(LatticeKind::full, Announce::full);
  EXPECT_EQ(scratch.names(), std::vector<std::string>{"p.lat"});
}

TYPED_TEST(LatticeTransformOver, EmptyLatticeIsItself) {
  this->live.reset(nullptr, LatPath::keep);
  EXPECT_TRUE(this->verify());
  EXPECT_EQ(this->live.basis.TT.dimension(), 1);
}

using LatticeTransform = LatticeTransformOver<long double>;
using ExactLatticeTransform = LatticeTransformOver<QQ>;

TEST_F(LatticeTransform, LargeEntryIsTold) {
  test::setEntry(this->live, 1, 1, 1000000001.0L);
  EXPECT_EQ(messageOf<PrecisionException>(
                [this] { live.verifyTransformation(LatticeKind::full, Announce::silent); }),
            "base matrix overflow");
}

TEST_F(ExactLatticeTransform, NoEntryIsTooLarge) {
  test::setRow(live, 1, Vector<QQ>{q("5000000000001"), q("1000000000000"), q("8000000000004")});
  EXPECT_TRUE(this->verify());
}

TEST_F(LatticeTransform, LostLatticeRestartsTheTracking) {
  test::setRow(live, 2, Vector<long double>{10, 2, 16});
  EXPECT_FALSE(this->verify());
  this->expectRestarted();
}

TEST_F(LatticeTransform, LostLatticeIsToldWhereItWasTracked) {
  setSilently(live.params.consistency, true);
  live.basis.TT[1][2][2] = 2;
  EXPECT_EQ(messageOf<PrecisionException>(
                [this] { live.verifyTransformation(LatticeKind::full, Announce::silent); }),
            "unimodular error");
}

TEST_F(ExactLatticeTransform, LostLatticeIsOnlyReported) {
  for (const bool isTracked : {false, true}) {
    live.reset(&basis, LatPath::keep);
    setSilently(live.params.consistency, isTracked);
    test::setRow(live, 2, Vector<QQ>{10, 2, 16});
    if (isTracked) live.basis.TT[1][2][2] = QQ(2);
    EXPECT_TRUE(this->verify());
    EXPECT_EQ(errors, "*** unimodularity check skipped\n");
    EXPECT_EQ(rowsText(live.basis.B_save), "[ 1 0 4 ] [ 10 2 16 ]");
  }
}

TEST_F(LatticeTransform, NoiseOfTheTransformationIsDropped) {
  setSilently(live.params.consistency, true);
  live.basis.TT[1][2][1] = 1e-10L;
  EXPECT_TRUE(this->verify());
  EXPECT_EQ(rowsText(live.basis.B_save), rowsText(basis));
}

TEST_F(LatticeTransform, LargeProductIsToldAsSuch) {
  const Matrix<long double> large{{1e9L, 0}, {0, 1}};
  live.reset(&large, LatPath::keep);
  setSilently(live.params.consistency, true);
  live.basis.TT[1][2][1] = 3e9L;
  EXPECT_EQ(messageOf<PrecisionException>(
                [this] { live.verifyTransformation(LatticeKind::full, Announce::silent); }),
            "transformation overflow");
}

TYPED_TEST(LatticeTransformOver, TransformationsAreAppliedInTheirOrder) {
  auto& lattice = this->live;
  lattice.basis.TT.resize(2, false);
  lattice.basis.TT[1] = Matrix<TypeParam>{{0, 1}, {1, 0}};
  lattice.basis.TT[2] = Matrix<TypeParam>{{1, 2}, {0, 1}};
  Matrix<TypeParam> rows(this->basis);
  lattice.applyTransformations(rows);
  EXPECT_EQ(rowsText(rows), "[ 7 1 16 ] [ 1 0 4 ]");
}

TEST_F(LatticeTransform, OverflowOfTransformationsIsTold) {
  live.basis.TT[1][1][1] = 1000000001.0L;
  Matrix<long double> rows(basis);
  EXPECT_EQ(messageOf<PrecisionException>([&] { live.applyTransformations(rows); }),
            "Overflow when applying transformation");
}

TEST_F(ExactLatticeTransform, TransformationsDoNotOverflow) {
  live.basis.TT[1][1][1] = q("1000000001");
  Matrix<QQ> rows(basis);
  live.applyTransformations(rows);
  EXPECT_EQ(rows[1][3], q("4000000004"));
}

TYPED_TEST(LatticeTransformOver, PushStartsAgainUnlessItLooksAtTheLastMatrix) {
  auto& lattice = this->live;
  lattice.basis.TT[1] = Matrix<TypeParam>{{0, 1}, {1, 0}};
  lattice.pushTransformation(Stack::push);
  EXPECT_EQ(lattice.basis.TT.dimension(), 2);
  EXPECT_TRUE(this->isIdentity(lattice.basis.TT[2], 2));
  lattice.pushTransformation(Stack::push);
  EXPECT_EQ(lattice.basis.TT.dimension(), 2);
  lattice.pushTransformation(Stack::restart);
  ASSERT_EQ(lattice.basis.TT.dimension(), 1);
  EXPECT_TRUE(this->isIdentity(lattice.basis.TT[1], 2));
}

TYPED_TEST(LatticeTransformOver, IdentityOfAnotherOrderIsNone) {
  auto& lattice = this->live;
  lattice.basis.TT[1] = Matrix<TypeParam>{{1, 0, 0}, {0, 1, 0}};
  lattice.pushTransformation(Stack::push);
  EXPECT_EQ(lattice.basis.TT.dimension(), 2);
}

TYPED_TEST(LatticeTransformOver, MoreThanTwentyMatricesAreReported) {
  auto& lattice = this->live;
  lattice.basis.TT.resize(19, false);
  const auto push = [&] {
    lattice.basis.TT[lattice.basis.TT.dimension()] = Matrix<TypeParam>{{0, 1}, {1, 0}};
    testing::internal::CaptureStderr();
    lattice.pushTransformation(Stack::push);
    return testing::internal::GetCapturedStderr();
  };
  EXPECT_EQ(push(), "");
  EXPECT_EQ(lattice.basis.TT.dimension(), 20);
  EXPECT_EQ(push(), "*** TT.MN > T_MAT_NBR\n");
  EXPECT_EQ(lattice.basis.TT.dimension(), 21);
  EXPECT_NE(lastOutputTime(), 0);
}

TYPED_TEST(LatticeTransformOver, ScaleMapsTheBasisAnew) {
  auto& lattice = this->live;
  lattice.basis.vecStatus[1] = ST_MU;
  lattice.setScale(1, TypeParam(3));
  EXPECT_EQ(rowsText(lattice.basis.B()), "[ 3 0 4 ] [ 15 1 8 ]");
  EXPECT_EQ(lattice.basis.vecStatus[1], 0);
  EXPECT_EQ(lattice.basis.homScaled, TypeParam(1));
  lattice.setScale(1, TypeParam(2));
  EXPECT_EQ(rowsText(lattice.basis.B()), "[ 2 0 4 ] [ 10 1 8 ]");
  EXPECT_EQ(rowsText(lattice.basis.B_save), rowsText(this->basis));
}

TYPED_TEST(LatticeTransformOver, ScaleThatIsThereAlreadyChangesNothing) {
  auto& lattice = this->live;
  lattice.basis.vecStatus[1] = ST_MU;
  lattice.setScale(1, TypeParam(1));
  EXPECT_EQ(lattice.basis.vecStatus[1], ST_MU);
}

TYPED_TEST(LatticeTransformOver, ScaleOfTheLastCoordinateIsThatOfHomValue) {
  auto& lattice = this->live;
  lattice.homValue = TypeParam(5);
  lattice.setScale(3, TypeParam(2));
  EXPECT_EQ(lattice.basis.homScaled, TypeParam(10));
}

TYPED_TEST(LatticeTransformOver, TrackingThatTheLatticeTurnedOnEndsWithReset) {
  this->setSilently(this->live.params.consistency, true);
  this->live.reset(nullptr, LatPath::keep);
  EXPECT_TRUE(this->live.params.consistency);
  this->live.run.consistencyForced = true;
  this->live.reset(nullptr, LatPath::keep);
  EXPECT_FALSE(this->live.params.consistency);
  EXPECT_FALSE(this->live.run.consistencyForced);
}

}  // namespace
}  // namespace starsift
