#include <gtest/gtest.h>

#include "lattice/Lattice.h"
#include "numbers/QQ.h"

namespace starsift {
namespace {

template <class T>
using LatticeOver = Lattice<T, long double>;

template <class T>
class LatticeRecordOver : public testing::Test {
 protected:
  static Matrix<T> basis() { return {{T(1), T(2), T(3)}, {T(4), T(5), T(6)}}; }

  static void expectSame(const Matrix<T>& a, const Matrix<T>& b) {
    ASSERT_EQ(a.rowCount(), b.rowCount());
    ASSERT_EQ(a.columnCount(), b.columnCount());
    for (Index i = 1; i <= a.rowCount(); ++i) EXPECT_TRUE(identical(a[i], b[i]));
  }

  static void expectZero(const Vector<T>& vector, Index dimension) {
    EXPECT_TRUE(identical(vector, Vector<T>(dimension)));
  }

  /// Stored vectors of each kind, and a star.
  static void fill(LatticeOver<T>& lattice) {
    lattice.bestVector = TimeVector<T>{T(1), T(2), T(3)};
    lattice.bestVector.time = 7;
    lattice.bestRecord.status = ScoreStatus::inhomogeneous;
    lattice.bestTarget = FiledSolution<T>{T(4), T(5), T(6)};
    lattice.bestTarget.time = 8;
    lattice.bestTarget.targetNorm = T(-3);
    lattice.solutions.resize(1, false);
    lattice.solutions[1] = FiledSolution<T>{T(7), T(8), T(9)};
    lattice.solutions[1].time = 9;
    lattice.file.stars.resize(1, false);
    lattice.file.stars[1] = Star<T>{T(5)};
    HeuristicVector<T, long double> good;
    good.resize(3, false);
    good[1] = T(1);
    lattice.collected.insert(good);
    lattice.chosen.insert(good);
  }
};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(LatticeRecordOver, LatticeNumbers);

TYPED_TEST(LatticeRecordOver, WithoutABasisIsEmpty) {
  const LatticeOver<TypeParam> lattice;
  EXPECT_EQ(lattice.n, 0);
  EXPECT_EQ(lattice.m, 0);
  EXPECT_EQ(lattice.vecStatus.dimension(), 0);
  ASSERT_EQ(lattice.TT.dimension(), 1);
  EXPECT_EQ(lattice.TT[1].rowCount(), 0);
  EXPECT_EQ(lattice.B.rowCount(), 0);
  EXPECT_EQ(lattice.file.stars.dimension(), 0);
  EXPECT_TRUE(lattice.latFile.empty());
}

TYPED_TEST(LatticeRecordOver, StartsWithItsSwitchesAndStages) {
  const LatticeOver<TypeParam> lattice;
  EXPECT_EQ(lattice.latticeKind, LatticeKind::none);
  EXPECT_TRUE(lattice.equationsRemoved);
  EXPECT_FALSE(lattice.modsInLattice);
  EXPECT_FALSE(lattice.consistencyForced);
  EXPECT_FALSE(lattice.keepDependent);
  EXPECT_FALSE(lattice.outputSwitch);
  EXPECT_FALSE(lattice.terminationSwitch);
  EXPECT_EQ(lattice.homValue, TypeParam(1));
  EXPECT_EQ(lattice.homScaled, TypeParam(1));
  EXPECT_EQ(lattice.bestVector.time, unknownTime);
  EXPECT_EQ(lattice.bestRecord.status, ScoreStatus::empty);
}

TYPED_TEST(LatticeRecordOver, OverABasisTakesItTwice) {
  const Matrix<TypeParam> basis = this->basis();
  const LatticeOver<TypeParam> lattice(&basis);
  EXPECT_EQ(lattice.n, 2);
  EXPECT_EQ(lattice.m, 3);
  this->expectSame(lattice.B, basis);
  this->expectSame(lattice.B_save, basis);
  ASSERT_EQ(lattice.TT.dimension(), 1);
  this->expectSame(lattice.TT[1], Matrix<TypeParam>::identity(2));
}

TYPED_TEST(LatticeRecordOver, OverABasisStartsWithoutATransformationOfCoordinates) {
  const Matrix<TypeParam> basis = this->basis();
  const LatticeOver<TypeParam> lattice(&basis);
  EXPECT_TRUE(identical(lattice.scale, Vector<TypeParam>{1, 1, 1}));
  this->expectZero(lattice.translation, 3);
}

TYPED_TEST(LatticeRecordOver, OverABasisHasAnEntryForEachRowAndCoordinate) {
  const Matrix<TypeParam> basis = this->basis();
  const LatticeOver<TypeParam> lattice(&basis);
  this->expectZero(lattice.c, 3);
  this->expectZero(lattice.l, 3);
  this->expectZero(lattice.r, 3);
  this->expectZero(lattice.lSave, 3);
  this->expectZero(lattice.rSave, 3);
  EXPECT_EQ(lattice.mu.rowCount(), 2);
  EXPECT_EQ(lattice.mu.columnCount(), 2);
  EXPECT_EQ(lattice.bSq.dimension(), 2);
  EXPECT_EQ(lattice.cLen.dimension(), 2);
  EXPECT_EQ(lattice.vectorAmounts.dimension(), 2);
  EXPECT_EQ(lattice.vectorMarks.dimension(), 2);
  ASSERT_EQ(lattice.vecStatus.dimension(), 2);
  EXPECT_EQ(lattice.vecStatus[1], 0);
  EXPECT_EQ(lattice.vecStatus[2], 0);
}

TYPED_TEST(LatticeRecordOver, ResetForgetsTheSearch) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  this->fill(lattice);
  lattice.latticeKind = LatticeKind::full;
  lattice.equationsRemoved = false;
  lattice.modsInLattice = true;
  lattice.consistencyForced = true;
  lattice.keepDependent = true;
  lattice.rangeMultiple = TypeParam(9);
  lattice.supLimit = 9;
  lattice.deepInsertions = 9;
  lattice.lastPass = {9, 8, 7};
  lattice.restarts = 9;
  lattice.file.editProblem().dt = Vector<TypeParam>{TypeParam(3)};
  lattice.runVariables[MainMutexVariable::counter5].set("3");
  lattice.runVariables[MainMutexVariable::counter6].set("4");
  lattice.runVariables[MainMutexVariable::counter7].set("5");
  lattice.reset(nullptr, false);
  EXPECT_EQ(lattice.n, 0);
  EXPECT_EQ(lattice.m, 0);
  EXPECT_EQ(lattice.bestVector.dimension(), 0);
  EXPECT_EQ(lattice.bestVector.time, unknownTime);
  EXPECT_EQ(lattice.bestRecord.status, ScoreStatus::empty);
  EXPECT_EQ(lattice.bestTarget.dimension(), 0);
  EXPECT_EQ(lattice.solutions.dimension(), 0);
  EXPECT_EQ(lattice.collected.count(), 0);
  EXPECT_EQ(lattice.chosen.count(), 0);
  EXPECT_EQ(lattice.latticeKind, LatticeKind::none);
  EXPECT_TRUE(lattice.equationsRemoved);
  EXPECT_FALSE(lattice.modsInLattice);
  EXPECT_FALSE(lattice.consistencyForced);
  EXPECT_FALSE(lattice.keepDependent);
  EXPECT_EQ(lattice.rangeMultiple, TypeParam(0));
  EXPECT_EQ(lattice.supLimit, 0.0L);
  EXPECT_EQ(lattice.deepInsertions, 0);
  EXPECT_EQ(lattice.lastPass.swaps, 0);
  EXPECT_EQ(lattice.lastPass.skipped, 0);
  EXPECT_EQ(lattice.lastPass.exchanges, 0);
  EXPECT_EQ(lattice.bestTarget.time, unknownTime);
  // What outlasts a lattice.
  EXPECT_EQ(lattice.restarts, 9);
  EXPECT_EQ(lattice.file.problem().dt.dimension(), 1);
  EXPECT_EQ(lattice.runVariables[MainMutexVariable::counter5].get(), "0");
  EXPECT_EQ(lattice.runVariables[MainMutexVariable::counter6].get(), "0");
  EXPECT_EQ(lattice.runVariables[MainMutexVariable::counter7].get(), "0");
}

TYPED_TEST(LatticeRecordOver, ResetFillsTheEntriesAnew) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  for (Vector<TypeParam>* vector : {&lattice.c, &lattice.l, &lattice.r, &lattice.lSave,
                                    &lattice.rSave, &lattice.scale, &lattice.translation})
    (*vector)[3] = TypeParam(9);
  lattice.homScaled = TypeParam(9);
  lattice.bSq[2] = lattice.cLen[2] = lattice.vectorAmounts[2] = 9;
  lattice.vecStatus[2] = 9;
  lattice.vectorMarks[2] = 9;
  lattice.B[2][3] = TypeParam(99);
  lattice.TT.resize(2, false);
  lattice.Q = Matrix<long double>(2, 2);
  lattice.savedFactors.echelon = basis;
  lattice.workingFactors.echelon = basis;
  lattice.reset(&basis, false);
  this->expectZero(lattice.c, 3);
  this->expectZero(lattice.l, 3);
  this->expectZero(lattice.r, 3);
  this->expectZero(lattice.lSave, 3);
  this->expectZero(lattice.rSave, 3);
  this->expectZero(lattice.translation, 3);
  EXPECT_TRUE(identical(lattice.scale, Vector<TypeParam>{1, 1, 1}));
  EXPECT_EQ(lattice.homScaled, TypeParam(1));
  EXPECT_EQ(lattice.bSq[2], 0.0L);
  EXPECT_EQ(lattice.cLen[2], 0.0L);
  EXPECT_EQ(lattice.vectorAmounts[2], 0.0L);
  EXPECT_EQ(lattice.vecStatus[2], 0);
  EXPECT_EQ(lattice.vectorMarks[2], 0);
  this->expectSame(lattice.B, basis);
  EXPECT_EQ(lattice.TT.dimension(), 1);
  EXPECT_FALSE(lattice.Q.isSet());
  EXPECT_FALSE(lattice.savedFactors.echelon.isSet());
  EXPECT_FALSE(lattice.workingFactors.echelon.isSet());
}

