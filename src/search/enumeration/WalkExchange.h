// What the threads that walk one enumeration tree exchange: subtrees, points, bounds, counts.
#pragma once

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <map>
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
  /// Points, and the subtrees of the list that were finished before or with them.
  struct Results {
    std::vector<Point> points;
    std::vector<FinishedPiece> finished;
  };
  struct Progress {
    double share;
    std::uint64_t nodes;
  };

  /// For a run of as many walkers over a list of subtrees, whose shares sum up to 1.
  WalkExchange(std::size_t walkers, const std::optional<std::uint64_t>& nodeLimit,
               std::vector<Subtree> subtrees);

  // Subtrees

  /// Fewer subtrees wait than there are walkers, of which there are several.
  bool wantsSubtrees() const { return wantsSubtrees_.load(std::memory_order_relaxed); }
  /// A part of the subtree that `walker` walks, which it leaves to others; none: it has nothing to
  /// leave. The share is that of its present subtree.
  void give(std::size_t walker, std::optional<Subtree> part);
  /// Waits for a subtree and takes the largest; none: the run is over. Not for walker 0.
  std::optional<Subtree> take(std::size_t walker);
  /// What walker 0 waits for, not longer than some hundredths of a second.
  struct News {
    Results results;
    std::optional<Subtree> subtree;
    bool isOver = false;
  };
  News waitForNews();
  /// `walker` has left its subtree, after so many nodes and points, which are posted or with the
  /// visitor. Pruned: nothing is proved.
  void finish(std::size_t walker, std::uint64_t nodes, std::uint64_t points, EnumerationEnd end);

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
  Results takeResults();
  /// The box of the caller's walk has become smaller.
  void publishBox(const BoxCoset& coset);
  /// Narrows a walk if the box has changed since `version`, which is updated.
  void narrow(EnumerationWalk& walk, std::uint64_t& version) const;

 private:
  struct Walker {
    /// Share of its subtree, and of what is done of it.
    double weight = 0;
    double done = 0;
    std::size_t piece = 0;
    /// Nodes in its present subtree, and before.
    std::uint64_t nodes = 0;
    std::uint64_t nodesBefore = 0;
  };

  /// A subtree of the list.
  struct Piece {
    /// Parts of it that wait or are walked.
    std::size_t parts = 0;
    FinishedPiece total;
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
  std::map<std::size_t, Piece> pieces_;
  /// Walkers that have a subtree.
  std::size_t busy_ = 0;
  std::optional<std::uint64_t> nodeLimit_;
  /// Shares of finished subtrees, and the share last told.
  double finished_ = 0;
  double told_ = 0;
  Results results_;
  BoxCoset box_;
  std::atomic<std::uint64_t> boxVersion_ = 0;
  std::atomic<bool> wantsSubtrees_ = false;
  std::atomic<bool> isEnded_ = false;
  EnumerationEnd end_ = EnumerationEnd::complete;
  bool isPruned_ = false;
  std::exception_ptr exception_;
};

}  // namespace starsift
