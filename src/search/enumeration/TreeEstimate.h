// The expected size of an enumeration tree.
#pragma once

#include <cstdint>

#include "search/enumeration/BoxCoset.h"

namespace starsift {

struct TreeEstimate {
  /// Expected nodes by the Gaussian heuristic, the sum over the levels; only the cut by length
  /// is taken into account, so that trees are smaller as a rule.
  double gaussianNodes;
  /// Expected nodes by random probes, 0 without a probe; an unbiased estimate with a large
  /// variance.
  double sampledNodes;
  /// Greatest contribution of one probe divided by the sum of all: close to 1 if the estimate
  /// rests on one probe.
  double largestShare;
  /// Nodes a second of the probes, 0 without a probe.
  double nodesPerSecond;
};

/// Estimates the nodes of the complete tree of a reduced coset; O(probes d n w), w the number of
/// children of a node. The same seed gives the same estimate, except for the speed.
///
/// D. E. Knuth, Estimating the efficiency of backtrack programs, Math. Comp. 29 (1975).
TreeEstimate estimateTree(const BoxCoset& coset, std::uint32_t probes, std::uint64_t seed);

}  // namespace starsift
