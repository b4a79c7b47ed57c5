// Inequations with one sum of variables, bounded in several rows.
#pragma once

#include <vector>

#include "search/decide/IntegerProblem.h"

namespace starsift {

/// Rows with equal or opposite coefficients become one, at the place of the first of them, whose
/// range is what they have in common. A range given by two rows is as thin as they say then: each
/// row alone would get its other side from the bounds of the variables, which may be far away, and
/// a tree has no use for a coordinate without thin range. O(coefficients), if they are in lowest
/// terms.
void mergeParallelRows(std::vector<RangedForm>& rows);

}  // namespace starsift
