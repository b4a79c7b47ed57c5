// The options of starport that set numbers.
#pragma once

#include <string_view>

#include "models/jobs/Import.h"

namespace starsift {

/// Sets format, infinity, integer-upper, decimals, integrality, snap or max-size. ModelError if
/// `value` is no value for it.
void setNumberOption(ImportOptions& options, std::string_view name, std::string_view value);

}  // namespace starsift
