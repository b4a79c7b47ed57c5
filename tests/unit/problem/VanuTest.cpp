#include "problem/Vanu.h"

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/Problem.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::problemFrom;
using test::q;

/// A problem with something in every field.
template <class T>
Vanu<T> fullProblem() {
  const T inf = NumberTraits<T>::infinity();
  Vanu<T> problem = problemFrom<T>(
      "[ inf -inf 4 ] = [ 1 2 3 ] [ [ 1 2 ] [ 3 4 ] [ 5 1/2 ] ] [ [ 1 1 ] ] [ 7 ] [ 2 ] "
      "[ [ 1 -1 ] ] [ -inf ] [ 2.5 ] [ 0 1 ] [ -inf 0 ] [ 5 inf ]");
  problem.optFile = "a.opt";
  problem.solFile = "a.sol";
  problem.ltu = T(3);
  problem.rtu = inf;
  problem.atuValid = true;
  problem.atu = Vector<T>{T(1), T(2)};
  problem.shift = Vector<T>{T(-1), T(4)};
  problem.slackUnit = Vector<T>{T(1), T(2)};
  problem.fixedVars.resize(1, false);
  problem.fixedVars[1].left = 2;
  problem.fixedVars[1].right = T(9);
  problem.swappedVars.resize(1, false);
  problem.swappedVars[1] = 1;
  problem.fixedTargets = true;
  problem.slackCount = 5;
  problem.deviationCount = 6;
  problem.lifted = true;
  problem.reactionsOff = true;
  problem.trackingRestarted = true;
  problem.homValue = T(17);
  return problem;
}

template <class T>
void expectSameMatrix(const Matrix<T>& a, const Matrix<T>& b) {
  ASSERT_EQ(a.rowCount(), b.rowCount());
  ASSERT_EQ(a.columnCount(), b.columnCount());
  for (Index i = 1; i <= a.rowCount(); ++i) EXPECT_TRUE(identical(a[i], b[i]));
}

template <class T>
void expectSameVectors(const Vanu<T>& a, const Vanu<T>& b) {
  EXPECT_TRUE(identical(a.dt, b.dt));
  EXPECT_TRUE(identical(a.kt, b.kt));
  EXPECT_TRUE(identical(a.atu, b.atu));
  EXPECT_TRUE(identical(a.bg, b.bg));
  EXPECT_TRUE(identical(a.qg, b.qg));
  EXPECT_TRUE(identical(a.lu, b.lu));
  EXPECT_TRUE(identical(a.ru, b.ru));
  EXPECT_TRUE(identical(a.dx, b.dx));
  EXPECT_TRUE(identical(a.lx, b.lx));
  EXPECT_TRUE(identical(a.rx, b.rx));
  EXPECT_TRUE(identical(a.shift, b.shift));
  EXPECT_TRUE(identical(a.slackUnit, b.slackUnit));
}

template <class T>
void expectSameRest(const Vanu<T>& a, const Vanu<T>& b) {
  EXPECT_EQ(a.optFile, b.optFile);
  EXPECT_EQ(a.solFile, b.solFile);
  EXPECT_EQ(a.ltu, b.ltu);
  EXPECT_EQ(a.rtu, b.rtu);
  EXPECT_EQ(a.atuValid, b.atuValid);
  EXPECT_TRUE(std::equal(a.fd.begin(), a.fd.end(), b.fd.begin(), b.fd.end()));
  ASSERT_EQ(a.fixedVars.dimension(), b.fixedVars.dimension());
  for (Index i = 1; i <= a.fixedVars.dimension(); ++i) {
    EXPECT_EQ(a.fixedVars[i].left, b.fixedVars[i].left);
    EXPECT_EQ(a.fixedVars[i].right, b.fixedVars[i].right);
  }
  EXPECT_TRUE(std::equal(a.swappedVars.begin(), a.swappedVars.end(), b.swappedVars.begin(),
                         b.swappedVars.end()));
  EXPECT_EQ(a.fixedTargets, b.fixedTargets);
  EXPECT_EQ(a.slackCount, b.slackCount);
  EXPECT_EQ(a.deviationCount, b.deviationCount);
  EXPECT_EQ(a.lifted, b.lifted);
  EXPECT_EQ(a.reactionsOff, b.reactionsOff);
  EXPECT_EQ(a.trackingRestarted, b.trackingRestarted);
  EXPECT_EQ(a.homValue, b.homValue);
}

template <class T>
void expectSame(const Vanu<T>& a, const Vanu<T>& b) {
  expectSameMatrix(a.At, b.At);
  expectSameMatrix(a.Ag, b.Ag);
  expectSameMatrix(a.Au, b.Au);
  expectSameVectors(a, b);
  expectSameRest(a, b);
}

template <class T>
class VanuOver : public testing::Test {};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(VanuOver, LatticeNumbers);

TYPED_TEST(VanuOver, IsEmptyAtFirst) {
  const Vanu<TypeParam> problem;
  EXPECT_EQ(problem.rx.dimension(), 0);
  EXPECT_FALSE(problem.At.isSet());
  EXPECT_TRUE(problem.optFile.empty());
  EXPECT_EQ(problem.homValue, TypeParam(1));
  EXPECT_FALSE(problem.atuValid || problem.lifted || problem.reactionsOff ||
               problem.trackingRestarted);
}

TYPED_TEST(VanuOver, ClearLeavesAFreshProblemButForFixedTargets) {
  Vanu<TypeParam> problem = fullProblem<TypeParam>();
  problem.clear(false);
  Vanu<TypeParam> fresh;
  fresh.fixedTargets = true;
  expectSame(problem, fresh);
}

