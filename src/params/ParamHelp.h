// The parameters for somebody who has to set them.
#pragma once

#include <iosfwd>

namespace starsift {

/// Writes all rows of the parameter table: name with default and type on a line, the help
/// text below it, in lines of at most 80 characters.
void writeParamHelp(std::ostream& stream);

}  // namespace starsift
