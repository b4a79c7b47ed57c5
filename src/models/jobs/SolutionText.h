// The job of handing stored records to solvers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "models/jobs/Import.h"

namespace starsift {

/// In which form a record is written.
enum class SolutionForm {
  /// "=obj=" and the value of the objective, then names and values; several records one after the
  /// other. Solvers that read it take the missing columns as 0.
  miplib,
  /// A heading, then places from 0, names, values and 0, as CBC writes its solutions and reads a
  /// start (-mipstart). It reads doubles only, so that fractions without a decimal are rounded.
  cbc,
};

/// The form of that name; ModelError if there is none.
SolutionForm solutionFormOf(std::string_view name);

struct HandedRecord {
  /// From 1 on.
  std::size_t number;
  /// By the exact check.
  bool isRight;
  /// With the constant of the model.
  QQ objective;
  /// One value per column of the model.
  std::vector<QQ> x;
};

struct HandedRecords {
  std::string modelPath;
  Model model;
  std::string solPath;
  std::vector<HandedRecord> records;
};

/// The records of `solPath`, or the one of that number, from 1 on; 0: all of them. The model at
/// `modelPath` may also be a .opt file. ModelError if there is no such record, if the names beside
/// the records belong to another model, and for a problem that needs other columns as a model.
HandedRecords recordsOf(const std::string& modelPath, const std::string& solPath,
                        std::size_t record, const ImportOptions& options);

/// One record after the other, all columns in their order, exact decimals or fractions but for CBC,
/// which reads one record only.
std::string solutionText(const HandedRecords& handed, SolutionForm form);

/// One JSON object with a line feed behind it: the records with their values by name.
std::string solutionJson(const HandedRecords& handed);

}  // namespace starsift
