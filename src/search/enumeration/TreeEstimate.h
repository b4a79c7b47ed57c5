// The expected size of an enumeration tree.
#pragma once

#include <cstdint>
#include <functional>

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

/// Random probes of a tree.
struct ProbeSettings {
  std::uint32_t count = 0;
  /// The same seed gives the same probes.
  std::uint64_t seed = 1;
  /// Called before every probe; false ends them. Empty: never.
  std::function<bool()> mayGoOn;
};

/// TreeEstimate::gaussianNodes of a coset with its data; the box isn't empty.
double gaussianNodes(const BoxCoset& coset, const CosetDirections& data);

}  // namespace starsift
