#include <gtest/gtest.h>

#include "lattice/Lattice.h"
#include "numbers/QQ.h"
#include "support/fixtures/BasisRows.h"

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
    lattice.found.bestVector = TimeVector<T>{T(1), T(2), T(3)};
    lattice.found.bestVector.time = 7;
    lattice.found.bestRecord.status = ScoreStatus::inhomogeneous;
    lattice.found.bestTarget = FiledSolution<T>{T(4), T(5), T(6)};
    lattice.found.bestTarget.time = 8;
    lattice.found.bestTarget.targetNorm = T(-3);
    lattice.found.solutions.resize(1, false);
    lattice.found.solutions[1] = FiledSolution<T>{T(7), T(8), T(9)};
    lattice.found.solutions[1].time = 9;
    lattice.file.stars.resize(1, false);
    lattice.file.stars[1] = Star<T>{T(5)};
    HeuristicVector<T, long double> good;
    good.resize(3, false);
    good[1] = T(1);
    lattice.found.collected.insert(good);
    lattice.found.chosen.insert(good);
  }
};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(LatticeRecordOver, LatticeNumbers);

TYPED_TEST(LatticeRecordOver, WithoutABasisIsEmpty) {
  const LatticeOver<TypeParam> lattice;
  EXPECT_EQ(lattice.basis.n, 0);
  EXPECT_EQ(lattice.basis.m, 0);
  EXPECT_EQ(lattice.basis.vecStatus.dimension(), 0);
  ASSERT_EQ(lattice.basis.TT.dimension(), 1);
  EXPECT_EQ(lattice.basis.TT[1].rowCount(), 0);
  EXPECT_EQ(lattice.basis.B().rowCount(), 0);
  EXPECT_EQ(lattice.file.stars.dimension(), 0);
  EXPECT_TRUE(lattice.latFile.empty());
}

TYPED_TEST(LatticeRecordOver, StartsWithItsSwitchesAndStages) {
  const LatticeOver<TypeParam> lattice;
  EXPECT_EQ(lattice.frame.latticeKind, LatticeKind::none);
  EXPECT_TRUE(lattice.frame.equationsRemoved);
  EXPECT_FALSE(lattice.frame.modsInLattice);
  EXPECT_FALSE(lattice.run.consistencyForced);
  EXPECT_FALSE(lattice.basis.keepDependent);
  EXPECT_FALSE(lattice.run.outputSwitch);
  EXPECT_FALSE(lattice.run.terminationSwitch);
  EXPECT_EQ(lattice.homValue, TypeParam(1));
  EXPECT_EQ(lattice.basis.homScaled, TypeParam(1));
  EXPECT_EQ(lattice.found.bestVector.time, unknownTime);
  EXPECT_EQ(lattice.found.bestRecord.status, ScoreStatus::empty);
}

TYPED_TEST(LatticeRecordOver, OverABasisTakesItTwice) {
  const Matrix<TypeParam> basis = this->basis();
  const LatticeOver<TypeParam> lattice(&basis);
  EXPECT_EQ(lattice.basis.n, 2);
  EXPECT_EQ(lattice.basis.m, 3);
  this->expectSame(lattice.basis.B(), basis);
  this->expectSame(lattice.basis.B_save, basis);
  ASSERT_EQ(lattice.basis.TT.dimension(), 1);
  this->expectSame(lattice.basis.TT[1], Matrix<TypeParam>::identity(2));
}

TYPED_TEST(LatticeRecordOver, OverABasisStartsWithoutATransformationOfCoordinates) {
  const Matrix<TypeParam> basis = this->basis();
  const LatticeOver<TypeParam> lattice(&basis);
  EXPECT_TRUE(identical(lattice.basis.scale, Vector<TypeParam>{1, 1, 1}));
  this->expectZero(lattice.basis.translation, 3);
}

TYPED_TEST(LatticeRecordOver, OverABasisHasAnEntryForEachRowAndCoordinate) {
  const Matrix<TypeParam> basis = this->basis();
  const LatticeOver<TypeParam> lattice(&basis);
  this->expectZero(lattice.frame.c, 3);
  this->expectZero(lattice.frame.l, 3);
  this->expectZero(lattice.frame.r, 3);
  this->expectZero(lattice.frame.lSave, 3);
  this->expectZero(lattice.frame.rSave, 3);
  EXPECT_EQ(lattice.gramSchmidt.mu.rowCount(), 2);
  EXPECT_EQ(lattice.gramSchmidt.mu.columnCount(), 2);
  EXPECT_EQ(lattice.gramSchmidt.bSq.dimension(), 2);
  EXPECT_EQ(lattice.gramSchmidt.cLen.dimension(), 2);
  EXPECT_EQ(lattice.basis.vectorAmounts.dimension(), 2);
  EXPECT_EQ(lattice.basis.vectorMarks.dimension(), 2);
  ASSERT_EQ(lattice.basis.vecStatus.dimension(), 2);
  EXPECT_EQ(lattice.basis.vecStatus[1], 0);
  EXPECT_EQ(lattice.basis.vecStatus[2], 0);
}

