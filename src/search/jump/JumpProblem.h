// An integer problem in floating point, for a search that proves nothing.
#pragma once

#include <cstddef>
#include <limits>
#include <optional>
#include <vector>

#include "search/decide/IntegerProblem.h"
#include "search/jump/SparseVectors.h"

namespace starsift {

/// The numbers from `lower` to `upper`.
struct NumberRange {
  double lower = -std::numeric_limits<double>::infinity();
  double upper = std::numeric_limits<double>::infinity();

  /// How far a number is outside.
  double distance(double value) const {
    return value < lower ? lower - value : value > upper ? value - upper : 0;
  }
};

/// Integers y in a box for which the values of all rows lie in their ranges. All numbers are
/// integers below 2^52 in magnitude, or infinite ends.
struct JumpProblem {
  SparseVectors rows;
  /// First those of the variables of the integer problem, then those of quotients by moduli and of
  /// distances from goals.
  SparseVectors columns;
  std::vector<NumberRange> rowRanges;
  std::vector<NumberRange> box;
  /// The row of the objective, whose upper end is the greatest value wanted.
  std::optional<std::size_t> objectiveRow;
  /// The objective is the value of its row plus this.
  double objectiveConstant = 0;
};

/// Empty if a number is too long. A point of the result with a value f of the objective's row is a
/// point of the problem with an objective of at most f + objectiveConstant, and one with equality
/// is there for each point of the problem.
std::optional<JumpProblem> jumpProblem(const IntegerProblem& problem);

}  // namespace starsift
