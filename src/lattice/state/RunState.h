// The state of a search run: observer, counters, budgets and switches.
#pragma once

#include <cstdint>

#include "lattice/reduce/ReductionObserver.h"
#include "params/Guarded.h"

namespace starsift {

struct RunState {
  /// The least value of swapBudget, for n rows.
  static constexpr Index minSwapBudget = 100;

  /// Notified of each step of a reduction; not owned, not copied, may be null.
  ReductionObserver* observer = nullptr;
  /// Texts that the parts of a run share.
  MainMutexVars runVariables;
  /// Chooses the random changes of restarts; never reset.
  std::uint64_t seed = 1;
  /// A search with targets goes on from its first solution: `sol` doesn't end it. Never reset.
  bool seeksBest = false;
  /// Regenerations so far; never reset.
  Index restarts = 0;
  /// Counts of the last pass.
  PassCounts lastPass;
  /// Insertions of deepInsertStep().
  Index deepInsertions = 0;
  /// Lovász tests that a pass may make, and the lower limit of this budget.
  Index swapBudget = 0;
  Index swapBudgetFloor = 0;
  /// Writing of result files is on.
  bool outputSwitch = false;
  /// The end of a search may end the process.
  bool terminationSwitch = false;
  /// The lattice itself has turned the tracking of transformations on.
  bool consistencyForced = false;
  /// Stored vectors are being restored from a backup; not copied.
  bool restoring = false;

  /// Notifies the observer, if there is one, that a lattice is being made.
  void notifyPreparation() const {
    if (observer != nullptr) observer->onPreparation();
  }
  /// Sets counters and counts to 0. Observer, switches, restarts and run state stay.
  void clearCounts();
  /// Sets both budgets for n rows.
  void resize(Index n);
  /// Copies everything except observer and `restoring`.
  void copyFrom(const RunState& other);
};

}  // namespace starsift
