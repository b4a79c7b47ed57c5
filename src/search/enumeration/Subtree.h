// A part of an enumeration tree that is walked by itself.
#pragma once

#include <vector>

#include "numbers/QQ.h"

namespace starsift {

/// The nodes below the choices of `path` whose next coefficient lies in [least, most]; the whole
/// tree by default.
struct Subtree {
  /// Coefficients of the last rows, that of the last one first; fewer than rows.
  std::vector<QQ> path;
  /// Integers, or infinite.
  QQ least = -QQ::infinity();
  QQ most = QQ::infinity();
  /// Estimated share of a tree, in [0, 1].
  double share = 1;

  bool isWhole() const { return path.empty() && least.isInf() && most.isInf(); }
};

}  // namespace starsift
