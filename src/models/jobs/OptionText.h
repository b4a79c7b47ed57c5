// The options of starport that set numbers.
#pragma once

#include <string_view>

#include "models/jobs/Import.h"

namespace starsift {

/// Sets the option of that name, without its dashes: format, infinity, integer-upper, decimals,
/// integrality, snap, max-size. False if there is none of that name. ModelError if `value` is no
/// value for it.
bool setNumberOption(ImportOptions& options, std::string_view name, std::string_view value);

}  // namespace starsift
