// What proofs about a problem leave open.
#pragma once

#include "numbers/QQ.h"
#include "problem/Vanu.h"

namespace starsift {

struct ProofScope {
  /// All points that satisfy the equations within the tolerance satisfy them exactly (see
  /// Exactness.h).
  bool equationsAreExact = false;
  /// There are variables with decimals, and so values between their steps, which the check of stars
  /// lets pass and a search doesn't look at.
  bool hasSteps = false;
};

ProofScope proofScope(const Vanu<QQ>& problem);

}  // namespace starsift
