// Writing a model as the dense text of a .opt file.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "models/record/Model.h"

namespace starsift {

struct OptOptions {
  /// Decimal places of continuous columns, 0..18.
  int decimals = 6;
  /// Adds a variable that is fixed at 1 and has the constant of the objective as its coefficient.
  bool addConstant = false;
};

/// Which rows become equations and inequations, each list ascending.
struct OptRows {
  std::vector<std::uint32_t> equations;
  std::vector<std::uint32_t> inequations;
};

/// Ranged rows are inequations. ModelError for a row without entries that 0 doesn't fit, and for a
/// model without columns, or with neither rows nor an objective.
OptRows optRows(const Model& model);

/// Bytes that the text will have, to within a few per cent if most entries are 0.
std::uint64_t estimatedOptSize(const Model& model);

/// "3 variables, 1 equation, 2 inequations", as the text has them.
std::string sizeText(const Model& model, const OptRows& rows, const OptOptions& options);

using TextSink = std::function<void(std::string_view)>;

/// Hands the text to `sink` piece by piece.
void writeOpt(const Model& model, const OptRows& rows, const OptOptions& options,
              const TextSink& sink);

}  // namespace starsift
