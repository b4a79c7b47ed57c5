// The text of LP files (the format that CPLEX introduced).
#pragma once

#include <string>

#include "models/record/Model.h"
#include "models/write/MpsWriter.h"

namespace starsift {

std::string lpText(const Model& model, const WritableNames& names);

}  // namespace starsift
