#include "problem/ProblemPoint.h"

#include <gtest/gtest.h>

#include "numbers/VectorQQ.h"
#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/TextOf.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::textOf;

/// A normal form by hand. Of six variables the second and the fifth are constants; those
/// left are a plain one from 3 on, a negated one in hundredths, and a free one in tenths.
/// Two slacks, in tenths and in units, and two deviations in halves follow. The first
/// equation is plain, the next two are congruences modulo 4 and -6.
template <class T>
class ProblemPointOver : public testing::Test {
 protected:
  ProblemPointOver() {
    problem.fixedVars.resize(2, false);
    problem.fixedVars[1] = Pair<Index, T>(2, T(20));
    problem.fixedVars[2] = Pair<Index, T>(5, T(1) / T(2));
    problem.swappedVars.resize(1, false);
    problem.swappedVars[1] = 2;
    problem.dx = {T(0), T(2), T(1), T(0), T(0), T(0), T(0)};
    problem.lx = Vector<T>(7);
    problem.lx[3] = -NumberTraits<T>::infinity();
    problem.rx = Vector<T>(7);
    problem.shift = {T(3), T(-150), T(0), T(0), T(0), T(0), T(0), T(0), T(0)};
    problem.slackUnit = {T(1), T(1), T(1), T(10), T(1), T(2), T(2)};
    problem.slackCount = 2;
    problem.deviationCount = 2;
    problem.Ag = Matrix<T>{{T(1), T(1), T(1), T(0), T(0), T(0), T(0), T(0), T(0)},
                           {T(1), T(0), T(0), T(0), T(0), T(0), T(0), T(4), T(0)},
                           {T(0), T(1), T(0), T(0), T(0), T(0), T(0), T(0), T(-6)},
                           {T(5), T(1), T(0), T(-1), T(0), T(0), T(0), T(0), T(0)},
                           {T(0), T(0), T(1), T(0), T(-1), T(0), T(0), T(0), T(0)},
                           {T(2), T(0), T(3), T(0), T(0), T(1), T(-1), T(0), T(0)}};
    problem.bg = {T(9), T(1), T(0), T(10), T(-4), T(7)};
    problem.qg = {T(0), T(4), T(-6), T(0), T(0), T(0)};
  }

  static T fraction(long numerator, long denominator) { return T(numerator) / T(denominator); }

  Vector<T> withSlacks(Vector<T> point, const std::optional<T>& hom = std::nullopt) const {
    appendSlacks(problem, point, hom);
    return point;
  }

  Vanu<T> problem;
  /// The values of the user, and the same in the variables of the normal form.
  const Vector<T> x{T(8), T(20), fraction(1, 4), fraction(-3, 10), fraction(1, 2)};
  const Vector<T> z{T(5), T(125), T(-3)};
};
using NumberTypes = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(ProblemPointOver, NumberTypes);

TYPED_TEST(ProblemPointOver, TakesConstantsStepsSignsAndShiftsIntoAccount) {
  EXPECT_EQ(textOf(originalVariables(this->problem, this->x)), textOf(this->z));
}

TYPED_TEST(ProblemPointOver, FindsTheWayBack) {
  EXPECT_EQ(textOf(pointAsRead(this->problem, this->z, true)), textOf(this->x));
}

TYPED_TEST(ProblemPointOver, LeavesConstantsOutWhereTheyAreNotWanted) {
  EXPECT_EQ(textOf(pointAsRead(this->problem, this->z, false)),
            textOf(Vector<TypeParam>{TypeParam(8), this->fraction(1, 4), this->fraction(-3, 10)}));
}

TYPED_TEST(ProblemPointOver, LeavesAFreeVariableWhereItIs) {
  const Vector<TypeParam> back =
      pointAsRead(this->problem, Vector<TypeParam>(this->problem.originalCount()), false);
  EXPECT_EQ(back[1], TypeParam(3));
  EXPECT_EQ(back[3], TypeParam(0));
}

