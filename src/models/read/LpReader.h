// Reading LP files (the format that CPLEX introduced). docs/models.md has the conventions.
#pragma once

#include <string_view>

#include "models/read/ReadOptions.h"
#include "models/record/Model.h"

namespace starsift {

/// ModelError if the text isn't a linear model in that form. The model doesn't refer to `text`
/// afterwards.
Model readLp(std::string_view text, const ReadOptions& options);

}  // namespace starsift
