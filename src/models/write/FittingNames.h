// Names that a format can hold.
#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

#include "models/record/NameTable.h"

namespace starsift {

/// The names, each that `fits` refuses changed: bytes become "_", then "_" is put before and behind
/// it until it fits and is unique. `changed` counts them.
NameTable fittingNames(const NameTable& names, const std::function<bool(std::string_view)>& fits,
                       std::size_t& changed);

/// True for a name of the free MPS form: not empty, no white space, no control characters.
bool isMpsName(std::string_view name);

}  // namespace starsift
