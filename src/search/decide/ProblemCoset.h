// The solutions of a problem as the points of a coset in a box.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <variant>
#include <vector>

#include "search/decide/IntegerProblem.h"
#include "search/decide/ObjectiveBounds.h"
#include "search/decide/SolutionCoset.h"
#include "search/enumeration/BoxCoset.h"

namespace starsift {

struct ObjectiveCoordinate {
  ObjectiveBound bound;
  /// Index of the coordinate with the values of its form.
  std::size_t coordinate = 0;
};

/// The coordinates of the coset are the variables of an IntegerProblem that its equations don't
/// fix, then the values of its inequation rows that aren't fixed and can leave their range, then
/// those of the bounds of the objective. All solutions of the problem, and nothing else, are its
/// points.
struct ProblemCoset {
  BoxCoset coset;
  /// All variables; those that are coordinates have any value.
  std::vector<ZZ> variables;
  /// The variable of each of the first coordinates.
  std::vector<std::size_t> coordinateVariables;
  std::vector<ObjectiveCoordinate> objective;
  /// The objective is at least this, if it was asked for.
  std::optional<ZZ> leastObjective;

  /// The variables at a point of the coset.
  std::vector<ZZ> variablesAt(const std::vector<ZZ>& point) const;
};

/// There is no solution, or none with the objective wanted.
struct NoSolution {};

/// A variable has no bound on one side at least, and none follows from the rows.
struct NoFiniteBox {
  /// 0-based index.
  std::size_t variable = 0;
  /// From every solution, a point any number of these steps ahead, one entry per variable, is a
  /// solution too, and each step lowers the objective; empty if no such direction was found.
  std::vector<ZZ> direction{};
};

/// A computation was ended.
struct CosetStopped {};

using CosetResult = std::variant<ProblemCoset, NoSolution, NoFiniteBox, CosetStopped>;

struct CosetSettings {
  /// Whether there are coordinates for the objective.
  bool withObjective = false;
  /// Greatest objective wanted; only with coordinates for it.
  std::optional<ZZ> most;
  CosetReducer reduce;
  /// Called for each equation and coordinate, and before the steps of linear programs; false ends
  /// the computation.
  std::function<bool()> mayGoOn;
  /// No objective is less: proven before.
  std::optional<ZZ> least = std::nullopt;
};

/// The basis isn't reduced at the end.
CosetResult problemCoset(const IntegerProblem& problem, const CosetSettings& settings);

/// Raises the lower ends of the objective's coordinates to those of the linear relaxation, and
/// `leastObjective` with them. False if mayGoOn() ended it, or there is no point at all.
bool raiseObjective(ProblemCoset& coset, const std::function<bool()>& mayGoOn);

}  // namespace starsift
