#include <gtest/gtest.h>

#include "lattice/Lattice.h"
#include "support/fixtures/BasisRows.h"
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
  lattice.reset(&basis, LatPath::clear);
  static_cast<Vanu<T>&>(lattice) =
      problemFrom<T>("[ 2.5 ] [ [ 1 2 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 9 inf ]");
  lattice.optOriginal = lattice;
  lattice.file.editProblem() =
      problemFrom<T>("[ 3.5 ] [ [ 7 8 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 1 0 ] [ 6 inf ]");
  lattice.optOriginal.optFile = "o.opt";
  lattice.solFile = "s.sol";
  lattice.latFile = "l.lat";
  lattice.homValue = T(17);
  lattice.basis.homScaled = T(34);
  lattice.run.outputSwitch = true;
  lattice.run.terminationSwitch = true;
  lattice.params.beta = 33;
  lattice.params.snorm = "2.5";
  lattice.file.stars.resize(2, false);
  lattice.file.stars[1] = Star<T>{T(1) / T(2)};
  lattice.file.stars[1].paramsText = "p";
  lattice.file.stars[1].time = 3;
  lattice.file.stars[2] = Star<T>{T(2)};
  lattice.found.bestVector = TimeVector<T>{T(1), T(2), T(3)};
  lattice.found.bestVector.time = 7;
  lattice.found.bestRecord.status = ScoreStatus::homogeneous;
  lattice.found.bestRecord.deviations.resize(1, false);
  lattice.found.bestRecord.deviations[1].left = 2;
  lattice.found.bestTarget = FiledSolution<T>{T(4), T(5), T(6)};
  lattice.found.bestTarget.time = 8;
  lattice.found.bestTarget.targetNorm = T(-3);
  lattice.found.bestTarget.slackNorm = T(4);
  lattice.found.bestTarget.targetValues = Vector<T>{T(5)};
  lattice.found.solutions.resize(1, false);
  lattice.found.solutions[1] = FiledSolution<T>{T(7), T(8), T(9)};
  lattice.found.solutions[1].time = 9;
  lattice.basis.TT.resize(2, false);
  lattice.basis.TT[2] = Matrix<T>{{T(0), T(1)}, {T(1), T(0)}};
  test::setEntry(lattice, 1, 1, T(11));
  lattice.gramSchmidt.Q = Matrix<long double>{{1, 2}, {3, 4}};
  lattice.gramSchmidt.mu[2][1] = 0.25L;
  lattice.gramSchmidt.bSq[1] = 5;
  lattice.gramSchmidt.cLen[1] = 6;
  lattice.run.runVariables[MainMutexVariable::counter6].set("66");
  lattice.frame.rangeMultiple = T(12);
  lattice.frame.c[1] = T(1) / T(4);
  lattice.frame.l[1] = T(-3);
  lattice.frame.r[1] = T(3);
  lattice.frame.lSave[1] = T(-4);
  lattice.frame.rSave[1] = T(4);
  lattice.frame.supLimit = 27;
  lattice.frame.lEqualsR = true;
  lattice.run.swapBudget = 123;
  lattice.run.swapBudgetFloor = 122;
  lattice.run.lastPass = {51, 52, 53};
  lattice.run.restarts = 54;
  lattice.run.deepInsertions = 55;
  lattice.frame.latticeKind = LatticeKind::full;
  lattice.frame.equationsRemoved = false;
  lattice.frame.modsInLattice = true;
  lattice.basis.savedFactors.echelon = Matrix<T>{{T(8)}};
  lattice.basis.workingFactors.transform = Matrix<T>{{T(9)}};
  lattice.basis.vecStatus[2] = 5;
  lattice.run.consistencyForced = true;
  lattice.basis.keepDependent = true;
  lattice.gramSchmidt.factors.lqCache.resize(1, false);
  lattice.gramSchmidt.factors.lqCache[1] = Matrix<long double>{{1}};
  lattice.gramSchmidt.factors._d = Vector<long double>{1, 2};
  lattice.gramSchmidt.factors.Lr = Matrix<long double>{{2}};
  lattice.gramSchmidt.factors.L = Matrix<long double>{{3}};
  lattice.gramSchmidt.factors.Ps.resize(1);
  lattice.gramSchmidt.factors.Ps.set(1, {Vector<long double>{4}, -2});
  lattice.basis.vectorAmounts[1] = 0.5L;
  lattice.basis.vectorMarks[2] = 6;
  HeuristicVector<T, long double> good;
  good.resize(3, false);
  good[1] = T(1);
  good.time = 44;
  good.score.status = ScoreStatus::inhomogeneous;
  lattice.found.collected.setLimit(9);
  lattice.found.collected.insert(good);
  good[1] = T(2);
  good.score.status = ScoreStatus::homogeneous;
  lattice.found.collected.insert(good);
  lattice.found.chosen.insert(good);
  lattice.basis.scale[3] = T(2);
  lattice.basis.translation[2] = T(5);
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
  EXPECT_EQ(a.basis.homScaled, b.basis.homScaled);
  EXPECT_EQ(a.run.outputSwitch, b.run.outputSwitch);
  EXPECT_EQ(a.run.terminationSwitch, b.run.terminationSwitch);
}

