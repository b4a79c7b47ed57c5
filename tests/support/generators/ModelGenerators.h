// Random models of every shape: names of many kinds, numbers of any length, all senses and bounds.
#pragma once

#include <rapidcheck.h>

#include <string>

#include "models/record/Model.h"

namespace starsift::test {

/// What the models are to be written as; each format lacks something. A problem has rows, and rows
/// without entries admit 0.
enum class ModelUse { mps, lp, opt };

rc::Gen<Model> arbitraryModel(ModelUse use);

/// An integer, a decimal, a fraction or a number of thirty digits; seldom 0.
rc::Gen<QQ> arbitraryNumber();

}  // namespace starsift::test
