// Solutions of small problems: all around the box, and those that a search tells of.
#pragma once

#include <vector>

#include "PreparedProblems.h"
#include "SmallProblems.h"
#include "support/oracles/NormalFormOracle.h"

namespace starsift::test {

/// The solutions among the points of the box and close to it.
inline std::vector<oracle::Point> solutionsAround(const oracle::Problem& problem) {
  std::vector<oracle::Point> solutions;
  for (const oracle::Point& x : pointsAround(problem))
    if (oracle::solves(problem, x) && oracle::judge(problem, x)) solutions.push_back(x);
  return solutions;
}

/// The point of a star that must be a solution with the norms it has; fails the law if it isn't.
inline oracle::Point checkedPoint(const oracle::Problem& problem, const Star<QQ>& star) {
  const oracle::Point x = pointOf(star.x());
  RC_ASSERT(oracle::solves(problem, x));
  const auto verdict = oracle::judge(problem, x);
  RC_ASSERT(verdict.has_value());
  if (!problem.targets.empty()) {
    RC_ASSERT(star.targetNorm == toQQ(verdict->targetNorm));
    RC_ASSERT(star.slackNorm == toQQ(verdict->slackNorm));
  }
  return x;
}

}  // namespace starsift::test