template <class T>
void expectSameVectors(const LatticeOver<T>& a, const LatticeOver<T>& b) {
  ASSERT_EQ(a.file.stars.dimension(), b.file.stars.dimension());
  for (Index i = 1; i <= a.file.stars.dimension(); ++i) {
    EXPECT_TRUE(identical(a.file.stars[i].x(), b.file.stars[i].x()));
    EXPECT_EQ(a.file.stars[i].paramsText, b.file.stars[i].paramsText);
    EXPECT_EQ(a.file.stars[i].time, b.file.stars[i].time);
  }
  EXPECT_TRUE(identical<T>(a.found.bestVector, b.found.bestVector));
  EXPECT_EQ(a.found.bestVector.time, b.found.bestVector.time);
  EXPECT_EQ(a.found.bestRecord.status, b.found.bestRecord.status);
  ASSERT_EQ(a.found.bestRecord.deviations.dimension(), b.found.bestRecord.deviations.dimension());
  EXPECT_EQ(a.found.bestRecord.deviations[1].left, b.found.bestRecord.deviations[1].left);
  EXPECT_TRUE(identical<T>(a.found.bestTarget, b.found.bestTarget));
  EXPECT_EQ(a.found.bestTarget.time, b.found.bestTarget.time);
  EXPECT_EQ(a.found.bestTarget.targetNorm, b.found.bestTarget.targetNorm);
  EXPECT_EQ(a.found.bestTarget.slackNorm, b.found.bestTarget.slackNorm);
  EXPECT_TRUE(identical(a.found.bestTarget.targetValues, b.found.bestTarget.targetValues));
  ASSERT_EQ(a.found.solutions.dimension(), b.found.solutions.dimension());
  EXPECT_TRUE(identical<T>(a.found.solutions[1], b.found.solutions[1]));
  EXPECT_EQ(a.found.solutions[1].time, b.found.solutions[1].time);
}

template <class T>
void expectSameSets(const LatticeOver<T>& a, const LatticeOver<T>& b) {
  EXPECT_EQ(a.found.collected.limit(), b.found.collected.limit());
  ASSERT_EQ(a.found.collected.count(), 2);
  ASSERT_EQ(b.found.collected.count(), 2);
  EXPECT_TRUE(identical<T>(*a.found.collected.first(), *b.found.collected.first()));
  EXPECT_TRUE(identical<T>(*a.found.collected.last(), *b.found.collected.last()));
  EXPECT_EQ(a.found.collected.last()->time, b.found.collected.last()->time);
  EXPECT_EQ(a.found.collected.last()->score.status, b.found.collected.last()->score.status);
  EXPECT_EQ(a.found.chosen.count(), b.found.chosen.count());
}

