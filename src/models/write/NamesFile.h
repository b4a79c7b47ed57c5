// The file BASE.names beside BASE.opt: what the problem's text has no place for. Its fields are
// separated by tabs:
//
//   starport  1
//   source    PATH  SHA-256 of its unpacked text
//   opt       SHA-256 of BASE.opt
//   model     NAME
//   objective min|max|none  CONSTANT  NAME
//   constant  1              only if the last variable of the problem stands for the constant
//   variable  continuous|integer|binary  NAME      one per variable, in order
//   row       E|L|G|R  NAME                        one per row, in the order of the model
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "models/record/Model.h"

namespace starsift {

struct NamesFile {
  std::string source;
  std::string sourceDigest;
  std::string optDigest;
  std::string modelName;
  /// Sense, existence, name and constant; without coefficients.
  Objective objective;
  bool hasConstantColumn = false;
  NameTable columnNames;
  std::vector<ColumnKind> kinds;
  NameTable rowNames;
  std::vector<RowSense> senses;
};

/// The names of a model; source and digests are the caller's.
NamesFile namesOf(const Model& model);

std::string namesText(const NamesFile& names);

/// ModelError if the text isn't one that namesText() gives.
NamesFile readNames(std::string_view text);

}  // namespace starsift