TYPED_TEST(LatticeRecordOver, ResetForgetsTheSearch) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  this->fill(lattice);
  lattice.frame.latticeKind = LatticeKind::full;
  lattice.frame.equationsRemoved = false;
  lattice.frame.modsInLattice = true;
  lattice.run.consistencyForced = true;
  lattice.basis.keepDependent = true;
  lattice.frame.rangeMultiple = TypeParam(9);
  lattice.frame.supLimit = 9;
  lattice.run.deepInsertions = 9;
  lattice.run.lastPass = {9, 8, 7};
  lattice.run.restarts = 9;
  lattice.file.editProblem().dt = Vector<TypeParam>{TypeParam(3)};
  lattice.run.runVariables[MainMutexVariable::counter5].set("3");
  lattice.run.runVariables[MainMutexVariable::counter6].set("4");
  lattice.run.runVariables[MainMutexVariable::counter7].set("5");
  lattice.reset(nullptr, LatPath::keep);
  EXPECT_EQ(lattice.basis.n, 0);
  EXPECT_EQ(lattice.basis.m, 0);
  EXPECT_EQ(lattice.found.bestVector.dimension(), 0);
  EXPECT_EQ(lattice.found.bestVector.time, unknownTime);
  EXPECT_EQ(lattice.found.bestRecord.status, ScoreStatus::empty);
  EXPECT_EQ(lattice.found.bestTarget.dimension(), 0);
  EXPECT_EQ(lattice.found.solutions.dimension(), 0);
  EXPECT_EQ(lattice.found.collected.count(), 0);
  EXPECT_EQ(lattice.found.chosen.count(), 0);
  EXPECT_EQ(lattice.frame.latticeKind, LatticeKind::none);
  EXPECT_TRUE(lattice.frame.equationsRemoved);
  EXPECT_FALSE(lattice.frame.modsInLattice);
  EXPECT_FALSE(lattice.run.consistencyForced);
  EXPECT_FALSE(lattice.basis.keepDependent);
  EXPECT_EQ(lattice.frame.rangeMultiple, TypeParam(0));
  EXPECT_EQ(lattice.frame.supLimit, 0.0L);
  EXPECT_EQ(lattice.run.deepInsertions, 0);
  EXPECT_EQ(lattice.run.lastPass.tests, 0);
  EXPECT_EQ(lattice.run.lastPass.skipped, 0);
  EXPECT_EQ(lattice.run.lastPass.swaps, 0);
  EXPECT_EQ(lattice.found.bestTarget.time, unknownTime);
  // What outlasts a lattice.
  EXPECT_EQ(lattice.run.restarts, 9);
  EXPECT_EQ(lattice.file.problem().dt.dimension(), 1);
  EXPECT_EQ(lattice.run.runVariables[MainMutexVariable::counter5].get(), "0");
  EXPECT_EQ(lattice.run.runVariables[MainMutexVariable::counter6].get(), "0");
  EXPECT_EQ(lattice.run.runVariables[MainMutexVariable::counter7].get(), "0");
}

TYPED_TEST(LatticeRecordOver, ResetFillsTheEntriesAnew) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  for (Vector<TypeParam>* vector :
       {&lattice.frame.c, &lattice.frame.l, &lattice.frame.r, &lattice.frame.lSave,
        &lattice.frame.rSave, &lattice.basis.scale, &lattice.basis.translation})
    (*vector)[3] = TypeParam(9);
  lattice.basis.homScaled = TypeParam(9);
  lattice.gramSchmidt.bSq[2] = lattice.gramSchmidt.cLen[2] = lattice.basis.vectorAmounts[2] = 9;
  lattice.basis.vecStatus[2] = 9;
  lattice.basis.vectorMarks[2] = 9;
  test::setEntry(lattice, 2, 3, TypeParam(99));
  lattice.basis.TT.resize(2, false);
  lattice.gramSchmidt.Q = Matrix<long double>(2, 2);
  lattice.basis.savedFactors.echelon = basis;
  lattice.basis.workingFactors.echelon = basis;
  lattice.reset(&basis, LatPath::keep);
  this->expectZero(lattice.frame.c, 3);
  this->expectZero(lattice.frame.l, 3);
  this->expectZero(lattice.frame.r, 3);
  this->expectZero(lattice.frame.lSave, 3);
  this->expectZero(lattice.frame.rSave, 3);
  this->expectZero(lattice.basis.translation, 3);
  EXPECT_TRUE(identical(lattice.basis.scale, Vector<TypeParam>{1, 1, 1}));
  EXPECT_EQ(lattice.basis.homScaled, TypeParam(1));
  EXPECT_EQ(lattice.gramSchmidt.bSq[2], 0.0L);
  EXPECT_EQ(lattice.gramSchmidt.cLen[2], 0.0L);
  EXPECT_EQ(lattice.basis.vectorAmounts[2], 0.0L);
  EXPECT_EQ(lattice.basis.vecStatus[2], 0);
  EXPECT_EQ(lattice.basis.vectorMarks[2], 0);
  this->expectSame(lattice.basis.B(), basis);
  EXPECT_EQ(lattice.basis.TT.dimension(), 1);
  EXPECT_FALSE(lattice.gramSchmidt.Q.isSet());
  EXPECT_FALSE(lattice.basis.savedFactors.echelon.isSet());
  EXPECT_FALSE(lattice.basis.workingFactors.echelon.isSet());
}

