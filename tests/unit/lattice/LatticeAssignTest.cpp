#include <gtest/gtest.h>

#include "lattice/Lattice.h"
#include "support/fixtures/Problem.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::problemFrom;
using test::q;

template <class T>
using LatticeOver = Lattice<T, long double>;

/// A lattice with something in every member that assignment takes.
template <class T>
void fillAll(LatticeOver<T>& lattice) {
  const Matrix<T> basis{{T(1), T(2), T(3)}, {T(4), T(5), T(6)}};
  lattice.reset(&basis, true);
  static_cast<Vanu<T>&>(lattice) =
      problemFrom<T>("[ 2.5 ] [ [ 1 2 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 inf ]");
  lattice.optOriginal = lattice;
  lattice.file.editProblem() =
      problemFrom<T>("[ 3.5 ] [ [ 7 8 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 1 0 ] [ 6 inf ]");
  lattice.optOriginal.optFile = "o.opt";
  lattice.solFile = "s.sol";
  lattice.latFile = "l.lat";
  lattice.homValue = T(17);
  lattice.homScaled = T(34);
  lattice.outputSwitch = true;
  lattice.terminationSwitch = true;
  lattice.params.beta = 33;
  lattice.params.snorm = "2.5";
  lattice.file.stars.resize(2, false);
  lattice.file.stars[1] = Star<T>{T(1) / T(2)};
  lattice.file.stars[1].paramsText = "p";
  lattice.file.stars[1].time = 3;
  lattice.file.stars[2] = Star<T>{T(2)};
  lattice.bestVector = TimeVector<T>{T(1), T(2), T(3)};
  lattice.bestVector.time = 7;
  lattice.bestRecord.status = ScoreStatus::homogeneous;
  lattice.bestRecord.deviations.resize(1, false);
  lattice.bestRecord.deviations[1].left = 2;
  lattice.bestTarget = FiledSolution<T>{T(4), T(5), T(6)};
  lattice.bestTarget.time = 8;
  lattice.bestTarget.targetNorm = T(-3);
  lattice.bestTarget.slackNorm = T(4);
  lattice.bestTarget.targetValues = Vector<T>{T(5)};
  lattice.solutions.resize(1, false);
  lattice.solutions[1] = FiledSolution<T>{T(7), T(8), T(9)};
  lattice.solutions[1].time = 9;
  lattice.TT.resize(2, false);
  lattice.TT[2] = Matrix<T>{{T(0), T(1)}, {T(1), T(0)}};
  lattice.B[1][1] = T(11);
  lattice.Q = Matrix<long double>{{1, 2}, {3, 4}};
  lattice.mu[2][1] = 0.25L;
  lattice.bSq[1] = 5;
  lattice.cLen[1] = 6;
  lattice.runVariables[MainMutexVariable::counter6].set("66");
  lattice.rangeMultiple = T(12);
  lattice.c[1] = T(1) / T(4);
  lattice.l[1] = T(-3);
  lattice.r[1] = T(3);
  lattice.lSave[1] = T(-4);
  lattice.rSave[1] = T(4);
  lattice.supLimit = 27;
  lattice.lEqualsR = true;
  lattice.swapBudget = 123;
  lattice.swapBudgetFloor = 122;
  lattice.lastPass = {51, 52, 53};
  lattice.restarts = 54;
  lattice.deepInsertions = 55;
  lattice.latticeKind = LatticeKind::full;
  lattice.equationsRemoved = false;
  lattice.modsInLattice = true;
  lattice.savedFactors.echelon = Matrix<T>{{T(8)}};
  lattice.workingFactors.transform = Matrix<T>{{T(9)}};
  lattice.vecStatus[2] = 5;
  lattice.consistencyForced = true;
  lattice.keepDependent = true;
  lattice.lqCache.resize(1, false);
  lattice.lqCache[1] = Matrix<long double>{{1}};
  lattice._d = Vector<long double>{1, 2};
  lattice.Lr = Matrix<long double>{{2}};
  lattice.L = Matrix<long double>{{3}};
  lattice.Ps.resize(1);
  lattice.Ps.set(1, {Vector<long double>{4}, -2});
  lattice.vectorAmounts[1] = 0.5L;
  lattice.vectorMarks[2] = 6;
  HeuristicVector<T, long double> good;
  good.resize(3, false);
  good[1] = T(1);
  good.time = 44;
  good.score.status = ScoreStatus::inhomogeneous;
  lattice.collected.setLimit(9);
  lattice.collected.insert(good);
  good[1] = T(2);
  good.score.status = ScoreStatus::homogeneous;
  lattice.collected.insert(good);
  lattice.chosen.insert(good);
  lattice.scale[3] = T(2);
  lattice.translation[2] = T(5);
}