template <class T>
void expectSameBasis(const LatticeOver<T>& a, const LatticeOver<T>& b) {
  EXPECT_EQ(a.basis.n, b.basis.n);
  EXPECT_EQ(a.basis.m, b.basis.m);
  ASSERT_EQ(a.basis.TT.dimension(), b.basis.TT.dimension());
  EXPECT_TRUE(sameMatrix(a.basis.TT[1], b.basis.TT[1]));
  EXPECT_TRUE(sameMatrix(a.basis.TT[2], b.basis.TT[2]));
  EXPECT_TRUE(sameMatrix(a.basis.B_save, b.basis.B_save));
  EXPECT_TRUE(sameMatrix(a.basis.B(), b.basis.B()));
  EXPECT_TRUE(sameMatrix(a.basis.savedFactors.echelon, b.basis.savedFactors.echelon));
  EXPECT_TRUE(sameMatrix(a.basis.workingFactors.transform, b.basis.workingFactors.transform));
  EXPECT_TRUE(identical(a.frame.c, b.frame.c));
  EXPECT_TRUE(identical(a.frame.l, b.frame.l));
  EXPECT_TRUE(identical(a.frame.r, b.frame.r));
  EXPECT_TRUE(identical(a.frame.lSave, b.frame.lSave));
  EXPECT_TRUE(identical(a.frame.rSave, b.frame.rSave));
  EXPECT_TRUE(identical(a.basis.scale, b.basis.scale));
  EXPECT_TRUE(identical(a.basis.translation, b.basis.translation));
  EXPECT_EQ(a.frame.rangeMultiple, b.frame.rangeMultiple);
}

template <class T>
void expectSameOrthogonalisation(const LatticeOver<T>& a, const LatticeOver<T>& b) {
  EXPECT_TRUE(sameMatrix(a.gramSchmidt.Q, b.gramSchmidt.Q));
  EXPECT_TRUE(sameMatrix(a.gramSchmidt.mu, b.gramSchmidt.mu));
  EXPECT_TRUE(identical(a.gramSchmidt.bSq, b.gramSchmidt.bSq));
  EXPECT_TRUE(identical(a.gramSchmidt.cLen, b.gramSchmidt.cLen));
  EXPECT_TRUE(identical(a.gramSchmidt.factors._d, b.gramSchmidt.factors._d));
  EXPECT_TRUE(sameMatrix(a.gramSchmidt.factors.Lr, b.gramSchmidt.factors.Lr));
  EXPECT_TRUE(sameMatrix(a.gramSchmidt.factors.L, b.gramSchmidt.factors.L));
  ASSERT_EQ(a.gramSchmidt.factors.lqCache.dimension(), b.gramSchmidt.factors.lqCache.dimension());
  EXPECT_TRUE(sameMatrix(a.gramSchmidt.factors.lqCache[1], b.gramSchmidt.factors.lqCache[1]));
  ASSERT_EQ(a.gramSchmidt.factors.Ps.count(), b.gramSchmidt.factors.Ps.count());
  EXPECT_TRUE(
      sameMatrix(a.gramSchmidt.factors.Ps.product(1, 1), b.gramSchmidt.factors.Ps.product(1, 1)));
}

template <class T>
void expectSameState(LatticeOver<T>& a, LatticeOver<T>& b) {
  EXPECT_EQ(a.frame.supLimit, b.frame.supLimit);
  EXPECT_EQ(a.frame.lEqualsR, b.frame.lEqualsR);
  EXPECT_EQ(a.run.swapBudget, b.run.swapBudget);
  EXPECT_EQ(a.run.swapBudgetFloor, b.run.swapBudgetFloor);
  EXPECT_EQ(a.run.lastPass.tests, b.run.lastPass.tests);
  EXPECT_EQ(a.run.lastPass.skipped, b.run.lastPass.skipped);
  EXPECT_EQ(a.run.lastPass.swaps, b.run.lastPass.swaps);
  EXPECT_EQ(a.run.restarts, b.run.restarts);
  EXPECT_EQ(a.run.deepInsertions, b.run.deepInsertions);
  EXPECT_EQ(a.frame.latticeKind, b.frame.latticeKind);
  EXPECT_EQ(a.frame.equationsRemoved, b.frame.equationsRemoved);
  EXPECT_EQ(a.frame.modsInLattice, b.frame.modsInLattice);
  EXPECT_EQ(a.run.consistencyForced, b.run.consistencyForced);
  EXPECT_EQ(a.basis.keepDependent, b.basis.keepDependent);
  EXPECT_EQ(a.basis.vecStatus[2], b.basis.vecStatus[2]);
  EXPECT_TRUE(identical(a.basis.vectorAmounts, b.basis.vectorAmounts));
  EXPECT_EQ(a.basis.vectorMarks[2], b.basis.vectorMarks[2]);
  EXPECT_EQ(a.run.runVariables[MainMutexVariable::counter6].get(),
            b.run.runVariables[MainMutexVariable::counter6].get());
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
  target.assignFrom(source, Settings::copy);
  expectSameLattice(target, source);
  EXPECT_EQ(target.params.beta.get(), 33);
  EXPECT_EQ(target.params.snorm.get(), TypeParam(5) / TypeParam(2));
}

