// A part of an enumeration tree that is walked by itself.
#pragma once

#include <cstddef>
#include <cstdint>
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
  /// Index in a list of subtrees: of the one that this is, or was split off from.
  std::size_t piece = 0;

  bool isWhole() const { return path.empty() && hasAllChoices(); }
  bool hasAllChoices() const { return least.isInf() && most.isInf(); }
};

/// A subtree of a list that was walked to its end.
struct FinishedPiece {
  std::size_t piece = 0;
  std::uint64_t nodes = 0;
  std::uint64_t points = 0;
};

}  // namespace starsift
