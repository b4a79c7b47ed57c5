#include "search/decide/ProofScope.h"

#include <algorithm>

#include "problem/Exactness.h"

namespace starsift {

ProofScope proofScope(const Vanu<QQ>& problem) {
  const bool hasSteps = std::any_of(problem.dx.begin(), problem.dx.end(),
                                    [](const QQ& decimals) { return decimals > QQ::zero(); });
  return {equationsHoldExactly(problem), hasSteps};
}

}  // namespace starsift
