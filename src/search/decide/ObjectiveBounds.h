// Linear lower bounds of an objective with distances in it.
#pragma once

#include <optional>
#include <vector>

#include "search/decide/IntegerProblem.h"

namespace starsift {

/// For any y with f = form * y, the objective is at least factor * f + constant, and, if there is
/// a mirrored constant, at least mirrored - factor * f. The form has no constant and no common
/// factor; factor is positive.
struct ObjectiveBound {
  IntegerForm form;
  ZZ factor;
  ZZ constant;
  std::optional<ZZ> mirrored;

  /// The values of f that are possible if the objective is at most `most`.
  IntegerRange rangeBelow(const ZZ& most) const;
  /// The values of f that are possible if the objective is at least `least`; only if it has no
  /// deviations, so that it is the bound itself.
  IntegerRange rangeFrom(const ZZ& least) const;
  /// The least objective that is possible while f lies in a range; empty if nothing bounds it.
  std::optional<ZZ> leastOver(const IntegerRange& range) const;
};

/// Bounds that together are exact for up to three deviations: one for every choice of their
/// signs, where a choice and its opposite share one if there is no linear part. More deviations
/// are taken in groups of three.
std::vector<ObjectiveBound> objectiveBounds(const IntegerObjective& objective);

}  // namespace starsift
