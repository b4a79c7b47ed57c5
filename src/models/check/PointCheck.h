// The exact check of a point against a problem: which rows, bounds and steps it breaks, and by how
// much.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "models/check/ViolationKind.h"
#include "models/record/Problem.h"

namespace starsift {

struct Violation {
  ViolationKind kind;
  /// Of the row or column.
  std::uint32_t index;
  /// Greater than 0: the distance to the nearest value that is allowed.
  QQ amount;
};

struct PointReport {
  bool isRight() const { return violations.empty(); }

  /// The largest amount first.
  std::vector<Violation> violations;
  /// Equations that hold within the tolerance of starsift only, and the largest distance among
  /// them.
  std::size_t nearlyMet = 0;
  QQ largestNearMiss;
  /// One per row.
  std::vector<QQ> activities;
  /// One per target, without the constant of the objective.
  std::vector<QQ> targetValues;
};

/// A point satisfies a problem as in starsift: bounds and ranges exactly, equations and congruences
/// within 1e-9. The steps of the columns, which starsift doesn't look at, are checked besides.
class PointCheck {
 public:
  /// `problem` must outlive the check.
  explicit PointCheck(const Problem& problem) : problem_(problem) {}

  /// `x` has a finite component per column.
  PointReport check(const std::vector<QQ>& x) const;

 private:
  void computeActivities(const std::vector<QQ>& x, PointReport& report) const;
  void checkRow(std::uint32_t row, PointReport& report) const;
  void checkEquation(std::uint32_t row, const QQ& distance, const QQ& test,
                     PointReport& report) const;
  void checkColumn(std::uint32_t column, const QQ& value, PointReport& report) const;
  QQ distanceToStep(std::uint32_t column, const QQ& value) const;

  const Problem& problem_;
};

/// "row", "lower bound of", "upper bound of" or "step of", and the name.
std::string violationName(const Model& model, const Violation& violation);

}  // namespace starsift