TYPED_TEST(LatticeRecordOver, ResetKeepsProblemParametersAndStars) {
  LatticeOver<TypeParam> lattice;
  this->fill(lattice);
  lattice.optFile = "a.opt";
  lattice.optOriginal.dt = Vector<TypeParam>{TypeParam(3)};
  lattice.params.beta = 33;
  lattice.homValue = TypeParam(5);
  lattice.reset(nullptr, false);
  EXPECT_EQ(lattice.file.stars.dimension(), 1);
  EXPECT_EQ(lattice.optFile, "a.opt");
  EXPECT_EQ(lattice.optOriginal.dt.dimension(), 1);
  EXPECT_EQ(lattice.params.beta.get(), 33);
  EXPECT_EQ(lattice.homScaled, TypeParam(5));
}

TYPED_TEST(LatticeRecordOver, ResetEmptiesTheFileNameWhenTold) {
  LatticeOver<TypeParam> lattice;
  lattice.latFile = "a.lat";
  lattice.reset(nullptr, false);
  EXPECT_EQ(lattice.latFile, "a.lat");
  lattice.reset(nullptr, true);
  EXPECT_EQ(lattice.latFile, "");
}

TYPED_TEST(LatticeRecordOver, ResizeAddsZerosBehindTheOldCoordinates) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  lattice.c[3] = TypeParam(9);
  lattice.resize(2, 5, false);
  EXPECT_EQ(lattice.m, 5);
  EXPECT_TRUE(identical(lattice.B[2], Vector<TypeParam>{4, 5, 6, 0, 0}));
  EXPECT_TRUE(identical(lattice.B_save[1], Vector<TypeParam>{1, 2, 3, 0, 0}));
  EXPECT_TRUE(identical(lattice.c, Vector<TypeParam>{0, 0, 9, 0, 0}));
  EXPECT_EQ(lattice.translation.dimension(), 5);
}

