// Lattices of helper threads, each with random changes from a seed of its own, beside the one that
// a search reduces itself.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <utility>
#include <vector>

#include "params/ExtendedParams.h"
#include "problem/Vanu.h"
#include "search/SolutionExchange.h"
#include "system/Gate.h"
#include "system/HelperThreads.h"

namespace starsift {

/// What the lattices are made from.
struct LatticeSource {
  /// As read; it must live as long as the threads.
  const Vanu<QQ>& problem;
  /// Without a number of passes, and with random changes of new lattices.
  ExtendedParams<QQ> params;
  std::uint64_t seed = 1;
  /// As YLattice::seekBest().
  bool seeksBest = false;
};

class LatticeThreads {
 public:
  explicit LatticeThreads(LatticeSource source) : source_(std::move(source)) {}
  LatticeThreads(const LatticeThreads&) = delete;
  LatticeThreads& operator=(const LatticeThreads&) = delete;
  /// Ends the threads.
  ~LatticeThreads() { end(); }

  /// Starts `count` threads, or as many as the system grants, in a process that has been running
  /// for `elapsed`. Each makes lattices, reduces them and looks for solutions beside them until
  /// end(), or until it has what the parameters ask for. A thread whose first lattice fails, by the
  /// size of numbers or because the problem has no solution, ends without a word.
  void start(unsigned count, std::chrono::steady_clock::duration elapsed);

  /// Solutions that were found since the last call, the better one later. Throws what a thread
  /// has thrown.
  std::vector<Star<QQ>> takeNews();

  /// The threads wait from their next steps until resume().
  void pause() { gate_.close(); }
  void resume() { gate_.open(); }
  /// Waits for the threads, which end at their next steps.
  void end();

  /// Lattices that were made so far.
  std::uint64_t latticeCount() const { return latticeCount_; }

 private:
  void work(unsigned number, std::chrono::steady_clock::duration elapsed);

  LatticeSource source_;
  SolutionExchange exchange_;
  Gate gate_;
  std::atomic<std::uint64_t> latticeCount_ = 0;
  HelperThreads threads_;
};

}  // namespace starsift