template <class T>
bool sameMatrix(const Matrix<T>& a, const Matrix<T>& b) {
  return a.rowCount() == b.rowCount() && a.columnCount() == b.columnCount() &&
         std::equal(a.begin(), a.end(), b.begin(),
                    [](const Vector<T>& x, const Vector<T>& y) { return identical(x, y); });
}

template <class T>
void expectSameProblemAndNames(const LatticeOver<T>& a, const LatticeOver<T>& b) {
  EXPECT_TRUE(identical(a.dt, b.dt));
  EXPECT_TRUE(sameMatrix(a.At, b.At));
  EXPECT_TRUE(identical(a.rx, b.rx));
  EXPECT_TRUE(identical(a.optOriginal.dt, b.optOriginal.dt));
  EXPECT_TRUE(sameMatrix(a.optOriginal.At, b.optOriginal.At));
  EXPECT_TRUE(identical(a.file.problem().dt, b.file.problem().dt));
  EXPECT_TRUE(sameMatrix(a.file.problem().At, b.file.problem().At));
  EXPECT_TRUE(identical(a.file.problem().rx, b.file.problem().rx));
  EXPECT_EQ(a.optFile, b.optFile);
  EXPECT_EQ(a.solFile, b.solFile);
  EXPECT_EQ(a.optOriginal.optFile, b.optOriginal.optFile);
  EXPECT_EQ(a.latFile, b.latFile);
  EXPECT_EQ(a.homValue, b.homValue);
  EXPECT_EQ(a.homScaled, b.homScaled);
  EXPECT_EQ(a.outputSwitch, b.outputSwitch);
  EXPECT_EQ(a.terminationSwitch, b.terminationSwitch);
}

template <class T>
void expectSameVectors(const LatticeOver<T>& a, const LatticeOver<T>& b) {
  ASSERT_EQ(a.file.stars.dimension(), b.file.stars.dimension());
  for (Index i = 1; i <= a.file.stars.dimension(); ++i) {
    EXPECT_TRUE(identical(a.file.stars[i].x(), b.file.stars[i].x()));
    EXPECT_EQ(a.file.stars[i].paramsText, b.file.stars[i].paramsText);
    EXPECT_EQ(a.file.stars[i].time, b.file.stars[i].time);
  }
  EXPECT_TRUE(identical<T>(a.bestVector, b.bestVector));
  EXPECT_EQ(a.bestVector.time, b.bestVector.time);
  EXPECT_EQ(a.bestRecord.status, b.bestRecord.status);
  ASSERT_EQ(a.bestRecord.deviations.dimension(), b.bestRecord.deviations.dimension());
  EXPECT_EQ(a.bestRecord.deviations[1].left, b.bestRecord.deviations[1].left);
  EXPECT_TRUE(identical<T>(a.bestTarget, b.bestTarget));
  EXPECT_EQ(a.bestTarget.time, b.bestTarget.time);
  EXPECT_EQ(a.bestTarget.targetNorm, b.bestTarget.targetNorm);
  EXPECT_EQ(a.bestTarget.slackNorm, b.bestTarget.slackNorm);
  EXPECT_TRUE(identical(a.bestTarget.targetValues, b.bestTarget.targetValues));
  ASSERT_EQ(a.solutions.dimension(), b.solutions.dimension());
  EXPECT_TRUE(identical<T>(a.solutions[1], b.solutions[1]));
  EXPECT_EQ(a.solutions[1].time, b.solutions[1].time);
}

