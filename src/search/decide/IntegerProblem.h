// A problem as read, in integers: its variables counted in their steps, its rows scaled.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "numbers/QQ.h"
#include "numbers/ZZ.h"
#include "problem/Vanu.h"

namespace starsift {

/// The integers from `lower` to `upper`; an end that is missing is infinite.
struct IntegerRange {
  std::optional<ZZ> lower;
  std::optional<ZZ> upper;

  bool isFinite() const { return lower && upper; }
  bool isEmpty() const { return isFinite() && *lower > *upper; }
  bool contains(const ZZ& value) const {
    return (!lower || *lower <= value) && (!upper || value <= *upper);
  }
};

/// coefficients * y + constant.
struct IntegerForm {
  std::vector<ZZ> coefficients;
  ZZ constant;

  /// `y` has an entry per coefficient.
  ZZ at(const std::vector<ZZ>& y) const;
  /// The values of the linear part at each direction, which has an entry per coefficient.
  std::vector<ZZ> along(const std::vector<std::vector<ZZ>>& directions) const;
  bool isConstant() const;
};

/// A form that is 0, or a multiple of `modulus` if that isn't 0; the modulus isn't negative.
struct IntegerEquation {
  IntegerForm form;
  ZZ modulus;
};

/// A form without constant whose value lies in a range.
struct RangedForm {
  IntegerForm form;
  IntegerRange range;
};

/// The target norm times `scale`, which is positive: linear + sum of |deviations|.
struct IntegerObjective {
  /// Minimised targets minus maximised ones.
  IntegerForm linear;
  /// A value minus its goal, for each finite goal.
  std::vector<IntegerForm> deviations;
  ZZ scale = ZZ::one();

  ZZ at(const std::vector<ZZ>& y) const;
  /// The greatest objective below a target norm.
  ZZ mostBelow(const QQ& norm) const;
  /// The least objective of at least a target norm.
  ZZ leastFrom(const QQ& norm) const { return ceil(norm * QQ(scale)).numerator(); }
  /// The target norm of an objective.
  QQ normOf(const ZZ& objective) const { return QQ(objective, scale); }
};

/// A point y satisfies `box`, `equations` and `ranges` if and only if pointAsRead(y) satisfies
/// bounds, equations and inequations of the problem exactly and lies on its grid. No two ranges
/// have parallel forms.
struct IntegerProblem {
  /// One range per variable.
  std::vector<IntegerRange> box;
  std::vector<IntegerEquation> equations;
  std::vector<RangedForm> ranges;
  /// Only if there are targets.
  std::optional<IntegerObjective> objective;

  /// 1-based index of each variable in the problem as read: constants are left out.
  std::vector<Index> original;
  /// 10^dx of each variable.
  std::vector<QQ> stepsPerUnit;
  /// All components as read; 0 for those that aren't constants.
  Vector<QQ> constants;

  std::size_t variableCount() const { return box.size(); }
  Vector<QQ> pointAsRead(const std::vector<ZZ>& y) const;
  /// A difference of two points.
  Vector<QQ> directionAsRead(const std::vector<ZZ>& direction) const;
};

/// Empty if a dx isn't one of 0, 1, ... 1000, or a constant is infinite. With a modulus within the
/// tolerance a row has to lie within it too, as in the check of stars.
std::optional<IntegerProblem> integerProblem(const Vanu<QQ>& problem);

/// True if a point satisfies box, equations and ranges.
bool isSolution(const IntegerProblem& problem, const std::vector<ZZ>& y);

/// True if from every solution a point any number of times the direction ahead is a solution, and
/// each step lowers the objective, which has no deviations.
bool lowersForEver(const IntegerProblem& problem, const std::vector<ZZ>& direction);

}  // namespace starsift
