// The options of starport that set numbers.
#pragma once

#include <string_view>

#include "models/jobs/Import.h"

namespace starsift {

/// True for format, infinity, integer-upper, decimals, integrality, snap and max-size.
bool isNumberOption(std::string_view name);

/// Sets the option of that name, for which isNumberOption() holds. ModelError if `value` is no
/// value for it.
void setNumberOption(ImportOptions& options, std::string_view name, std::string_view value);

}  // namespace starsift
