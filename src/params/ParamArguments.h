// Parameters from the arguments of a command.
#pragma once

#include <string>
#include <vector>

#include "params/Params.h"

namespace starsift {

/// Sets the parameters that the arguments name, one item "--name=value" in each, in their
/// order. Calls no callback.
///
/// Stricter than the parameter text, where a value is what a stream takes of it: here an
/// integer that is none would silently be 0. Fatal, "Malformed parameter: " and the
/// argument without its dashes: no "=", an unknown name, a value that is not one of the
/// parameter's type, or anything behind the item. A number that starts like one is left to
/// QQ::parse and its own reports.
void readArguments(Params& params, const std::vector<std::string>& arguments);

}  // namespace starsift