TYPED_TEST(LatticeRecordOver, ResetKeepsProblemParametersAndStars) {
  LatticeOver<TypeParam> lattice;
  this->fill(lattice);
  lattice.optFile = "a.opt";
  lattice.optOriginal.dt = Vector<TypeParam>{TypeParam(3)};
  lattice.params.beta = 33;
  lattice.homValue = TypeParam(5);
  lattice.reset(nullptr, LatPath::keep);
  EXPECT_EQ(lattice.file.stars.dimension(), 1);
  EXPECT_EQ(lattice.optFile, "a.opt");
  EXPECT_EQ(lattice.optOriginal.dt.dimension(), 1);
  EXPECT_EQ(lattice.params.beta.get(), 33);
  EXPECT_EQ(lattice.basis.homScaled, TypeParam(5));
}

TYPED_TEST(LatticeRecordOver, ResetEmptiesTheFileNameWhenTold) {
  LatticeOver<TypeParam> lattice;
  lattice.latFile = "a.lat";
  lattice.reset(nullptr, LatPath::keep);
  EXPECT_EQ(lattice.latFile, "a.lat");
  lattice.reset(nullptr, LatPath::clear);
  EXPECT_EQ(lattice.latFile, "");
}

TYPED_TEST(LatticeRecordOver, ResizeAddsZerosBehindTheOldCoordinates) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  lattice.frame.c[3] = TypeParam(9);
  lattice.resize(2, 5, Vectors::keep);
  EXPECT_EQ(lattice.basis.m, 5);
  EXPECT_TRUE(identical(lattice.basis.B()[2], Vector<TypeParam>{4, 5, 6, 0, 0}));
  EXPECT_TRUE(identical(lattice.basis.B_save[1], Vector<TypeParam>{1, 2, 3, 0, 0}));
  EXPECT_TRUE(identical(lattice.frame.c, Vector<TypeParam>{0, 0, 9, 0, 0}));
  EXPECT_EQ(lattice.basis.translation.dimension(), 5);
}

TYPED_TEST(LatticeRecordOver, ResizeGivesNewCoordinatesTheScaleOne) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  lattice.basis.scale[3] = TypeParam(9);
  lattice.resize(2, 5, Vectors::keep);
  EXPECT_TRUE(identical(lattice.basis.scale, Vector<TypeParam>{1, 1, 9, 1, 1}));
}

TYPED_TEST(LatticeRecordOver, ResizeAddsRowsOfZeros) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  lattice.resize(3, 3, Vectors::keep);
  EXPECT_EQ(lattice.basis.n, 3);
  this->expectZero(lattice.basis.B()[3], 3);
  this->expectZero(lattice.basis.B_save[3], 3);
  EXPECT_EQ(lattice.basis.vecStatus.dimension(), 3);
  EXPECT_EQ(lattice.gramSchmidt.bSq.dimension(), 3);
  EXPECT_EQ(lattice.basis.vectorMarks.dimension(), 3);
}

TYPED_TEST(LatticeRecordOver, EntriesThatCameAgainAreZero) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  lattice.gramSchmidt.mu[2][2] = 9;
  lattice.basis.vecStatus[2] = 9;
  lattice.basis.vectorMarks[2] = 9;
  lattice.gramSchmidt.bSq[2] = 9;
  lattice.resize(1, 3, Vectors::keep);
  lattice.resize(2, 3, Vectors::keep);
  this->expectZero(lattice.basis.B()[2], 3);
  this->expectZero(lattice.basis.B_save[2], 3);
  EXPECT_EQ(lattice.gramSchmidt.mu[2][2], 0.0L);
  EXPECT_EQ(lattice.basis.vecStatus[2], 0);
  EXPECT_EQ(lattice.basis.vectorMarks[2], 0);
  EXPECT_EQ(lattice.gramSchmidt.bSq[2], 0.0L);
}

