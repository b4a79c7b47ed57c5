// A problem as a host builds it: sparse rows in the order in which they came, with names.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "numbers/QQ.h"
#include "problem/Vanu.h"

namespace starsift {

/// Coefficients other than 0, by ascending variable, each variable once.
struct SparseRow {
  std::vector<std::size_t> variables;
  std::vector<QQ> coefficients;
};

struct VariableRecord {
  QQ lower;
  QQ upper;
  QQ decimals;
  /// Empty: called by its index.
  std::string name;
};

struct RowRecord {
  SparseRow terms;
  /// Equal for equations and congruences.
  QQ lower;
  QQ upper;
  /// 0 for a row that isn't a congruence.
  QQ modulus;
  bool isRange = false;
  /// Among the equations and congruences, or among the ranges, from 1 on.
  std::size_t ordinal = 0;
  /// Empty: called by its kind and ordinal.
  std::string name;
};

struct TargetRecord {
  SparseRow terms;
  QQ goal;
  QQ threshold;
};

struct ProblemRecord {
  std::vector<VariableRecord> variables;
  std::vector<RowRecord> rows;
  std::vector<TargetRecord> targets;
  /// Of the rows that are ranges.
  std::size_t rangeCount = 0;
};

/// "x1" or the given name. variable < variables.size().
std::string variableName(const ProblemRecord& problem, std::size_t variable);
/// "g1", "u1" or the given name.
std::string nameOf(const RowRecord& row);

/// The ordinal of the next row of a kind.
std::size_t nextOrdinal(const ProblemRecord& problem, bool isRange);
/// Appends the row; sets its ordinal.
void appendRow(ProblemRecord& problem, RowRecord row);

/// Equations and congruences first, then ranges, as the rows of a Vanu stand.
std::vector<std::size_t> rowsByKind(const ProblemRecord& problem);

/// The text of a .opt file. Fatal without variables, or without rows and targets: the text tells
/// the number of variables by its rows only.
std::string optText(const ProblemRecord& problem);

/// The problem as a reader of that text gives it.
Vanu<QQ> vanuOf(const ProblemRecord& problem);
/// The same for any text of a .opt file.
Vanu<QQ> parseProblem(const std::string& text);

/// Without names; rows in the order of rowsByKind().
ProblemRecord recordOf(const Vanu<QQ>& problem);

}  // namespace starsift
