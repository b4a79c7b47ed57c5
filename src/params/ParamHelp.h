// Texts about parameters for the user who sets them.
#pragma once

#include <iosfwd>

#include "params/Params.h"

namespace starsift {

/// Writes all rows of the parameter table: a line with name, default and type, and below it
/// the help text in lines of at most 80 characters.
void writeParamHelp(std::ostream& stream);

}  // namespace starsift
