// Repair of points whose continuous values are broken in their last digits.
#pragma once

#include <vector>

#include "models/jobs/Reports.h"

namespace starsift {

/// Makes the points of the records right that aren't: the integer columns keep their values, and
/// the linear program that remains is solved exactly, for the objective of the problem. Each record
/// that was looked at says how it ended: its point was replaced, or there is no solution with these
/// integers, or why neither was found. ModelError if the solver isn't installed.
void repairRecords(const Problem& problem, std::vector<SolutionReport>& solutions);

}  // namespace starsift
