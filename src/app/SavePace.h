// How often a search writes a file.
#pragma once

#include <chrono>

namespace starsift {

/// After each writing a pause that is ten times as long as the writing took, so that a
/// search that has something to write all the time spends an eleventh of it on files.
class SavePace {
 public:
  using Clock = std::chrono::steady_clock;

  /// The pause is over, or nothing was written yet.
  bool isDue(Clock::time_point now) const { return now >= next_; }

  /// A writing began at `start` and was done at `end`.
  void saved(Clock::time_point start, Clock::time_point end) {
    next_ = end + pausePerSave * (end - start);
  }

 private:
  /// As a multiple of what the last writing took.
  static constexpr int pausePerSave = 10;

  Clock::time_point next_ = Clock::time_point::min();
};

}  // namespace starsift
