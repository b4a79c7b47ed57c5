// A model with what only the problems of this system have: moduli, several goals, thresholds and
// decimal places.
#pragma once

#include <cstdint>
#include <vector>

#include "models/record/Model.h"

namespace starsift {

/// A linear function of the columns and what is wanted of it.
struct Target {
  /// +inf to maximise, -inf to minimise, finite: to come close to.
  QQ goal;
  QQ threshold;
  /// Ascending.
  std::vector<std::uint32_t> columns;
  std::vector<QQ> coefficients;
};

struct Problem {
  /// Its objective holds name, sense and constant; the coefficients are those of the targets.
  Model model;
  /// One per row, 0 for a row without one; empty if no row has one. A row with a modulus is an
  /// equation.
  std::vector<QQ> moduli;
  std::vector<Target> targets;
  /// Decimal places, one per column; empty if integer columns have none and others any number.
  std::vector<QQ> decimals;
};

/// The problem of a model: the objective, if it has any coefficients, is the only target.
Problem problemOf(Model model);

}  // namespace starsift
