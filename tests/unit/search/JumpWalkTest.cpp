#include "search/jump/JumpWalk.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "support/fixtures/OptText.h"
#include "support/fixtures/Problem.h"

namespace starsift {
namespace {

using test::OptText;
using test::problemFrom;

JumpWalk walkOf(const OptText& text, std::uint64_t seed = 1) {
  return {jumpProblem(integerProblem(problemFrom(text.text())).value()).value(), seed};
}

bool satisfiesAll(const JumpProblem& problem, const std::vector<double>& point) {
  for (std::size_t i = 0; i < problem.rows.size(); ++i) {
    double value = 0;
    for (const SparseEntry& entry : problem.rows[i]) value += entry.value * point[entry.index];
    if (problem.rowRanges[i].distance(value) > 0) return false;
  }
  for (std::size_t j = 0; j < point.size(); ++j)
    if (problem.box[j].distance(point[j]) > 0) return false;
  return true;
}

/// Whether it arrives; `hasArrived()` is compared with the rows after every step.
bool arrives(JumpWalk& walk, int steps) {
  for (int step = 0; step < steps && !walk.hasArrived(); ++step) {
    walk.step();
    EXPECT_EQ(walk.hasArrived(), satisfiesAll(walk.problem(), walk.point())) << "step " << step;
  }
  return walk.hasArrived();
}

TEST(JumpWalk, BeginsAtThePointOfTheBoxNearestToZero) {
  const JumpWalk walk = walkOf({.lx = "[ 2 -5 ]", .rx = "[ 4 -1 ]"});
  EXPECT_EQ(walk.point(), (std::vector<double>{2, -1}));
}

TEST(JumpWalk, ArrivesWhereRowsMeet) {
  // 3 x + y / 2 = 7 and x - y <= 2 leave (2, 2) of the box.
  JumpWalk walk = walkOf({});
  ASSERT_TRUE(arrives(walk, 1000));
  EXPECT_EQ(walk.point(), (std::vector<double>{2, 2}));
}

TEST(JumpWalk, ArrivesAtBetterAndBetterPointsUntilThereIsNone) {
  JumpWalk walk = walkOf({.Ag = "[ ]", .bg = "[ ]"});
  for (const double most : {-8.0, -12.0, -15.0}) {
    walk.setMostObjective(most);
    ASSERT_TRUE(arrives(walk, 1000)) << most;
    EXPECT_LE(-walk.point()[0] - 2 * walk.point()[1], most);
  }
  walk.setMostObjective(-16);
  EXPECT_FALSE(arrives(walk, 1000));
}

TEST(JumpWalk, MovesByAnyDistanceInOneStep) {
  JumpWalk walk = walkOf({.Ag = "[ [ 1 0 ] ]",
                          .bg = "[ 123456 ]",
                          .Au = "[ ]",
                          .lu = "[ ]",
                          .ru = "[ ]",
                          .rx = "[ 1000000 1 ]"});
  ASSERT_TRUE(arrives(walk, 1));
  EXPECT_EQ(walk.point()[0], 123456);
}

TEST(JumpWalk, ArrivesInBoxesWithoutBounds) {
  JumpWalk walk = walkOf({.Ag = "[ [ 7 -5 ] ]",
                          .bg = "[ 1001 ]",
                          .ru = "[ 1000000 ]",
                          .lx = "[ -inf -inf ]",
                          .rx = "[ inf inf ]"});
  EXPECT_TRUE(arrives(walk, 10'000));
}

TEST(JumpWalk, RepeatsItselfWithTheSameSeed) {
  JumpWalk first = walkOf({.ru = "[ -3 ]"}, 7);
  JumpWalk second = walkOf({.ru = "[ -3 ]"}, 7);
  for (int step = 0; step < 100; ++step) {
    if (first.hasArrived()) break;
    first.step();
    second.step();
    ASSERT_EQ(first.point(), second.point());
  }
  EXPECT_EQ(first.effort(), second.effort());
}

TEST(JumpWalk, TakesEffortWhereNoStepHelps) {
  JumpWalk walk = walkOf({.Ag = "[ [ 0 0 ] ]", .bg = "[ 1 ]"});
  for (int step = 0; step < 100; ++step) walk.step();
  EXPECT_GE(walk.effort(), 100U);
  EXPECT_FALSE(walk.hasArrived());
}

TEST(JumpWalk, KicksStayInTheBoxAndMove) {
  JumpWalk walk = walkOf({.lx = "[ 2 0 ]", .rx = "[ 3 5 ]"});
  bool moved = false;
  for (int i = 0; i < 100; ++i) {
    const std::vector<double> kicked = walk.kicked({2, 5}, 1);
    for (std::size_t j = 0; j < 2; ++j) EXPECT_EQ(walk.problem().box[j].distance(kicked[j]), 0);
    moved = moved || kicked != std::vector<double>{2, 5};
  }
  EXPECT_TRUE(moved);
}

TEST(JumpWalk, RestartsAnywhere) {
  JumpWalk walk = walkOf({});
  ASSERT_TRUE(arrives(walk, 1000));
  walk.restart({0, 0});
  EXPECT_FALSE(walk.hasArrived());
  EXPECT_TRUE(arrives(walk, 1000));
}

}  // namespace
}  // namespace starsift