TYPED_TEST(LatticeRecordOver, ResizeOfNoCoordinatesKeepsThem) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  lattice.resize(1, 0, Vectors::keep);
  EXPECT_EQ(lattice.basis.n, 1);
  EXPECT_EQ(lattice.basis.m, 3);
  EXPECT_EQ(lattice.basis.B().columnCount(), 3);
}

TYPED_TEST(LatticeRecordOver, ResizeToANegativeSizeDoesNothing) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  this->fill(lattice);
  lattice.resize(-1, 5, Vectors::discard);
  lattice.resize(5, -1, Vectors::discard);
  EXPECT_EQ(lattice.basis.n, 2);
  EXPECT_EQ(lattice.basis.m, 3);
  this->expectSame(lattice.basis.B(), basis);
  EXPECT_EQ(lattice.found.solutions.dimension(), 1);
}

TYPED_TEST(LatticeRecordOver, TransformationsGrowButDoNotShrink) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  lattice.resize(3, 3, Vectors::keep);
  EXPECT_EQ(lattice.basis.TT[1].rowCount(), 3);
  EXPECT_EQ(lattice.basis.TT[1].columnCount(), 3);
  EXPECT_EQ(lattice.basis.TT[1][1][1], TypeParam(1));
  lattice.resize(1, 3, Vectors::keep);
  EXPECT_EQ(lattice.basis.TT[1].rowCount(), 3);
}

TYPED_TEST(LatticeRecordOver, SwapBudgetIsAtLeastAHundred) {
  LatticeOver<TypeParam> lattice;
  EXPECT_EQ(lattice.run.swapBudget, 100);
  lattice.resize(5, 1, Vectors::keep);
  EXPECT_EQ(lattice.run.swapBudget, 100);
  EXPECT_EQ(lattice.run.swapBudgetFloor, 100);
  lattice.resize(100, 1, Vectors::keep);
  EXPECT_EQ(lattice.run.swapBudget, 100);
}

TYPED_TEST(LatticeRecordOver, SwapBudgetFollowsTheVectorsBeyondAHundred) {
  LatticeOver<TypeParam> lattice;
  lattice.resize(101, 1, Vectors::keep);
  EXPECT_EQ(lattice.run.swapBudget, 101);
  EXPECT_EQ(lattice.run.swapBudgetFloor, 101);
}

TYPED_TEST(LatticeRecordOver, DiscardingTakesVectorsButNoStars) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  this->fill(lattice);
  lattice.resize(2, 3, Vectors::discard);
  EXPECT_EQ(lattice.found.bestVector.dimension(), 0);
  EXPECT_EQ(lattice.found.bestVector.time, unknownTime);
  EXPECT_EQ(lattice.found.bestRecord.status, ScoreStatus::empty);
  EXPECT_EQ(lattice.found.bestTarget.dimension(), 0);
  EXPECT_TRUE(NumberTraits<TypeParam>::isInfinite(lattice.found.bestTarget.targetNorm));
  EXPECT_EQ(lattice.found.solutions.dimension(), 0);
  EXPECT_EQ(lattice.file.stars.dimension(), 1);
}

TYPED_TEST(LatticeRecordOver, StoredVectorsTakeTheNewLength) {
  const Matrix<TypeParam> basis = this->basis();
  LatticeOver<TypeParam> lattice(&basis);
  this->fill(lattice);
  lattice.resize(2, 4, Vectors::keep);
  EXPECT_TRUE(identical<TypeParam>(lattice.found.bestVector, Vector<TypeParam>{1, 2, 3, 0}));
  EXPECT_EQ(lattice.found.bestVector.time, 7);
  EXPECT_TRUE(identical<TypeParam>(lattice.found.bestTarget, Vector<TypeParam>{4, 5, 6, 0}));
  EXPECT_EQ(lattice.found.bestTarget.time, 8);
  EXPECT_EQ(lattice.found.bestTarget.targetNorm, TypeParam(-3));
  EXPECT_TRUE(identical<TypeParam>(lattice.found.solutions[1], Vector<TypeParam>{7, 8, 9, 0}));
  EXPECT_EQ(lattice.found.solutions[1].time, 9);
  EXPECT_EQ(lattice.found.collected.first()->dimension(), 4);
  EXPECT_EQ(lattice.found.chosen.first()->dimension(), 4);
  EXPECT_EQ(lattice.file.stars[1].dimension(), 1);
}

TYPED_TEST(LatticeRecordOver, NoVectorIsMadeWhereThereIsNone) {
  LatticeOver<TypeParam> lattice;
  lattice.resize(2, 4, Vectors::keep);
  EXPECT_EQ(lattice.found.bestVector.dimension(), 0);
  EXPECT_EQ(lattice.found.bestTarget.dimension(), 0);
}

}  // namespace
}  // namespace starsift