template <class T>
void expectSameSets(const LatticeOver<T>& a, const LatticeOver<T>& b) {
  EXPECT_EQ(a.collected.limit(), b.collected.limit());
  ASSERT_EQ(a.collected.count(), 2);
  ASSERT_EQ(b.collected.count(), 2);
  EXPECT_TRUE(identical<T>(*a.collected.first(), *b.collected.first()));
  EXPECT_TRUE(identical<T>(*a.collected.last(), *b.collected.last()));
  EXPECT_EQ(a.collected.last()->time, b.collected.last()->time);
  EXPECT_EQ(a.collected.last()->score.status, b.collected.last()->score.status);
  EXPECT_EQ(a.chosen.count(), b.chosen.count());
}

template <class T>
void expectSameBasis(const LatticeOver<T>& a, const LatticeOver<T>& b) {
  EXPECT_EQ(a.n, b.n);
  EXPECT_EQ(a.m, b.m);
  ASSERT_EQ(a.TT.dimension(), b.TT.dimension());
  EXPECT_TRUE(sameMatrix(a.TT[1], b.TT[1]));
  EXPECT_TRUE(sameMatrix(a.TT[2], b.TT[2]));
  EXPECT_TRUE(sameMatrix(a.B_save, b.B_save));
  EXPECT_TRUE(sameMatrix(a.B, b.B));
  EXPECT_TRUE(sameMatrix(a.savedFactors.echelon, b.savedFactors.echelon));
  EXPECT_TRUE(sameMatrix(a.workingFactors.transform, b.workingFactors.transform));
  EXPECT_TRUE(identical(a.c, b.c));
  EXPECT_TRUE(identical(a.l, b.l));
  EXPECT_TRUE(identical(a.r, b.r));
  EXPECT_TRUE(identical(a.lSave, b.lSave));
  EXPECT_TRUE(identical(a.rSave, b.rSave));
  EXPECT_TRUE(identical(a.scale, b.scale));
  EXPECT_TRUE(identical(a.translation, b.translation));
  EXPECT_EQ(a.rangeMultiple, b.rangeMultiple);
}

template <class T>
void expectSameOrthogonalisation(const LatticeOver<T>& a, const LatticeOver<T>& b) {
  EXPECT_TRUE(sameMatrix(a.Q, b.Q));
  EXPECT_TRUE(sameMatrix(a.mu, b.mu));
  EXPECT_TRUE(identical(a.bSq, b.bSq));
  EXPECT_TRUE(identical(a.cLen, b.cLen));
  EXPECT_TRUE(identical(a._d, b._d));
  EXPECT_TRUE(sameMatrix(a.Lr, b.Lr));
  EXPECT_TRUE(sameMatrix(a.L, b.L));
  ASSERT_EQ(a.lqCache.dimension(), b.lqCache.dimension());
  EXPECT_TRUE(sameMatrix(a.lqCache[1], b.lqCache[1]));
  ASSERT_EQ(a.Ps.count(), b.Ps.count());
  EXPECT_TRUE(sameMatrix(a.Ps.product(1, 1), b.Ps.product(1, 1)));
}

template <class T>
void expectSameState(LatticeOver<T>& a, LatticeOver<T>& b) {
  EXPECT_EQ(a.supLimit, b.supLimit);
  EXPECT_EQ(a.lEqualsR, b.lEqualsR);
  EXPECT_EQ(a.swapBudget, b.swapBudget);
  EXPECT_EQ(a.swapBudgetFloor, b.swapBudgetFloor);
  EXPECT_EQ(a.lastPass.swaps, b.lastPass.swaps);
  EXPECT_EQ(a.lastPass.skipped, b.lastPass.skipped);
  EXPECT_EQ(a.lastPass.exchanges, b.lastPass.exchanges);
  EXPECT_EQ(a.restarts, b.restarts);
  EXPECT_EQ(a.deepInsertions, b.deepInsertions);
  EXPECT_EQ(a.latticeKind, b.latticeKind);
  EXPECT_EQ(a.equationsRemoved, b.equationsRemoved);
  EXPECT_EQ(a.modsInLattice, b.modsInLattice);
  EXPECT_EQ(a.consistencyForced, b.consistencyForced);
  EXPECT_EQ(a.keepDependent, b.keepDependent);
  EXPECT_EQ(a.vecStatus[2], b.vecStatus[2]);
  EXPECT_TRUE(identical(a.vectorAmounts, b.vectorAmounts));
  EXPECT_EQ(a.vectorMarks[2], b.vectorMarks[2]);
  EXPECT_EQ(a.runVariables[MainMutexVariable::counter6].get(),
            b.runVariables[MainMutexVariable::counter6].get());
}

