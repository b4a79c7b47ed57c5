// RapidCheck generator of small problems with everything that a normal form removes, and
// the points around their boxes.
#pragma once

#include <rapidcheck.h>

#include <ostream>
#include <string>
#include <vector>

#include "numbers/VectorQQ.h"
#include "problem/Vanu.h"
#include "support/oracles/StarOracle.h"

namespace starsift::test {

struct SmallProblem {
  oracle::Problem problem;
  /// Also plain equations have a modulus, of 0.
  bool namesModuli = false;

  /// The problem as its reader gives it. Inequations without a bound, which the reader
  /// refuses, are in it too.
  Vanu<QQ> record() const;
};

/// Up to four variables of few values, up to four rows of each kind. Mostly, but not
/// always, with a solution.
rc::Gen<SmallProblem> arbitrarySmallProblem();

/// All points in steps within the bounds and one step beyond, up to some thousands; of
/// a free side only some values. A constant keeps its value. None where a variable has
/// no value at all.
std::vector<oracle::Point> pointsAround(const oracle::Problem& problem);

void showValue(const SmallProblem& problem, std::ostream& stream);

}  // namespace starsift::test
