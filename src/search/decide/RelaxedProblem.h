// The linear relaxation of a problem: a bound of its objective, and a point.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "search/decide/IntegerProblem.h"

namespace starsift {

struct RelaxedProblem {
  /// Proven: there is no point, also if variables may be any numbers.
  bool isInfeasible = false;
  /// Proven: no solution has a smaller objective. Empty if nothing is known, or without objective.
  std::optional<ZZ> leastObjective;
  /// A solution: the least point of the relaxation, rounded. Empty if that is none, or without
  /// objective.
  std::optional<std::vector<ZZ>> solution;
};

/// Solves the relaxation without congruences in floating point, and computes from its multipliers,
/// in integers, what they prove: A. Neumaier, O. Shcherbina, Safe bounds in linear and
/// mixed-integer linear programming, Math. Program. 99 (2004). Nothing is known of problems too
/// large for a full tableau. mayGoOn() is called before each step; false leaves what is known so
/// far.
RelaxedProblem relaxedProblem(const IntegerProblem& problem, const std::function<bool()>& mayGoOn);

}  // namespace starsift