template <class T>
void expectSameLattice(LatticeOver<T>& a, LatticeOver<T>& b) {
  expectSameProblemAndNames(a, b);
  expectSameVectors(a, b);
  expectSameSets(a, b);
  expectSameBasis(a, b);
  expectSameOrthogonalisation(a, b);
  expectSameState(a, b);
}

template <class T>
class LatticeAssignOver : public testing::Test {};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(LatticeAssignOver, LatticeNumbers);

TYPED_TEST(LatticeAssignOver, AssignmentTakesTheWholeState) {
  LatticeOver<TypeParam> source;
  fillAll(source);
  LatticeOver<TypeParam> target;
  target.assignFrom(source, false);
  expectSameLattice(target, source);
  EXPECT_EQ(target.params.beta.get(), 33);
  EXPECT_EQ(target.params.snorm.get(), TypeParam(5) / TypeParam(2));
}

TYPED_TEST(LatticeAssignOver, AssignedLatticeIsItsOwn) {
  LatticeOver<TypeParam> source;
  fillAll(source);
  LatticeOver<TypeParam> target;
  target.assignFrom(source, false);
  source.B[1][1] = TypeParam(0);
  source.file.stars.clear();
  source.params.beta = 5;
  EXPECT_EQ(target.B[1][1], TypeParam(11));
  EXPECT_EQ(target.stars.dimension(), 2);
  EXPECT_EQ(target.params.beta.get(), 33);
}

TYPED_TEST(LatticeAssignOver, AssignmentMayKeepTheParameters) {
  LatticeOver<TypeParam> source;
  fillAll(source);
  LatticeOver<TypeParam> target;
  target.params.beta = 44;
  target.assignFrom(source, true);
  expectSameLattice(target, source);
  EXPECT_EQ(target.params.beta.get(), 44);
}

TYPED_TEST(LatticeAssignOver, AssignmentToItselfDoesNothing) {
  LatticeOver<TypeParam> lattice;
  fillAll(lattice);
  LatticeOver<TypeParam> same;
  fillAll(same);
  lattice.assignFrom(lattice, false);
  expectSameLattice(lattice, same);
  EXPECT_EQ(lattice.params.beta.get(), 33);
}

TEST(LatticeAssign, AssignmentConvertsFromRationals) {
  LatticeOver<QQ> source;
  fillAll(source);
  LatticeOver<long double> expected;
  fillAll(expected);
  expected.savedFactors.clear();
  expected.workingFactors.clear();
  LatticeOver<long double> target;
  target.assignFrom(source, false);
  expectSameLattice(target, expected);
  EXPECT_EQ(target.params.beta.get(), 33);
  EXPECT_EQ(target.params.snorm.get(), 2.5L);
}

TEST(LatticeAssign, AssignmentConvertsFromLongDouble) {
  LatticeOver<long double> source;
  fillAll(source);
  LatticeOver<QQ> expected;
  fillAll(expected);
  expected.savedFactors.clear();
  expected.workingFactors.clear();
  LatticeOver<QQ> target;
  target.assignFrom(source, false);
  expectSameLattice(target, expected);
  EXPECT_EQ(target.params.snorm.get(), q("5/2"));
}

TEST(LatticeAssign, AssignmentOfAThirdThrows) {
  LatticeOver<QQ> source;
  fillAll(source);
  source.file.stars[2][1] = q("1/3");
  LatticeOver<long double> target;
  EXPECT_THROW(target.assignFrom(source, false), PostCommaPrecisionException);
}

TEST(LatticeAssign, AssignmentOfNineteenDigitsThrows) {
  LatticeOver<QQ> source;
  fillAll(source);
  source.optOriginal.rx[1] = q("1000000000000000000");
  LatticeOver<long double> target;
  EXPECT_THROW(target.assignFrom(source, false), PreCommaPrecisionException);
}

}  // namespace
}  // namespace starsift
