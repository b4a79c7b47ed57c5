// The files BASE.opt, BASE.names and BASE.sol: whether they belong to a model, writing them
// together, and reading them back.
#pragma once

#include <string>
#include <vector>

#include "models/record/Problem.h"
#include "models/write/NamesFile.h"
#include "models/write/OptWriter.h"

namespace starsift {

struct BasePaths {
  explicit BasePaths(const std::string& base)
      : opt(base + ".opt"), names(base + ".names"), sol(base + ".sol") {}

  std::string opt;
  std::string names;
  std::string sol;
};

/// ModelError if the files at `paths` exist and weren't written from the model with this digest, or
/// were changed since.
void requireOwnFiles(const BasePaths& paths, const std::string& digest);

/// A record of BASE.sol: the point, its target values and norms, and where it comes from.
std::string recordText(const Problem& problem, const std::vector<QQ>& x,
                       const std::vector<QQ>& targetValues, const std::string& origin);

/// Writes BASE.opt and BASE.names, whose opt digest is set, and adds the records to BASE.sol that
/// it doesn't have. If one of them can't be written, all are as they were before; see
/// ResultFile::undo().
void writeBaseFiles(const BasePaths& paths, const Model& model, const OptRows& rows,
                    const OptOptions& options, NamesFile names,
                    const std::vector<std::string>& records);

/// Adds the records to the file at `path` that it doesn't have.
void addRecords(const std::string& path, const std::vector<std::string>& records);

/// The problem of a .opt file, with the names beside it if there are any. ModelError if the names
/// belong to another problem.
Problem readBaseProblem(const std::string& optPath);

/// True if there are names beside a .opt file.
bool hasBaseNames(const std::string& optPath);

/// True if the last variable of a .opt file stands for the constant of the objective, by its names.
bool hasConstantColumn(const std::string& optPath);

/// The names beside a .opt file. ModelError if there are none, or others.
NamesFile readBaseNames(const std::string& optPath);

}  // namespace starsift
