#include "stars/StarNorms.h"

#include "support/fixtures/ExpectFails.h"
#include "support/fixtures/Problem.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::problemFrom;

template <class T>
class NormsOver : public testing::Test {
 protected:
  static T inf() { return NumberTraits<T>::infinity(); }

  static void expectNorms(const Norms<T>& norms, const T& target, const T& slack) {
    EXPECT_EQ(norms.target, target);
    EXPECT_EQ(norms.slack, slack);
  }

  /// Of the goals alone.
  static Norms<T> normsOf(const Vector<T>& goals, const Vector<T>& values) {
    Vanu<T> problem;
    problem.dt = goals;
    const Norms<T> norms = computeNorms(problem, values, Vector<T>{T(1)});
    expectNorms(goalNorms(goals, values), norms.target, norms.slack);
    return norms;
  }

  /// Two variables, one slack, a plain equation, one that was a one-sided
  /// inequation, and `goals` lifted ones with two deviations each.
  static Vanu<T> liftedProblem(Index goals) {
    Vanu<T> problem;
    problem.dt = Vector<T>{-inf()};
    problem.lifted = true;
    problem.slackCount = 1;
    problem.deviationCount = 2 * goals;
    problem.rx.resize(3 + 2 * goals, false);
    problem.Ag = Matrix<T>(2 + goals, 3 + 2 * goals);
    problem.bg.resize(2 + goals, false);
    for (Index i = 1; i <= 2 + goals; ++i) {
      std::fill(problem.Ag[i].begin(), problem.Ag[i].end(), T(1000));
      problem.Ag[i][1] = T(i);
      problem.Ag[i][2] = T(10 * i);
      problem.bg[i] = T(100);
    }
    return problem;
  }
};

using LatticeNumbers = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(NormsOver, LatticeNumbers);

TYPED_TEST(NormsOver, NoTargetsHaveNone) {
  this->expectNorms(this->normsOf({}, {}), TypeParam(0), TypeParam(0));
}

TYPED_TEST(NormsOver, MinimisedTargetCountsAsItIs) {
  const Vector<TypeParam> goals{TypeParam(-this->inf())};
  this->expectNorms(this->normsOf(goals, {TypeParam(7)}), TypeParam(7), TypeParam(0));
}

TYPED_TEST(NormsOver, MaximisedTargetCountsNegatively) {
  this->expectNorms(this->normsOf({this->inf()}, {TypeParam(7)}), TypeParam(-7), TypeParam(0));
}

TYPED_TEST(NormsOver, FiniteGoalCountsItsDistanceFromAbove) {
  this->expectNorms(this->normsOf({TypeParam(4)}, {TypeParam(7)}), TypeParam(3), TypeParam(3));
}

TYPED_TEST(NormsOver, FiniteGoalCountsItsDistanceFromBelow) {
  this->expectNorms(this->normsOf({TypeParam(-4)}, {TypeParam(-7)}), TypeParam(3), TypeParam(3));
}

TYPED_TEST(NormsOver, TargetsAddUp) {
  const Vector<TypeParam> goals{this->inf(), TypeParam(4), TypeParam(-this->inf()), TypeParam(0)};
  const Vector<TypeParam> values{TypeParam(7), TypeParam(3), TypeParam(20), TypeParam(-2)};
  this->expectNorms(this->normsOf(goals, values), TypeParam(-7 + 1 + 20 + 2), TypeParam(3));
}

TYPED_TEST(NormsOver, FiniteGoalInALiftedProblemIsInconsistent) {
  Vanu<TypeParam> problem = this->liftedProblem(1);
  problem.dt = Vector<TypeParam>{this->inf(), TypeParam(3)};
  const Vector<TypeParam> values{TypeParam(1), TypeParam(2)};
  EXPECT_FAILS_WITH(computeNorms(problem, values, Vector<TypeParam>(2)),
                    "preparation inconsistency");
}

TYPED_TEST(NormsOver, LiftedProblemWithoutGoalsHasNoSlack) {
  this->expectNorms(
      computeNorms(this->liftedProblem(0), {TypeParam(9)}, {TypeParam(1), TypeParam(2)}),
      TypeParam(9), TypeParam(0));
}

TYPED_TEST(NormsOver, SlackOfALiftedGoalIsTheResidualOfItsRow) {
  // Row 3 of 3: 3 * 1 + 30 * 2 - 100 = -37.
  this->expectNorms(
      computeNorms(this->liftedProblem(1), {TypeParam(9)}, {TypeParam(1), TypeParam(2)}),
      TypeParam(9), TypeParam(37));
}

TYPED_TEST(NormsOver, SlacksOfLiftedGoalsAddUp) {
  // Rows 3 and 4 of 4: 3 + 90 - 100 = -7 and 4 + 120 - 100 = 24.
  this->expectNorms(
      computeNorms(this->liftedProblem(2), {TypeParam(9)}, {TypeParam(1), TypeParam(3)}),
      TypeParam(9), TypeParam(31));
}

TYPED_TEST(NormsOver, SlackAndDeviationColumnsTakeNoPart) {
  Vector<TypeParam> x(5);
  std::fill(x.begin(), x.end(), TypeParam(50));
  x[1] = TypeParam(1);
  x[2] = TypeParam(2);
  this->expectNorms(computeNorms(this->liftedProblem(1), {TypeParam(9)}, x), TypeParam(9),
                    TypeParam(37));
}

TEST(Norms, OfLongDoubleAreThoseOfTheDecimals) {
  Vanu<long double> problem;
  problem.dt = Vector<long double>{0.3L, 0.1L};
  const auto norms = computeNorms(problem, {0.1L, 0.3L}, Vector<long double>{1.0L});
  EXPECT_EQ(norms.target, 0.4L);
  EXPECT_EQ(norms.slack, 0.4L);
}

TEST(Norms, ThatDoNotFitLosePrecision) {
  Vanu<long double> problem;
  problem.dt = Vector<long double>{-HUGE_VALL, -HUGE_VALL};
  try {
    computeNorms(problem, {999999999999999999.0L, 0.5L}, Vector<long double>{1.0L});
    FAIL() << "no exception";
  } catch (const PrecisionException& exception) {
    EXPECT_EQ(exception.message(), "Precision lost during check");
  }
}

}  // namespace
}  // namespace starsift