TYPED_TEST(LatticeRecordOver, ResizeGivesNewCoordinatesTheScaleOne) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  lattice.scale[3] = TypeParam(9);
  lattice.resize(2, 5, false);
  EXPECT_TRUE(identical(lattice.scale, Vector<TypeParam>{1, 1, 9, 1, 1}));
}

TYPED_TEST(LatticeRecordOver, ResizeAddsRowsOfZeros) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  lattice.resize(3, 3, false);
  EXPECT_EQ(lattice.n, 3);
  this->expectZero(lattice.B[3], 3);
  this->expectZero(lattice.B_save[3], 3);
  EXPECT_EQ(lattice.vecStatus.dimension(), 3);
  EXPECT_EQ(lattice.bSq.dimension(), 3);
  EXPECT_EQ(lattice.vectorMarks.dimension(), 3);
}

TYPED_TEST(LatticeRecordOver, EntriesThatCameAgainAreZero) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  lattice.mu[2][2] = 9;
  lattice.vecStatus[2] = 9;
  lattice.vectorMarks[2] = 9;
  lattice.bSq[2] = 9;
  lattice.resize(1, 3, false);
  lattice.resize(2, 3, false);
  this->expectZero(lattice.B[2], 3);
  this->expectZero(lattice.B_save[2], 3);
  EXPECT_EQ(lattice.mu[2][2], 0.0L);
  EXPECT_EQ(lattice.vecStatus[2], 0);
  EXPECT_EQ(lattice.vectorMarks[2], 0);
  EXPECT_EQ(lattice.bSq[2], 0.0L);
}

