// A problem record as plain numbers of GMP's: what oracles judge and what tests compare
// and damage, without any arithmetic of the system.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "numbers/VectorQQ.h"
#include "problem/Vanu.h"
#include "support/oracles/StarOracle.h"

namespace starsift::oracle {

/// Every field of a record but its paths. Indices count from 0.
struct PlainRecord {
  std::vector<Target> targets;
  std::vector<Bound> thresholds;
  bool hasTargetRange = false;
  mpq_class least;
  mpq_class greatest;
  Point aggregate;
  /// In normal form the rows have a column per modulus behind those of the variables.
  std::vector<Equation> equations;
  std::vector<Inequation> inequations;
  Point decimals;
  std::vector<Bound> lower;
  std::vector<Bound> upper;
  std::vector<FreedomDegree> kinds;
  Point shift;
  Point units;
  /// Index in the problem as read, value.
  std::vector<std::pair<std::size_t, mpq_class>> fixed;
  std::vector<std::size_t> swapped;
  std::size_t slacks = 0;
  std::size_t deviations = 0;
  bool fixedTargets = false;
  bool lifted = false;
  /// Columns that the matrices say they have.
  Index targetColumns = 0;
  Index equationColumns = 0;
  Index inequationColumns = 0;

  std::size_t variables() const { return upper.size(); }
  std::size_t originals() const { return variables() - slacks - deviations; }
  std::size_t liftedRows() const { return slacks + deviations / 2; }

  bool operator==(const PlainRecord&) const = default;
};

PlainRecord plainRecord(const Vanu<QQ>& problem);

/// For a reader: the rows, the variables and what became of them.
std::string recordText(const PlainRecord& record);

}  // namespace starsift::oracle
