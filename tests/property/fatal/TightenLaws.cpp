// Tightened bounds against all points of the box, over GMP's rationals.
#include <gtest/gtest.h>

#include <algorithm>

#include "SmallProblems.h"
#include "problem/TightenBounds.h"
#include "support/oracles/NormalFormOracle.h"

namespace starsift {
namespace {

using oracle::Bound;
using oracle::Point;
using oracle::Problem;
using oracle::Range;
using test::checkOverProblems;
using test::plain;
using test::problemCount;
using test::SmallProblem;

/// The same equations with tightened bounds of variables and rows.
SmallProblem tightened(const SmallProblem& small) {
  Vanu<QQ> record = small.record();
  tightenBounds(record);
  const oracle::PlainRecord bounds = plain(record);
  SmallProblem result = small;
  result.problem.lower = bounds.lower;
  result.problem.upper = bounds.upper;
  result.problem.inequations = bounds.inequations;
  return result;
}

bool hasBoundsOf(const Problem& one, const Problem& other) {
  return one.lower == other.lower && one.upper == other.upper;
}

TEST(Tightening, KeepsTheSolutions) {
  int narrowed = 0;
  checkOverProblems([&narrowed](const SmallProblem& small) {
    const Problem& before = small.problem;
    const Problem after = tightened(small).problem;
    if (hasBoundsOf(before, after) && before.inequations == after.inequations) return;
    ++narrowed;
    for (const Point& x : test::pointsAround(before))
      if (oracle::solves(before, x) != oracle::solves(after, x))
        RC_FAIL("another verdict on " + oracle::pointText(x) + oracle::problemText(after));
  });
  EXPECT_GE(narrowed, problemCount / 8);
}

/// From the least value to the greatest one.
mpq_class width(const Range& range) {
  return *range.greatest - *range.least;
}

bool isClosed(const Range& range) {
  return !range.constant && !range.empty && range.least && range.greatest;
}

/// On the steps of `old`, and at most half of it.
bool isHalfOf(const Range& old, const Bound& lower, const Bound& upper) {
  if (lower.infinite != 0 || upper.infinite != 0) return false;
  const mpq_class below = (lower.value - *old.least) / old.step;
  const mpq_class above = (*old.greatest - upper.value) / old.step;
  return below.get_den() == 1 && above.get_den() == 1 && below >= 0 && above >= 0 &&
         lower.value <= upper.value && 2 * (upper.value - lower.value) <= width(old);
}

TEST(Tightening, TakesBoundsOnStepsThatLeaveAtMostHalfOfARange) {
  checkOverProblems([](const SmallProblem& small) {
    const Problem& before = small.problem;
    const Problem after = tightened(small).problem;
    for (std::size_t j = 0; j < before.lower.size(); ++j) {
      if (before.lower[j] == after.lower[j] && before.upper[j] == after.upper[j]) continue;
      const Range old = oracle::rangeOf(before, j);
      RC_ASSERT(isClosed(old));
      RC_ASSERT(isHalfOf(old, after.lower[j], after.upper[j]));
    }
  });
}

bool isClosed(const Problem& problem) {
  const auto isFinite = [](const Bound& bound) { return bound.infinite == 0; };
  return std::all_of(problem.lower.begin(), problem.lower.end(), isFinite) &&
         std::all_of(problem.upper.begin(), problem.upper.end(), isFinite);
}

// Within a few steps for each variable the rounds come to an end of themselves.
TEST(Tightening, LeavesNothingToASecondOneInAClosedBox) {
  int narrowed = 0;
  checkOverProblems([&narrowed](const SmallProblem& small) {
    if (!isClosed(small.problem)) return;
    const SmallProblem once = tightened(small);
    if (!hasBoundsOf(once.problem, small.problem)) ++narrowed;
    RC_ASSERT(hasBoundsOf(tightened(once).problem, once.problem));
  });
  EXPECT_GE(narrowed, problemCount / 16);
}

}  // namespace
}  // namespace starsift
