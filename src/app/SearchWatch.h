// The observer of a search: saves solutions, ends it by a signal or the clock, and draws the
// status line.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "app/SolutionSink.h"
#include "app/StatusLine.h"
#include "app/TreeStatus.h"
#include "lattice/YLattice.h"
#include "search/enumeration/Enumeration.h"
#include "system/Exceptions.h"

namespace starsift {

/// Why a search ended.
enum class SearchEnd {
  /// The lattice ended it: enough solutions, or a norm was met.
  goal,
  passes,
  time,
  /// Many restarts without a new solution, if no limit was set.
  fruitless,
  interrupt,
  /// A complete search has proved its result, or found what was asked for.
  decided,
  /// A number is too large even for the Gram-Schmidt data of the exact lattice.
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

class SearchWatch;

/// Who else looks at a search.
class SearchListener {
 public:
  virtual ~SearchListener() = default;

  /// Called at each look. Stopping ends the search as a signal does.
  virtual Step looked(const SearchWatch& watch) = 0;

 protected:
  SearchListener() = default;
  SearchListener(const SearchListener&) = default;
  SearchListener& operator=(const SearchListener&) = default;
};

/// Is notified before each step of a reduction.
class SearchWatch : public ReductionObserver {
 public:
  /// Watches the search in `lattice` of a process that began at `start`; draws on `line`.
  SearchWatch(YLattice<long double>& lattice, StatusLine& line, StatusLine::Clock::time_point start)
      : lattice_(lattice), line_(line), start_(start) {}

  /// Sets the sink that takes solutions as they are found.
  void setSink(SolutionSink& sink) { sink_ = &sink; }

  /// Sets who is called at each look.
  void setListener(SearchListener& listener) { listener_ = &listener; }

  /// Seconds from the start of the process; no limit if 0 or negative.
  void setTimeLimit(long seconds) { timeLimit_ = seconds; }

  /// Sets what is called after each look() at the steps of a lattice; it may throw SearchEnded. A
  /// pass of some hundred variables takes minutes.
  void setBeside(std::function<void()> beside) { beside_ = std::move(beside); }

  /// Calls look() every few steps, and at once if a signal came or the exact lattice is in use.
  void onStep(const PassCounts& counts) override;

  /// Calls look().
  void onPreparation() override { lookFromLattice(); }

  /// Saves new solutions, redraws the line if it is due, and throws SearchEnded if a signal came,
  /// the time is over or the listener stops it.
  void look();

  /// Calls look() where nothing may be thrown. Returns what ends the search, if something does.
  std::optional<SearchEnd> endFound();

  /// There are solutions that wait for the end of a pause between two saves.
  bool hasUnsaved() const { return sink_ != nullptr && sink_->hasNews(lattice_); }

  /// Seconds until the time limit, at least 0; empty without a limit.
  std::optional<std::chrono::duration<double>> timeLeft() const;

  /// Until hideTree() the line shows the walk of a tree, of which `share` is done after `nodes`
  /// nodes, and the number of solutions that it has found.
  void showTree(double share, std::uint64_t nodes, Index solutions);
  void hideTree() { tree_.reset(); }
  /// What showTree() was told of the tree that is walked; empty while there is none.
  std::optional<TreeProgress> tree() const;

  /// To be called before and after each pass of the search itself.
  void beginPass() { ++passes_; }
  void endPass(const PassCounts& counts);

  /// The time since the start of the process, by which the time limit and the times of solutions
  /// and files are measured.
  StatusLine::Clock::duration elapsed() const { return StatusLine::Clock::now() - start_; }

  Index passes() const { return passes_; }
  /// Swaps of all passes, including passes that prepared a lattice.
  Index exchanges() const { return exchanges_; }

 private:
  void count(const PassCounts& counts);
  void lookFromLattice();
  std::string status(StatusLine::Clock::time_point now) const;

  YLattice<long double>& lattice_;
  StatusLine& line_;
  SolutionSink* sink_ = nullptr;
  SearchListener* listener_ = nullptr;
  std::function<void()> beside_;
  StatusLine::Clock::time_point start_;
  long timeLimit_ = 0;
  Index passes_ = 0;
  Index exchanges_ = 0;
  /// Swaps of the current pass that are counted already.
  Index counted_ = 0;
  Index steps_ = 0;

  struct ShownTree {
    TreeProgress progress;
    Index solutions = 0;
    StatusLine::Clock::time_point start;
  };
  std::optional<ShownTree> tree_;
};

}  // namespace starsift
