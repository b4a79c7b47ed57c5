// How much of an enumeration tree is done, estimated from the path to the current node.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

namespace starsift {

/// The choices of one coefficient at a node of the path. Coefficients are relative to the current
/// choice, which is 0.
struct LevelChoices {
  /// Levels below this one.
  std::size_t levelsBelow;
  /// Squared length of b* of this level over what the node has left of its squared radius.
  double curvature;
  /// The current choice relative to the centre.
  double position;
  /// Least and greatest coefficient.
  double least;
  double most;
  /// Coefficients strictly between these are done, except for the current one.
  double doneAbove;
  double doneBelow;
};

/// Estimated size of the subtree of the choice `coefficient`, relative to its siblings: subtrees
/// grow about like balls with the radius that is left to them. In [0, 1]; 1 at the centre.
double subtreeWeight(const LevelChoices& choices, double coefficient);

/// Estimated share of a tree that is done, in [0, 1]. `path` has the levels from the root down to
/// the current node.
double shareDone(const std::vector<LevelChoices>& path);

/// Choices that a walk has still before it at one node of its path.
struct OpenChoices {
  /// Index in the path.
  std::size_t depth;
  /// The choices from `first` up, or from `first` down; relative to the current choice.
  bool isUp;
  double first;
  /// Estimated share of the tree.
  double share;
};

/// The open choices that hold about the largest share of a tree: those of the larger side of a
/// node or, if the other side is done, its outer half. None if no choice of the path is open.
std::optional<OpenChoices> largestOpenChoices(const std::vector<LevelChoices>& path);

}  // namespace starsift
