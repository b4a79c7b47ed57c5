// The problem of a .opt file as a model: by its names file, or with names made up.
#pragma once

#include <string>

#include "models/record/Problem.h"
#include "models/write/NamesFile.h"
#include "problem/Vanu.h"

namespace starsift {

/// Without names: variables x1, x2, ..., equations g1, ..., inequations u1, ...; a variable without
/// decimal places is integer.
Problem problemOf(const Vanu<QQ>& problem);

/// The model that was written with these names: it comes back as it was read. ModelError if the
/// numbers of variables and rows differ.
Problem problemOf(const Vanu<QQ>& problem, const NamesFile& names);

}  // namespace starsift
