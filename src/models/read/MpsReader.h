// Reading MPS files, free or fixed: sections NAME, OBJSENSE, OBJNAME, ROWS, COLUMNS, RHS, RANGES,
// BOUNDS and ENDATA, with integer markers. docs/models.md has the conventions.
#pragma once

#include <string_view>

#include "models/read/ReadOptions.h"
#include "models/record/Model.h"

namespace starsift {

/// Reads a model in the free form, or if that fails in the fixed form. ModelError if both fail:
/// that of the free form. One pass each; the model doesn't refer to `text` afterwards.
Model readMps(std::string_view text, const ReadOptions& options);

}  // namespace starsift
