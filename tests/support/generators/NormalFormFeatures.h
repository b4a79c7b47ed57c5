// What a small problem has that a normal form removes, and what became of it: to see
// that a generator makes everything.
#pragma once

#include <set>
#include <string>

#include "support/generators/NormalFormGenerators.h"
#include "support/oracles/PlainRecord.h"

namespace starsift::test {

/// Of the rows and variables of a problem.
std::set<std::string> featuresOf(const SmallProblem& small);

/// Of its normal form.
std::set<std::string> featuresOf(const oracle::Problem& problem, const oracle::PlainRecord& normal);

/// All that there are.
const std::set<std::string>& problemFeatures();
const std::set<std::string>& formFeatures();

}  // namespace starsift::test