TYPED_TEST(VanuOver, ClearKeepsThePathsWhenAsked) {
  Vanu<TypeParam> problem = fullProblem<TypeParam>();
  problem.clear(true);
  Vanu<TypeParam> fresh;
  fresh.fixedTargets = true;
  fresh.optFile = "a.opt";
  fresh.solFile = "a.sol";
  expectSame(problem, fresh);
}

TYPED_TEST(VanuOver, AssignmentCopiesEveryField) {
  const Vanu<TypeParam> problem = fullProblem<TypeParam>();
  Vanu<TypeParam> copy;
  copy = problem;
  expectSame(copy, problem);
}

TYPED_TEST(VanuOver, AssignmentToItselfDoesNothing) {
  Vanu<TypeParam> problem = fullProblem<TypeParam>();
  const Vanu<TypeParam>& same = problem;
  problem = same;
  expectSame(problem, fullProblem<TypeParam>());
}

TYPED_TEST(VanuOver, ConversionWithinOneTypeCopiesEveryField) {
  const Vanu<TypeParam> problem = fullProblem<TypeParam>();
  Vanu<TypeParam> copy;
  copy.convertFrom(problem);
  expectSame(copy, problem);
}

TYPED_TEST(VanuOver, AddedVariableHasItsKind) {
  Vanu<TypeParam> problem = fullProblem<TypeParam>();
  problem.addVariable(TypeParam(2), NumberTraits<TypeParam>::infinity(), TypeParam(3));
  ASSERT_EQ(problem.rx.dimension(), 3);
  ASSERT_EQ(problem.lx.dimension(), 3);
  ASSERT_EQ(problem.dx.dimension(), 3);
  ASSERT_EQ(problem.fd.dimension(), 3);
  EXPECT_EQ(problem.lx[3], TypeParam(2));
  EXPECT_TRUE(NumberTraits<TypeParam>::isInfinite(problem.rx[3]));
  EXPECT_EQ(problem.dx[3], TypeParam(3));
  EXPECT_EQ(problem.fd[3], FreedomDegree::rightFree);
}

TYPED_TEST(VanuOver, AddedVariableLeavesTheOthersAndTheMatrices) {
  Vanu<TypeParam> problem = fullProblem<TypeParam>();
  problem.addVariable(TypeParam(2), TypeParam(8), TypeParam(3));
  EXPECT_EQ(problem.rx[1], TypeParam(5));
  EXPECT_EQ(problem.fd[1], FreedomDegree::leftFree);
  expectSameMatrix(problem.At, fullProblem<TypeParam>().At);
}

TYPED_TEST(VanuOver, TargetSignIsPlusOneForMaximisedTargetsOnly) {
  const Vanu<TypeParam> problem = fullProblem<TypeParam>();
  EXPECT_EQ(problem.targetSign(1), TypeParam(1));
  EXPECT_EQ(problem.targetSign(2), TypeParam(-1));
  EXPECT_EQ(problem.targetSign(3), TypeParam(-1));
}

TYPED_TEST(VanuOver, TargetSignBeyondTheTargetsIsRefused) {
  const Vanu<TypeParam> problem = fullProblem<TypeParam>();
  EXPECT_FAILS_WITH(problem.targetSign(4), "Array: index out of range");
}

TEST(Vanu, LongDoubleProblemIsThatOfTheRationals) {
  Vanu<long double> converted;
  converted.convertFrom(fullProblem<QQ>());
  expectSame(converted, fullProblem<long double>());
}

TEST(Vanu, ProblemComesBackFromLongDouble) {
  Vanu<QQ> converted;
  converted.convertFrom(fullProblem<long double>());
  expectSame(converted, fullProblem<QQ>());
}

TEST(Vanu, ThirdDoesNotFitIntoLongDouble) {
  Vanu<QQ> problem = fullProblem<QQ>();
  problem.kt[2] = q("1/3");
  Vanu<long double> converted;
  EXPECT_THROW(converted.convertFrom(problem), PostCommaPrecisionException);
}

TEST(Vanu, NineteenDigitsDoNotFitIntoLongDouble) {
  Vanu<QQ> problem = fullProblem<QQ>();
  problem.Au[1][2] = q("1000000000000000000");
  Vanu<long double> converted;
  EXPECT_THROW(converted.convertFrom(problem), PreCommaPrecisionException);
}

TEST(Vanu, FixedVariablesAreConvertedStrictlyToo) {
  Vanu<QQ> problem = fullProblem<QQ>();
  problem.fixedVars[1].right = q("1/3");
  Vanu<long double> converted;
  EXPECT_THROW(converted.convertFrom(problem), PostCommaPrecisionException);
}

TEST(Vanu, TargetsAreFixedWithoutAnInfiniteGoal) {
  EXPECT_TRUE(problemFrom("[ 1 2 ] [ [ 1 ] [ 2 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 1 ]")
                  .fixedTargets);
}

TEST(Vanu, TargetsAreNotFixedWithAMaximisedOne) {
  EXPECT_FALSE(problemFrom("[ 1 inf ] [ [ 1 ] [ 2 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 1 ]")
                   .fixedTargets);
}

TEST(Vanu, TargetsAreNotFixedWithAMinimisedOne) {
  EXPECT_FALSE(problemFrom("[ -inf 1 ] [ [ 1 ] [ 2 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 1 ]")
                   .fixedTargets);
}

}  // namespace
}  // namespace starsift