TYPED_TEST(ProblemPointOver, NeverGivesTheSecondZero) {
  EXPECT_EQ(
      textOf(pointAsRead(this->problem, {TypeParam(-3), TypeParam(150), TypeParam(0)}, false)),
      "[ 0 0 0 ]");
}

TYPED_TEST(ProblemPointOver, SlacksAndDeviationsMakeLiftedEquationsHold) {
  // 5 * 5 + 125 - 10, -3 + 4, 2 * 5 - 3 * 3 - 7
  EXPECT_EQ(textOf(this->withSlacks(this->z)), "[ 5 125 -3 140 1 6 0 ]");
}

TYPED_TEST(ProblemPointOver, DeviationUpwardsIsTheSecondOfItsPair) {
  const Vector<TypeParam> above{TypeParam(11), TypeParam(0), TypeParam(-3)};
  EXPECT_EQ(textOf(this->withSlacks(above)), "[ 11 0 -3 45 1 0 6 ]");
}

TYPED_TEST(ProblemPointOver, NoDeviationIsThePairOfZeros) {
  const Vector<TypeParam> goal{TypeParam(8), TypeParam(0), TypeParam(-3)};
  EXPECT_EQ(textOf(this->withSlacks(goal)), "[ 8 0 -3 30 1 0 0 ]");
}

TYPED_TEST(ProblemPointOver, HomogeneousPointHasRightHandSidesSoOften) {
  EXPECT_EQ(textOf(this->withSlacks(this->z, TypeParam(0))), "[ 5 125 -3 150 -3 0 1 ]");
  EXPECT_EQ(textOf(this->withSlacks(this->z, TypeParam(-2))), "[ 5 125 -3 170 -11 0 15 ]");
}

TYPED_TEST(ProblemPointOver, NegativeSlackOfAPointIsRefused) {
  const Vector<TypeParam> below{TypeParam(1), TypeParam(4), TypeParam(-3)};
  EXPECT_FAILS_WITH(this->withSlacks(below), "slack variable inconsistency, s should be >= 0");
}

TYPED_TEST(ProblemPointOver, NegativeSlackWithAFactorIsTheEntry) {
  const Vector<TypeParam> below{TypeParam(1), TypeParam(4), TypeParam(-3)};
  EXPECT_EQ(textOf(this->withSlacks(below, TypeParam(1))), "[ 1 4 -3 -1 1 14 0 ]");
}

TYPED_TEST(ProblemPointOver, SlacksComeBackInTheUnitsOfTheProblem) {
  const Vector<TypeParam> back = pointAsRead(this->problem, this->withSlacks(this->z), true);
  ASSERT_EQ(back.dimension(), 9);
  EXPECT_EQ(back[5], this->x[5]);
  EXPECT_EQ(back[6], TypeParam(14));
  EXPECT_EQ(back[7], TypeParam(1));
  EXPECT_EQ(back[8], TypeParam(3));
  EXPECT_EQ(back[9], TypeParam(0));
}

TYPED_TEST(ProblemPointOver, ResidualsAreWhatEquationsMiss) {
  const Vector<TypeParam> complete = this->withSlacks(this->z);
  EXPECT_EQ(textOf(equationResiduals(this->problem, complete, TypeParam(1))),
            "[ 118 4 125 0 0 0 ]");
  EXPECT_EQ(textOf(equationResiduals(this->problem, complete, TypeParam(-1))),
            "[ 136 6 125 20 -8 14 ]");
}

TYPED_TEST(ProblemPointOver, ModulusFactorsLeaveTheRemainders) {
  Vector<TypeParam> point = this->withSlacks({TypeParam(7), TypeParam(20), TypeParam(1)});
  Vector<TypeParam> residuals = equationResiduals(this->problem, point, TypeParam(1));
  appendModulusFactors(this->problem, point, residuals);
  ASSERT_EQ(point.dimension(), 9);
  // 7 - 1 = 1 * 4 + 2 and 20 = -3 * -6 + 2
  EXPECT_EQ(point[8], TypeParam(-1));
  EXPECT_EQ(point[9], TypeParam(3));
  EXPECT_EQ(textOf(residuals), "[ 19 2 2 0 0 0 ]");
  EXPECT_EQ(textOf(equationResiduals(this->problem, point, TypeParam(1))), textOf(residuals));
}

