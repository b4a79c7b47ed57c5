// What a run of a search knows of itself: who watches it, what it has done, what it may do.
#pragma once

#include "lattice/reduce/ReductionObserver.h"
#include "params/Guarded.h"

namespace starsift {

struct RunState {
  /// The least value of swapBudget, for n rows.
  static constexpr Index minSwapBudget = 100;

  /// Notified of each step of a reduction; not owned, not copied. Null: nobody.
  ReductionObserver* observer = nullptr;
  /// Texts that the parts of a run share.
  MainMutexVars runVariables;
  /// Regenerations so far; never reset.
  Index restarts = 0;
  /// What the last pass did.
  PassCounts lastPass;
  /// Insertions of deepInsertStep().
  Index deepInsertions = 0;
  /// Exchange tests that a pass may make, and the least that this falls to.
  Index swapBudget = 0;
  Index swapBudgetFloor = 0;
  /// Writing of result files is on.
  bool outputSwitch = false;
  /// The end of a search may end the process.
  bool terminationSwitch = false;
  /// Tracking of transformations was turned on by the lattice itself.
  bool consistencyForced = false;
  /// Stored vectors are coming back from a backup; not copied.
  bool restoring = false;

  /// Counters and counts become 0. Observer, switches, restarts and run state stay.
  void clearCounts();
  /// Both budgets for n rows.
  void resize(Index n);
  /// All but observer and `restoring`.
  void copyFrom(const RunState& other);
};

}  // namespace starsift
