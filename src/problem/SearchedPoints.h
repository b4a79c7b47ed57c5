// The points of a problem that searches look at, of those that the check of stars lets pass.
#pragma once

#include <optional>
#include <vector>

#include "numbers/QQ.h"
#include "problem/Vanu.h"

namespace starsift {

/// The points with components in steps of 10^-dx, or constants lx = rx, that satisfy equations and
/// congruences exactly: what a complete search proves is about these.
class SearchedPoints {
 public:
  /// `problem` as read must outlive this and not change.
  explicit SearchedPoints(const Vanu<QQ>& problem);

  /// `x` is one of them; a right star. True for all if a dx isn't one of 0, 1, ... 1000: there is
  /// no complete search then.
  bool contain(const Vector<QQ>& x) const;

 private:
  bool isOnSteps(const Vector<QQ>& x) const;
  bool satisfiesEquation(const Vector<QQ>& x, Index i) const;

  const Vanu<QQ>& problem_;
  std::optional<std::vector<QQ>> stepsPerUnit_;
  /// On the steps a right star satisfies the equations exactly.
  bool equationsAreExact_;
};

}  // namespace starsift
