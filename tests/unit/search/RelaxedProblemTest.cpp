#include "search/decide/RelaxedProblem.h"

#include <gtest/gtest.h>

#include "support/fixtures/OptText.h"
#include "support/fixtures/Problem.h"

namespace starsift {
namespace {

using test::OptText;
using test::problemFrom;

bool always() {
  return true;
}

RelaxedProblem relaxed(const OptText& text) {
  return relaxedProblem(integerProblem(problemFrom(text.text())).value(), &always);
}

/// x + 2 y is maximised, both from 0 to 5, 2 x + 2 y <= 13.
const OptText halfOpen{
    .Ag = "[ ]", .bg = "[ ]", .Au = "[ [ 2 2 ] ]", .lu = "[ -inf ]", .ru = "[ 13 ]"};

TEST(RelaxedProblem, HasABoundThatIsRoundedToValuesOfTheObjective) {
  OptText text = halfOpen;
  text.dt = "[ inf ]";
  text.At = "[ [ 1 2 ] ]";
  // The row is x + y <= 6 in integers.
  const RelaxedProblem result = relaxed(text);
  EXPECT_EQ(result.leastObjective, ZZ(-11));
  ASSERT_TRUE(result.solution);
  EXPECT_EQ(*result.solution, (std::vector<ZZ>{ZZ(1), ZZ(5)}));
}

TEST(RelaxedProblem, HasTheSumOfAllDistancesToGoals) {
  OptText text = halfOpen;
  text.dt = "[ 7 0 9 1 ]";
  text.At = "[ [ 1 0 ] [ 1 0 ] [ 0 1 ] [ 0 1 ] ]";
  const RelaxedProblem result = relaxed(text);
  EXPECT_EQ(result.leastObjective, ZZ(15));
  EXPECT_TRUE(result.solution);
}

TEST(RelaxedProblem, ProvesThatThereIsNoPoint) {
  OptText text = halfOpen;
  text.Ag = "[ [ 1 -1 ] [ 1 1 ] ]";
  text.bg = "[ 5 8 ]";
  EXPECT_TRUE(relaxed(text).isInfeasible);
  text.bg = "[ 4 6 ]";
  EXPECT_FALSE(relaxed(text).isInfeasible);
}

TEST(RelaxedProblem, PassesOverCongruences) {
  OptText text = halfOpen;
  text.Ag = "[ [ 1 -1 ] ]";
  text.bg = "[ 9 ]";
  text.qg = "[ 10 ]";
  text.dt = "[ inf ]";
  text.At = "[ [ 1 2 ] ]";
  const RelaxedProblem result = relaxed(text);
  EXPECT_EQ(result.leastObjective, ZZ(-11));
  EXPECT_FALSE(result.solution);
}

TEST(RelaxedProblem, ProvesBoundsOfLongNumbers) {
  OptText text = halfOpen;
  text.dt = "[ -inf ]";
  text.At = "[ [ 100000000000000000000000000000000000000001 200000000000000000000000000000 ] ]";
  text.lx = "[ 2 4 ]";
  const RelaxedProblem result = relaxed(text);
  ASSERT_TRUE(result.leastObjective);
  const ZZ least("200000000000800000000000000000000000000002", 10);
  EXPECT_LE(*result.leastObjective, least);
  EXPECT_GE(*result.leastObjective, least - pow(ZZ::ten(), ZZ(30)));
}

TEST(RelaxedProblem, KnowsNothingOfAnObjectiveThatFallsWithoutEnd) {
  OptText text = halfOpen;
  text.dt = "[ -inf ]";
  text.At = "[ [ 1 2 ] ]";
  text.lx = "[ -inf 0 ]";
  text.rx = "[ inf 5 ]";
  const RelaxedProblem result = relaxed(text);
  EXPECT_FALSE(result.leastObjective);
  EXPECT_FALSE(result.solution);
  EXPECT_FALSE(result.isInfeasible);
}

}  // namespace
}  // namespace starsift
