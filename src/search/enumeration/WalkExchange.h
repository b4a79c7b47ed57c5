// What the threads that walk one enumeration tree exchange: subtrees, points, bounds, counts.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <mutex>
#include <optional>
#include <vector>

#include "search/enumeration/EnumerationWalk.h"

namespace starsift {

/// Thread-safe. A walker is one thread with its walk; walker 0 is the caller of the enumeration,
/// who alone passes points to the visitor. The tree is done if no subtree waits and none is walked.
class WalkExchange {
 public:
  using Point = std::vector<ZZ>;
  struct Progress {
    double share;
    std::uint64_t nodes;
  };

  /// For a run of as many walkers over one subtree.
  WalkExchange(std::size_t walkers, const std::optional<std::uint64_t>& nodeLimit, Subtree first);

  // Subtrees

  /// Fewer subtrees wait than there are walkers.
  bool wantsSubtrees() const { return wantsSubtrees_.load(std::memory_order_relaxed); }
  /// A part of the subtree that `walker` walks, which it leaves to others; none: it has nothing to
  /// leave. The share is that of its present subtree.
  void give(std::size_t walker, std::optional<Subtree> part);
  /// Waits for a subtree and takes the largest; none: the run is over. Not for walker 0.
  std::optional<Subtree> take(std::size_t walker);
  /// What walker 0 waits for, not longer than some hundredths of a second.
  struct News {
    std::vector<Point> points;
    std::optional<Subtree> subtree;
    bool isOver = false;
  };
  News waitForNews();
  /// The subtree of `walker` is done, after so many nodes. `isPruned`: nothing is proved.
  void finish(std::size_t walker, std::uint64_t nodes, bool isPruned);

  // Ends

  /// Ends all walks; the first reason counts.
  void end(EnumerationEnd reason);
  /// The same because of an exception, which outcome() throws.
  void fail(std::exception_ptr exception);
  bool isEnded() const { return isEnded_.load(std::memory_order_relaxed); }
  /// After all walks.
  EnumerationEnd outcome() const;

  // Counts

  /// How far `walker` is in its subtree; ends the walks at the node limit.
  void report(std::size_t walker, double share, std::uint64_t nodes);
  /// Of the whole tree; the share never decreases.
  Progress progress();
  /// Nodes that are left to a walk, none: any number.
  std::optional<std::uint64_t> nodesLeft() const;
  /// Nodes of all walkers but the first.
  std::uint64_t otherNodes() const;

  // Points and bounds

  /// Adds a point; waits while many do.
  void post(const Point& point);
  std::vector<Point> takePoints();
  /// The box of the caller's walk has become smaller.
  void publishBox(const BoxCoset& coset);
  /// Narrows a walk if the box has changed since `version`, which is updated.
  void narrow(EnumerationWalk& walk, std::uint64_t& version) const;

 private:
  struct Walker {
    /// Share of its subtree, and of what is done of it.
    double weight = 0;
    double done = 0;
    /// Nodes in its present subtree, and before.
    std::uint64_t nodes = 0;
    std::uint64_t nodesBefore = 0;
  };

  bool isDone() const { return busy_ == 0 && subtrees_.empty(); }
  Subtree popLargest(std::size_t walker);
  void update();
  std::uint64_t allNodes() const;

  mutable std::mutex mutex_;
  /// Anything that somebody may wait for.
  std::condition_variable changed_;
  std::vector<Subtree> subtrees_;
  std::vector<Walker> walkers_;
  /// Walkers that have a subtree.
  std::size_t busy_ = 0;
  std::optional<std::uint64_t> nodeLimit_;
  /// Shares of finished subtrees, and the share last told.
  double finished_ = 0;
  double told_ = 0;
  std::vector<Point> points_;
  BoxCoset box_;
  std::atomic<std::uint64_t> boxVersion_ = 0;
  std::atomic<bool> wantsSubtrees_ = false;
  std::atomic<bool> isEnded_ = false;
  EnumerationEnd end_ = EnumerationEnd::complete;
  bool isPruned_ = false;
  std::exception_ptr exception_;
};

}  // namespace starsift
