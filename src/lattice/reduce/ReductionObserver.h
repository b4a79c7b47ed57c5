// Who watches a reduction.
#pragma once

#include "core/Index.h"

namespace starsift {

/// What a pass of the reduction has done so far.
struct PassCounts {
  /// Exchange tests made, deep ones included.
  Index tests = 0;
  /// Exchange tests skipped because the budget was spent.
  Index skipped = 0;
  /// Tests that ended in a swap; a deep insertion is one.
  Index swaps = 0;
};

/// Is notified of the steps of a reduction while it runs.
class ReductionObserver {
 public:
  virtual ~ReductionObserver() = default;

  /// Called before each step of a pass. May end the reduction by an exception: the basis
  /// spans its lattice then.
  virtual void onStep(const PassCounts& counts) = 0;

 protected:
  ReductionObserver() = default;
  ReductionObserver(const ReductionObserver&) = default;
  ReductionObserver& operator=(const ReductionObserver&) = default;
};

}  // namespace starsift
