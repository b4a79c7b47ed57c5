// Writing a model as MPS (free form) or LP text, with exact numbers.
#pragma once

#include <string>

#include "models/read/ModelReader.h"
#include "models/record/Model.h"

namespace starsift {

/// The text of a model, and remarks on what the format can't hold: names that were changed, numbers
/// that need more than a double, fractions without end.
struct WrittenModel {
  std::string text;
  std::vector<ModelRemark> remarks;
};

/// Reading the text gives the same model again, apart from changed names. The format is mps or lp.
WrittenModel writeModel(const Model& model, ModelFormat format);

/// The names of columns or rows as that format has them.
NameTable writtenNames(const NameTable& names, ModelFormat format);

}  // namespace starsift
