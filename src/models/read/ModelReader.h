// Reading a model of any format.
#pragma once

#include <optional>
#include <string_view>

#include "models/read/ReadOptions.h"
#include "models/record/Model.h"
#include "models/text/ModelText.h"

namespace starsift {

enum class ModelFormat { mps, lp, opb };

/// The format that the ending of a path names, in any case and with or without ".gz"; nothing for
/// another ending.
std::optional<ModelFormat> formatOfPath(std::string_view path);

/// The format called "mps", "lp" or "opb".
std::optional<ModelFormat> formatOfName(std::string_view name);

/// ModelError with the path of the text if it isn't a linear model of that format.
Model readModel(const ModelText& text, ModelFormat format, const ReadOptions& options);

}  // namespace starsift