TYPED_TEST(LatticeAssignOver, AssignedLatticeIsItsOwn) {
  LatticeOver<TypeParam> source;
  fillAll(source);
  LatticeOver<TypeParam> target;
  target.assignFrom(source, Settings::copy);
  test::setEntry(source, 1, 1, TypeParam(0));
  source.file.stars.clear();
  source.params.beta = 5;
  EXPECT_EQ(target.basis.B()[1][1], TypeParam(11));
  EXPECT_EQ(target.file.stars.dimension(), 2);
  EXPECT_EQ(target.params.beta.get(), 33);
}

TYPED_TEST(LatticeAssignOver, AssignmentMayKeepTheParameters) {
  LatticeOver<TypeParam> source;
  fillAll(source);
  LatticeOver<TypeParam> target;
  target.params.beta = 44;
  target.assignFrom(source, Settings::keep);
  expectSameLattice(target, source);
  EXPECT_EQ(target.params.beta.get(), 44);
}

TYPED_TEST(LatticeAssignOver, AssignmentToItselfDoesNothing) {
  LatticeOver<TypeParam> lattice;
  fillAll(lattice);
  LatticeOver<TypeParam> same;
  fillAll(same);
  lattice.assignFrom(lattice, Settings::copy);
  expectSameLattice(lattice, same);
  EXPECT_EQ(lattice.params.beta.get(), 33);
}

TEST(LatticeAssign, AssignmentConvertsFromRationals) {
  LatticeOver<QQ> source;
  fillAll(source);
  LatticeOver<long double> expected;
  fillAll(expected);
  expected.basis.savedFactors.clear();
  expected.basis.workingFactors.clear();
  LatticeOver<long double> target;
  target.assignFrom(source, Settings::copy);
  expectSameLattice(target, expected);
  EXPECT_EQ(target.params.beta.get(), 33);
  EXPECT_EQ(target.params.snorm.get(), 2.5L);
}

TEST(LatticeAssign, AssignmentConvertsFromLongDouble) {
  LatticeOver<long double> source;
  fillAll(source);
  LatticeOver<QQ> expected;
  fillAll(expected);
  expected.basis.savedFactors.clear();
  expected.basis.workingFactors.clear();
  LatticeOver<QQ> target;
  target.assignFrom(source, Settings::copy);
  expectSameLattice(target, expected);
  EXPECT_EQ(target.params.snorm.get(), q("5/2"));
}

TEST(LatticeAssign, AssignmentOfAThirdThrows) {
  LatticeOver<QQ> source;
  fillAll(source);
  source.file.stars[2][1] = q("1/3");
  LatticeOver<long double> target;
  EXPECT_THROW(target.assignFrom(source, Settings::copy), PostCommaPrecisionException);
}

TEST(LatticeAssign, AssignmentOfNineteenDigitsThrows) {
  LatticeOver<QQ> source;
  fillAll(source);
  source.optOriginal.rx[1] = q("1000000000000000000");
  LatticeOver<long double> target;
  EXPECT_THROW(target.assignFrom(source, Settings::copy), PreCommaPrecisionException);
}

}  // namespace
}  // namespace starsift
