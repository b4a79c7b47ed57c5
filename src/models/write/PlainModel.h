// A problem in the terms that every solver knows.
#pragma once

#include <vector>

#include "models/record/Problem.h"

namespace starsift {

/// An equivalent model: a modulus becomes an integer column in its row, a variable with decimal
/// places an integer column of 10^-places of it, a finite goal two deviations that are to be small,
/// a threshold a row, several targets one sum. Remarks say which of these was done, and how often.
/// The columns of the problem come first.
Model plainModel(Problem problem);

/// What one unit of each of these columns is worth: 10^-places for a variable with decimal places,
/// else 1.
std::vector<QQ> columnSteps(const Problem& problem);

}  // namespace starsift
