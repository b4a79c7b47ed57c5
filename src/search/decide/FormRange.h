// Ranges of integers and the values of forms over a box.
#pragma once

#include <vector>

#include "search/decide/IntegerProblem.h"

namespace starsift {

/// The values of the form without its constant over a box; exact ends of the sum, which no point
/// need take together with the rows of a problem.
IntegerRange valuesOver(const std::vector<IntegerRange>& box, const IntegerForm& form);

/// The common part of two ranges.
IntegerRange common(IntegerRange a, const IntegerRange& b);

/// Every integer of `inner` lies in `outer`.
bool isWithin(const IntegerRange& inner, const IntegerRange& outer);

}  // namespace starsift