TYPED_TEST(LatticeRecordOver, ResizeOfNoCoordinatesKeepsThem) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  lattice.resize(1, 0, false);
  EXPECT_EQ(lattice.n, 1);
  EXPECT_EQ(lattice.m, 3);
  EXPECT_EQ(lattice.B.columnCount(), 3);
}

TYPED_TEST(LatticeRecordOver, ResizeToANegativeSizeDoesNothing) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  this->fill(lattice);
  lattice.resize(-1, 5, true);
  lattice.resize(5, -1, true);
  EXPECT_EQ(lattice.n, 2);
  EXPECT_EQ(lattice.m, 3);
  this->expectSame(lattice.B, basis);
  EXPECT_EQ(lattice.solutions.dimension(), 1);
}

TYPED_TEST(LatticeRecordOver, TransformationsGrowButDoNotShrink) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  lattice.resize(3, 3, false);
  EXPECT_EQ(lattice.TT[1].rowCount(), 3);
  EXPECT_EQ(lattice.TT[1].columnCount(), 3);
  EXPECT_EQ(lattice.TT[1][1][1], TypeParam(1));
  lattice.resize(1, 3, false);
  EXPECT_EQ(lattice.TT[1].rowCount(), 3);
}

TYPED_TEST(LatticeRecordOver, SwapBudgetIsAtLeastAHundred) {
  LatticeOver<TypeParam> lattice;
  EXPECT_EQ(lattice.swapBudget, 100);
  lattice.resize(5, 1, false);
  EXPECT_EQ(lattice.swapBudget, 100);
  EXPECT_EQ(lattice.swapBudgetFloor, 100);
  lattice.resize(100, 1, false);
  EXPECT_EQ(lattice.swapBudget, 100);
}

TYPED_TEST(LatticeRecordOver, SwapBudgetFollowsTheVectorsBeyondAHundred) {
  LatticeOver<TypeParam> lattice;
  lattice.resize(101, 1, false);
  EXPECT_EQ(lattice.swapBudget, 101);
  EXPECT_EQ(lattice.swapBudgetFloor, 101);
}

TYPED_TEST(LatticeRecordOver, DiscardingTakesVectorsButNoStars) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  this->fill(lattice);
  lattice.resize(2, 3, true);
  EXPECT_EQ(lattice.bestVector.dimension(), 0);
  EXPECT_EQ(lattice.bestVector.time, unknownTime);
  EXPECT_EQ(lattice.bestRecord.status, ScoreStatus::empty);
  EXPECT_EQ(lattice.bestTarget.dimension(), 0);
  EXPECT_TRUE(NumberTraits<TypeParam>::isInfinite(lattice.bestTarget.targetNorm));
  EXPECT_EQ(lattice.solutions.dimension(), 0);
  EXPECT_EQ(lattice.file.stars.dimension(), 1);
}

TYPED_TEST(LatticeRecordOver, StoredVectorsTakeTheNewLength) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  this->fill(lattice);
  lattice.resize(2, 4, false);
  EXPECT_TRUE(identical<TypeParam>(lattice.bestVector, Vector<TypeParam>{1, 2, 3, 0}));
  EXPECT_EQ(lattice.bestVector.time, 7);
  EXPECT_TRUE(identical<TypeParam>(lattice.bestTarget, Vector<TypeParam>{4, 5, 6, 0}));
  EXPECT_EQ(lattice.bestTarget.time, 8);
  EXPECT_EQ(lattice.bestTarget.targetNorm, TypeParam(-3));
  EXPECT_TRUE(identical<TypeParam>(lattice.solutions[1], Vector<TypeParam>{7, 8, 9, 0}));
  EXPECT_EQ(lattice.solutions[1].time, 9);
  EXPECT_EQ(lattice.collected.first()->dimension(), 4);
  EXPECT_EQ(lattice.chosen.first()->dimension(), 4);
  EXPECT_EQ(lattice.file.stars[1].dimension(), 1);
}

TYPED_TEST(LatticeRecordOver, NoVectorIsMadeWhereThereIsNone) {
  LatticeOver<TypeParam> lattice;
  lattice.resize(2, 4, false);
  EXPECT_EQ(lattice.bestVector.dimension(), 0);
  EXPECT_EQ(lattice.bestTarget.dimension(), 0);
}

}  // namespace
}  // namespace starsift
