// The observer of a reduction.
#pragma once

#include "core/Index.h"

namespace starsift {

/// Counts of a pass of the reduction so far.
struct PassCounts {
  /// Lovász tests made, those for deep insertions included.
  Index tests = 0;
  /// Lovász tests skipped because the budget was spent.
  Index skipped = 0;
  /// Tests that led to a swap; a deep insertion counts as one.
  Index swaps = 0;
};

/// Is notified of the steps of a reduction while it runs, and while its lattice is made.
class ReductionObserver {
 public:
  virtual ~ReductionObserver() = default;

  /// Called before each step of a pass. May end the reduction by an exception: at that point the
  /// basis spans its lattice.
  virtual void onStep(const PassCounts& counts) = 0;

  /// Called while a lattice is made, a few times in a hundred milliseconds if it is large. May end
  /// that by an exception: the lattice has to be made anew then.
  virtual void onPreparation() {}

 protected:
  ReductionObserver() = default;
  ReductionObserver(const ReductionObserver&) = default;
  ReductionObserver& operator=(const ReductionObserver&) = default;
};

}  // namespace starsift
