// How often the observer of a run is notified while a lattice is made.
#pragma once

#include "lattice/state/RunState.h"

namespace starsift {

/// Notifies the observer after each million or so of entries, which take some milliseconds.
class PreparationPace {
 public:
  /// `run` must live as long as this object.
  explicit PreparationPace(const RunState& run) : run_(run) {}

  /// Called after work on so many entries. Throws what the observer throws.
  void passed(Index entries) {
    left_ -= entries;
    if (left_ > 0) return;
    left_ = entriesPerNotice;
    run_.notifyPreparation();
  }

 private:
  static constexpr Index entriesPerNotice = 1'000'000;

  const RunState& run_;
  Index left_ = entriesPerNotice;
};

}  // namespace starsift
