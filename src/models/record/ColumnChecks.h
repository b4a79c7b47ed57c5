// Checks of the bounds of columns.
#pragma once

#include <cstddef>
#include <cstdint>

#include "models/record/Model.h"

namespace starsift {

/// ModelError at `line` if no finite number lies within the bounds of the column.
void requireSomeValue(const Model& model, std::uint32_t column, std::size_t line);

}  // namespace starsift
