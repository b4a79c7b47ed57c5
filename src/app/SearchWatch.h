// What goes on beside a search: the saving of solutions, its end by a signal or the clock,
// and the status line.
#pragma once

#include <string>

#include "app/StarStore.h"
#include "app/StatusLine.h"
#include "lattice/YLattice.h"
#include "system/Exceptions.h"

namespace starsift {

/// Why a search came to its end.
enum class SearchEnd {
  /// The lattice ended it: enough solutions, or a norm was met.
  goal,
  passes,
  time,
  /// Many restarts without a new solution, where no limit was set.
  fruitless,
  interrupt,
  /// A number grew beyond what even the exact lattice can steer by.
  overflow,
};

/// Ends a search in the middle of a step.
class SearchEnded : public GeneralException {
 public:
  explicit SearchEnded(SearchEnd reason) : GeneralException("Search ended"), reason_(reason) {}

  SearchEnd reason() const { return reason_; }

 private:
  SearchEnd reason_;
};

/// Looks up ahead of each step of a reduction.
class SearchWatch : public ReductionObserver {
 public:
  /// Watches the search in `lattice` of a process that began at `start`; draws on `line`.
  SearchWatch(YLattice<long double>& lattice, StatusLine& line, StatusLine::Clock::time_point start)
      : lattice_(lattice), line_(line), start_(start) {}

  /// Where the solutions go as they are found.
  void setStore(StarStore& store) { store_ = &store; }

  /// Seconds from the start of the process; 0 and less: no limit.
  void setTimeLimit(long seconds) { timeLimit_ = seconds; }

  /// Throws SearchEnded for a signal; every few steps does all that look() does.
  void onStep(const PassCounts& counts) override;

  /// Saves new solutions, draws the line anew when it is due, and throws SearchEnded for a
  /// signal or when the time is over.
  void look();

  /// There are solutions that wait for the end of a pause between two savings.
  bool hasUnsaved() const { return store_ != nullptr && store_->hasNews(lattice_); }

  /// Ahead of a pass of the search itself, and behind it.
  void beginPass() { ++passes_; }
  void endPass(const PassCounts& counts);

  /// How long the process has been running: what the time limit is about, and the times of
  /// solutions and files.
  StatusLine::Clock::duration elapsed() const { return StatusLine::Clock::now() - start_; }

  Index passes() const { return passes_; }
  /// Exchanges of all passes, also of those that prepared a lattice.
  Index exchanges() const { return exchanges_; }

 private:
  void count(const PassCounts& counts);
  std::string status(StatusLine::Clock::time_point now) const;

  YLattice<long double>& lattice_;
  StatusLine& line_;
  StarStore* store_ = nullptr;
  StatusLine::Clock::time_point start_;
  long timeLimit_ = 0;
  Index passes_ = 0;
  Index exchanges_ = 0;
  /// Exchanges of the pass under way that are counted already.
  Index counted_ = 0;
  Index steps_ = 0;
};

}  // namespace starsift
