#include "problem/Targets.h"

#include <gtest/gtest.h>

#include "support/fixtures/Problem.h"
#include "support/fixtures/RowsText.h"
#include "system/Exceptions.h"

namespace starsift {
namespace {

using test::problemFrom;
using test::rowsText;
using test::textOf;

template <class T>
class TargetsOver : public testing::Test {};
using NumberTypes = testing::Types<long double, QQ>;
TYPED_TEST_SUITE(TargetsOver, NumberTypes);

TYPED_TEST(TargetsOver, GoalBecomesAnEquationWithDeviations) {
  auto problem = problemFrom<TypeParam>(
      "[ 7 ] [ [ 2 3 ] ] [ [ 1 1 ] ] [ 4 ] [ 5 ] [ [ 1 -1 ] ] [ 0 ] [ 1 ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  liftFiniteTargets(problem);
  EXPECT_EQ(problem.deviationCount, 2);
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 1 0 0 ] [ 2 3 1 -1 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 4 7 ]");
  EXPECT_EQ(textOf(problem.qg), "[ 5 0 ]");
  EXPECT_EQ(rowsText(problem.At), "[ 0 0 1 1 ]");
  EXPECT_EQ(textOf(problem.dt), "[ -inf ]");
  EXPECT_EQ(rowsText(problem.Au), "[ 1 -1 0 0 ]");
  EXPECT_EQ(textOf(problem.rx), "[ 5 5 inf inf ]");
  EXPECT_EQ(textOf(problem.lx), "[ 0 0 0 0 ]");
  EXPECT_EQ(problem.fd[4], FreedomDegree::rightFree);
}

// The distance to the threshold is measured from the goal that is -inf by then.
TYPED_TEST(TargetsOver, FiniteThresholdOfALiftedTargetBecomesInfinite) {
  auto problem = problemFrom<TypeParam>(
      "[ 7 8 inf ] = [ 5 inf 3 ] [ [ 1 ] [ 2 ] [ 3 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 5 ]");
  liftFiniteTargets(problem);
  EXPECT_EQ(textOf(problem.kt), "[ 3 -inf inf ]");
}

TYPED_TEST(TargetsOver, LiftedTargetsStandBehindTheOthersInOrder) {
  auto problem = problemFrom<TypeParam>(
      "[ 7 inf 8 -inf 9 ] = [ 1 2 3 4 5 ] [ [ 1 ] [ 2 ] [ 3 ] [ 4 ] [ 5 ] ] "
      "[ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 5 ]");
  liftFiniteTargets(problem);
  EXPECT_EQ(problem.deviationCount, 6);
  EXPECT_EQ(rowsText(problem.At),
            "[ 2 0 0 0 0 0 0 ] [ 4 0 0 0 0 0 0 ] "
            "[ 0 1 1 0 0 0 0 ] [ 0 0 0 1 1 0 0 ] [ 0 0 0 0 0 1 1 ]");
  EXPECT_EQ(textOf(problem.dt), "[ inf -inf -inf -inf -inf ]");
  EXPECT_EQ(textOf(problem.kt), "[ 2 4 -inf -inf -inf ]");
  EXPECT_EQ(rowsText(problem.Ag), "[ 1 1 -1 0 0 0 0 ] [ 3 0 0 1 -1 0 0 ] [ 5 0 0 0 0 1 -1 ]");
  EXPECT_EQ(textOf(problem.bg), "[ 7 8 9 ]");
}

TYPED_TEST(TargetsOver, TargetsWithoutFiniteGoalStay) {
  auto problem = problemFrom<TypeParam>(
      "[ inf -inf ] [ [ 1 ] [ 2 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 5 ]");
  problem.deviationCount = 4;
  liftFiniteTargets(problem);
  EXPECT_EQ(problem.deviationCount, 0);
  EXPECT_EQ(rowsText(problem.At), "[ 1 ] [ 2 ]");
  EXPECT_EQ(problem.rx.dimension(), 1);
  EXPECT_EQ(problem.Ag.rowCount(), 0);
}

TYPED_TEST(TargetsOver, AggregateAddsRowsByTheirSigns) {
  auto problem = problemFrom<TypeParam>(
      "[ inf -inf 3 ] [ [ 1 2 ] [ 3 4 ] [ 10 10 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 "
      "]");
  aggregateTargets(problem);
  EXPECT_EQ(textOf(problem.atu), "[ -12 -12 ]");
}

TYPED_TEST(TargetsOver, AggregateWithoutTargetsIsZero) {
  auto problem =
      problemFrom<TypeParam>("[ ] [ ] [ [ 1 2 ] ] [ 3 ] [ ] [ ] [ ] [ ] [ 0 0 ] [ 0 0 ] [ 5 5 ]");
  problem.atu = Vector<TypeParam>{TypeParam(9)};
  aggregateTargets(problem);
  EXPECT_EQ(textOf(problem.atu), "[ 0 0 ]");
}

TYPED_TEST(TargetsOver, RangeGoesFromTheThresholdToTheGreatestValue) {
  auto problem = problemFrom<TypeParam>(
      "[ inf -inf ] = [ 4 9 ] [ [ 3 0 0 ] [ 0 2 0 ] ] [ ] [ ] [ ] [ ] [ ] [ ] "
      "[ 0 0 0 ] [ -1 -6 -inf ] [ 5 7 inf ]");
  aggregateTargets(problem);
  addTargetThreshold(problem);
  EXPECT_TRUE(problem.atuValid);
  EXPECT_EQ(problem.ltu, TypeParam(4 - 9));
  EXPECT_EQ(problem.rtu, TypeParam(15 + 12));
}

TYPED_TEST(TargetsOver, ThereIsNoRangeWithAnInfiniteThreshold) {
  auto problem = problemFrom<TypeParam>(
      "[ inf inf ] = [ 4 inf ] [ [ 3 ] [ 2 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 5 ]");
  aggregateTargets(problem);
  addTargetThreshold(problem);
  EXPECT_FALSE(problem.atuValid);
}

TYPED_TEST(TargetsOver, ThereIsNoRangeWithoutTargets) {
  auto problem =
      problemFrom<TypeParam>("[ ] [ ] [ [ 1 ] ] [ 3 ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 5 ]");
  aggregateTargets(problem);
  addTargetThreshold(problem);
  EXPECT_FALSE(problem.atuValid);
}

TYPED_TEST(TargetsOver, ThereIsNoRangeWithoutAGreatestValue) {
  for (const char* bounds : {"[ 0 ] [ inf ]", "[ -inf ] [ inf ]"}) {
    auto problem = problemFrom<TypeParam>(
        std::string("[ inf ] = [ 4 ] [ [ 3 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] ") + bounds);
    aggregateTargets(problem);
    addTargetThreshold(problem);
    EXPECT_FALSE(problem.atuValid);
  }
}

TYPED_TEST(TargetsOver, ThereIsNoRangeBelowTheThreshold) {
  auto problem = problemFrom<TypeParam>(
      "[ inf ] = [ 16 ] [ [ 3 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 5 ]");
  aggregateTargets(problem);
  addTargetThreshold(problem);
  EXPECT_FALSE(problem.atuValid);
  EXPECT_EQ(problem.rtu, TypeParam(0));
}

TYPED_TEST(TargetsOver, RangeOfOneValueIsARange) {
  auto problem = problemFrom<TypeParam>(
      "[ inf ] = [ 15 ] [ [ 3 ] ] [ ] [ ] [ ] [ ] [ ] [ ] [ 0 ] [ 0 ] [ 5 ]");
  aggregateTargets(problem);
  addTargetThreshold(problem);
  EXPECT_TRUE(problem.atuValid);
  EXPECT_EQ(problem.ltu, problem.rtu);
}

}  // namespace
}  // namespace starsift
