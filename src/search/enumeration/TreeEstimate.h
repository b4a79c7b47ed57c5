// The expected size of an enumeration tree.
#pragma once

#include "search/enumeration/CosetDirections.h"

namespace starsift {

struct TreeEstimate {
  /// Expected nodes by the Gaussian heuristic, the sum over the levels; only the cut by length
  /// is taken into account, so that trees are smaller as a rule.
  double gaussianNodes = 0;
  /// Expected nodes by random probes, 0 without a probe; an unbiased estimate with a large
  /// variance.
  double sampledNodes = 0;
  /// Greatest contribution of one probe divided by the sum of all: close to 1 if the estimate
  /// rests on one probe.
  double largestShare = 0;
};

/// TreeEstimate::gaussianNodes of a coset with its data; the box isn't empty.
double gaussianNodes(const BoxCoset& coset, const CosetDirections& data);

}  // namespace starsift
