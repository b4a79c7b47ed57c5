// The job of writing a problem as a model for other programs.
#pragma once

#include <string>

#include "models/jobs/Import.h"
#include "models/jobs/Reports.h"

namespace starsift {

/// Reads a .opt file, with the names beside it, or a model, and writes it as MPS or LP, which the
/// ending of `output` says. The remarks of the report tell what was transformed. ModelError if the
/// file is there already, unless --force is given.
JobReport exportModel(const std::string& input, const std::string& output,
                      const ImportOptions& options);

/// ModelError if there is a file at `path`, unless --force is given.
void requireReplaceable(const std::string& path, const ImportOptions& options);

/// Replaces the file at `path` by `text`. ModelError if it can't be written.
void writeTextFile(const std::string& path, const std::string& text);

}  // namespace starsift
