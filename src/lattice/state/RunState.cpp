#include "lattice/state/RunState.h"

#include <algorithm>

namespace starsift {

void RunState::clearCounts() {
  using enum MainMutexVariable;
  for (const MainMutexVariable counter : {counter6, counter7, counter5})
    runVariables[counter].set("0");
  lastPass = PassCounts();
  deepInsertions = 0;
}

void RunState::resize(Index n) {
  swapBudgetFloor = std::max(n, minSwapBudget);
  swapBudget = swapBudgetFloor;
}

void RunState::copyFrom(const RunState& other) {
  ReductionObserver* const watching = observer;
  const bool wasRestoring = restoring;
  *this = other;
  observer = watching;
  restoring = wasRestoring;
}

}  // namespace starsift
