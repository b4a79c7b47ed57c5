// Sets parameters from the arguments of a command.
#pragma once

#include <string>
#include <vector>

#include "params/Params.h"

namespace starsift {

/// Sets the parameters that the arguments name, in order; each argument is one item
/// "--name=value". Calls no callback.
///
/// Stricter than reading a parameter text, which accepts any two characters as the dashes
/// and reads a value with a stream, so that an integer without digits is silently 0. Fatal,
/// with "Malformed parameter: " and the argument without its dashes: no "=", an unknown
/// name, a value that isn't of the parameter's type, or text after the item. An argument
/// that doesn't start with two dashes, or consists of them, is reported as a whole. A
/// number is what QQ::parse accepts; fatal reports of QQ::parse are unchanged.
void readArguments(Params& params, const std::vector<std::string>& arguments);

}  // namespace starsift
