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
/// integer that is none would silently be 0, and any two characters pass for the dashes.
/// Fatal, "Malformed parameter: " and the argument without its dashes: no "=", an unknown
/// name, a value that is not one of the parameter's type, or anything behind the item; and
/// the whole argument when it doesn't start with two dashes or has nothing else. A number
/// is what QQ::parse takes, whose own reports stay as they are.
void readArguments(Params& params, const std::vector<std::string>& arguments);

}  // namespace starsift
