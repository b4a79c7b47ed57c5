// The solutions of a problem as the points of a coset in a box.
#pragma once

#include <cstddef>
#include <optional>
#include <variant>
#include <vector>

#include "search/decide/IntegerProblem.h"
#include "search/decide/SolutionCoset.h"
#include "search/enumeration/BoxCoset.h"

namespace starsift {

/// A coordinate that bounds the objective: for any y with coordinate f, the objective is at least
/// factor * f + constant, and, if there is a mirrored constant, at least mirrored - factor * f.
struct ObjectiveCoordinate {
  std::size_t coordinate = 0;
  ZZ factor;
  ZZ constant;
  std::optional<ZZ> mirrored;
};

/// The values of a coordinate that are possible if the objective is at most `most`.
IntegerRange rangeBelow(const ObjectiveCoordinate& bound, const ZZ& most);

/// The coordinates of the coset are the variables of an IntegerProblem that its equations don't
/// fix, then the values of its inequation rows that aren't fixed and can leave their range, then the
/// coordinates of the objective. All solutions of the problem, and nothing else, are its points.
struct ProblemCoset {
  BoxCoset coset;
  /// All variables; those that are coordinates have any value.
  std::vector<ZZ> variables;
  /// The variable of each of the first coordinates.
  std::vector<std::size_t> coordinateVariables;
  std::vector<ObjectiveCoordinate> objective;
  /// The objective is at least this, if there is one.
  std::optional<ZZ> leastObjective;

  /// The variables at a point of the coset.
  std::vector<ZZ> variablesAt(const std::vector<ZZ>& point) const;
};

/// There is no solution.
struct NoSolution {};

/// Nothing was found that bounds a coordinate.
struct NoFiniteBox {
  /// 0-based index of a variable without bound on one side at least.
  std::size_t variable = 0;
};

/// The reducer ended the computation.
struct CosetStopped {};

using CosetResult = std::variant<ProblemCoset, NoSolution, NoFiniteBox, CosetStopped>;

/// `withObjective` adds coordinates for the objective, if there is one. The basis isn't reduced at
/// the end.
CosetResult problemCoset(const IntegerProblem& problem, bool withObjective,
                         const CosetReducer& reduce);

}  // namespace starsift
