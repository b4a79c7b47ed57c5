// The text of LP files (the format that CPLEX introduced).
#pragma once

#include <string>

#include "models/record/Model.h"
#include "models/write/MpsWriter.h"

namespace starsift {

/// A row with two bounds becomes two rows, the second named in a comment between them: "\ range:
/// few few_lower". readLp() joins such rows.
std::string lpText(const Model& model, const WritableNames& names);

}  // namespace starsift
