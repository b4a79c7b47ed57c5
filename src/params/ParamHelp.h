// What somebody who sets parameters is told about them.
#pragma once

#include <iosfwd>

#include "params/Params.h"

namespace starsift {

/// Writes all rows of the parameter table: name with default and type on a line, the help
/// text below it, in lines of at most 80 characters.
void writeParamHelp(std::ostream& stream);

/// One line on standard error with the parameters of the set that have no effect and are not
/// at their defaults, in the order of registration. Writes nothing if there are none.
void reportWithoutEffect(const Params& params);

}  // namespace starsift
