// Reading OPB files: linear pseudo-Boolean problems of the solver competitions.
#pragma once

#include <string_view>

#include "models/record/Model.h"

namespace starsift {

/// All columns are binary; a literal ~x is 1 - x. ModelError if the text isn't a linear problem
/// in that form. The model doesn't refer to `text` afterwards.
Model readOpb(std::string_view text);

}  // namespace starsift