TYPED_TEST(ProblemPointOver, RemainderHasTheSignOfTheResidual) {
  Vector<TypeParam> point =
      this->withSlacks({TypeParam(-6), TypeParam(-20), TypeParam(100)}, TypeParam(1));
  Vector<TypeParam> residuals = equationResiduals(this->problem, point, TypeParam(1));
  appendModulusFactors(this->problem, point, residuals);
  EXPECT_EQ(point[8], TypeParam(1));
  EXPECT_EQ(residuals[2], TypeParam(-3));
  EXPECT_EQ(point[9], TypeParam(-3));
  EXPECT_EQ(residuals[3], TypeParam(-2));
}

TYPED_TEST(ProblemPointOver, MultiplesOfTheModuliPass) {
  EXPECT_NO_THROW(checkCongruences(this->problem, {TypeParam(1), TypeParam(-8), TypeParam(18),
                                                   TypeParam(1), TypeParam(1), TypeParam(1)}));
}

TYPED_TEST(ProblemPointOver, BrokenCongruenceIsTold) {
  try {
    checkCongruences(this->problem, {TypeParam(0), TypeParam(-8), TypeParam(17), TypeParam(0),
                                     TypeParam(0), TypeParam(0)});
    FAIL();
  } catch (const ModuloException& exception) {
    EXPECT_EQ(exception.message(), "modulo equation inconsistency");
  }
}

TYPED_TEST(ProblemPointOver, CongruenceMayMissByTheTolerance) {
  const TypeParam little = TypeParam(3) / TypeParam(1'000'000'000);
  Vector<TypeParam> residuals(6);
  for (const TypeParam& missed : {little, TypeParam(4) - little, -little, little - TypeParam(4)}) {
    residuals[2] = missed;
    EXPECT_NO_THROW(checkCongruences(this->problem, residuals));
  }
  residuals[2] = little + little;
  EXPECT_THROW(checkCongruences(this->problem, residuals), ModuloException);
}

TYPED_TEST(ProblemPointOver, ConstantBehindTheEndIsRefused) {
  this->problem.fixedVars[2].left = 6;
  EXPECT_FAILS_WITH(pointAsRead(this->problem, this->z, true), "insertComponent: invalid index");
}

TYPED_TEST(ProblemPointOver, PointWithoutItsConstantsIsRefused) {
  EXPECT_FAILS_WITH(originalVariables(this->problem, this->z), "removeComponent: invalid index");
}

TEST(ProblemPoint, ResultBeyondTheSafeRangeOfLongDoubleIsTold) {
  Vanu<long double> problem;
  problem.dx = problem.rx = {0};
  problem.shift = {1};
  EXPECT_EQ(pointAsRead(problem, {1e9L - 1}, false)[1], 1e9L);
  try {
    pointAsRead(problem, {1e9L}, false);
    FAIL();
  } catch (const PrecisionException& exception) {
    EXPECT_EQ(exception.message(), "opt_vec overflow1");
  }
}

TEST(ProblemPoint, SlackThatIsNoDecimalAsksForExactArithmetic) {
  Vanu<long double> problem;
  problem.dx = problem.rx = problem.shift = {0};
  problem.slackUnit = {3};
  problem.slackCount = 1;
  EXPECT_EQ(pointAsRead(problem, {6}, false)[1], 2);
  EXPECT_THROW(pointAsRead(problem, {1}, false), PostCommaPrecisionException);
}

TEST(ProblemPoint, DecimalsAreThoseThatAreWritten) {
  Vanu<long double> problem;
  problem.dx = {2};
  problem.rx = problem.shift = {0};
  EXPECT_EQ(originalVariables(problem, {0.07L})[1], 7);
}

}  // namespace
}  // namespace starsift
