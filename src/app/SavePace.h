// How often a search writes a file.
#pragma once

#include <chrono>

#include "core/Index.h"

namespace starsift {

/// After each write a pause ten times as long as the write took, so that a search that always
/// has something to write spends an eleventh of its time on files.
///
/// A file of many stars is written again after a pause a hundred times as long, or when it has four
/// times as many: so the writes of a search that finds millions before the last one cost 4/3 of
/// the last of them at most.
class SavePace {
 public:
  using Clock = std::chrono::steady_clock;

  /// The pause is over, or nothing has been written yet.
  bool isDue(Clock::time_point now) const { return now >= end_ + pausePerSave * duration_; }
  /// The same for a file of stars, of which so many were written, and so many are new.
  bool isDue(Clock::time_point now, Index written, Index added) const {
    const bool isWorthIt = written < manyStars || added >= (leastGrowth - 1) * written;
    return now >= end_ + (isWorthIt ? pausePerSave : pausePerLargeSave) * duration_;
  }

  /// How long a write of `written` stars that were there at the last one and of `added` ones takes,
  /// by the duration of that one.
  std::chrono::duration<double> expected(Index written, Index added) const {
    const std::chrono::duration<double> last(duration_);
    // Most of the time for a small file isn't that of its stars.
    if (written < manyStars) return last;
    return last * (static_cast<double>(written + added) / static_cast<double>(written));
  }

  /// Reports a write that began at `start` and ended at `end`.
  void saved(Clock::time_point start, Clock::time_point end) {
    end_ = end;
    duration_ = end - start;
  }

  /// Reports at `now` that a write could not be made; it is due again after a second.
  void postponed(Clock::time_point now) {
    end_ = now + std::chrono::seconds(1);
    duration_ = {};
  }

 private:
  /// As multiples of the duration of the last write.
  static constexpr int pausePerSave = 10;
  static constexpr int pausePerLargeSave = 100;
  static constexpr Index manyStars = 10'000;
  /// Factor of stars from one write of a large file to the next.
  static constexpr Index leastGrowth = 4;

  /// Of the last write.
  Clock::time_point end_ = Clock::time_point::min();
  Clock::duration duration_{};
};

}  // namespace starsift
