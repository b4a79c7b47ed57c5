// How often a search writes a file.
#pragma once

#include <chrono>

namespace starsift {

/// After each write a pause ten times as long as the write took, so that a search that always
/// has something to write spends an eleventh of its time on files.
class SavePace {
 public:
  using Clock = std::chrono::steady_clock;

  /// The pause is over, or nothing has been written yet.
  bool isDue(Clock::time_point now) const { return now >= next_; }

  /// Reports a write that began at `start` and ended at `end`.
  void saved(Clock::time_point start, Clock::time_point end) {
    next_ = end + pausePerSave * (end - start);
  }

  /// Reports at `now` that a write could not be made; it is due again after a second.
  void postponed(Clock::time_point now) { next_ = now + std::chrono::seconds(1); }

 private:
  /// As a multiple of the duration of the last write.
  static constexpr int pausePerSave = 10;

  Clock::time_point next_ = Clock::time_point::min();
};

}  // namespace starsift
