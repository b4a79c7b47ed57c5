// The text of MPS files in the free form.
#pragma once

#include <string>

#include "models/record/Model.h"

namespace starsift {

/// The names under which a model is written, one per column and row, each fit for the format.
struct WritableNames {
  NameTable columns;
  NameTable rows;
  /// No name of a row.
  std::string objective;
};

std::string mpsText(const Model& model, const WritableNames& names);

}  // namespace starsift
