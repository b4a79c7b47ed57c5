// Texts on the progress and the size of a complete search.
#pragma once

#include <cstdint>
#include <string>

namespace starsift {

/// A duration of `seconds` >= 0 in one unit, "about 3 days", rounded; at most one digit behind the
/// point, and "more than 1000 years".
std::string roughDuration(double seconds);

/// The walk of a tree: `share` in [0, 1] is done after `nodes` nodes and `seconds`.
struct TreeProgress {
  double share = 0;
  std::uint64_t nodes = 0;
  double seconds = 0;
};

/// "12.5 % of the tree, 4.2 million nodes a second, 3 minutes left".
std::string treeStatus(const TreeProgress& progress);

}  // namespace starsift
