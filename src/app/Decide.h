// The complete search of a command: the decision of its problem, with its limits, its solution
// file and its status line.
#pragma once

#include <chrono>
#include <optional>

#include "app/DirectStars.h"
#include "app/PartSearch.h"
#include "app/SearchWatch.h"
#include "app/SeekArguments.h"
#include "lattice/YLattice.h"
#include "search/decide/Decider.h"

namespace starsift {

class Decide : private DecisionListener {
 public:
  /// The exact lattice is live and has the problem as read, which is copied.
  ///
  /// A tree that takes long goes on from a state in `files`, if there are any, and leaves it there
  /// when the search is ended early; a state of another problem or version is fatal.
  Decide(YLattice<long double>& lattice, SearchWatch& watch, DirectStars& stars,
         const SeekOptions& options, const std::optional<TreeFiles>& files = {});

  /// Still to be made, or to be made again. Since it found its tree too large a better solution was
  /// found, which makes the tree smaller, and more time has passed than it took; or a variable has
  /// no bounds, and with the first solution that may show that the target has none.
  bool isDue() const;
  /// As read.
  const Vanu<QQ>& problem() const { return decision_.problem(); }
  /// The best solution is looked for.
  bool wantsBest() const { return settings_.aim == Aim::best; }
  /// Threads of the search, at least 1.
  unsigned threads() const { return settings_.threads; }

  /// Worth an attempt before the first lattice: with many variables a pass, or the making of a
  /// lattice, may take all the time there is.
  bool isWorthRelaxing() const;
  /// Learns from the linear relaxation alone, in two seconds at most. As run().
  bool relax();
  /// Decides the problem if that takes not too long. True if the search is over: there is a
  /// proof, or what was asked for was found. Throws SearchEnded by a signal or the clock.
  bool run();

  const Decided& result() const { return result_; }
  /// Writes the state of a tree when all solutions are on disk.
  void finish();
  /// Removes it when the search is over.
  void removeState();

 private:
  using Clock = std::chrono::steady_clock;

  Step found(const Star<QQ>& judged) override;
  Step progress(double share, std::uint64_t nodes) override;
  /// There are solutions with less and less target norm, and no norm is asked for.
  bool hasNoBest() const;
  Decider makeDecider();
  std::chrono::duration<double> allowedTime() const;
  /// The state of a tree says what the goal of this search needs to go on.
  bool canKeepTree() const;
  /// Makes the tree that a state is of.
  void openTree();
  void makeTree(const std::optional<TreeState>& saved);
  /// Solutions of the lattice that a walk needn't tell of.
  Array<Star<QQ>> knownStars() const;
  void decideAtOnce();
  void walkLongTree();

  YLattice<long double>& lattice_;
  SearchWatch& watch_;
  DirectStars& stars_;
  SeekOptions options_;
  Decision decision_;
  DeciderSettings settings_;
  Decided result_;
  /// Where a long tree may leave its state; the tree, if there is one.
  std::optional<TreeFiles> files_;
  std::optional<PartSearch> tree_;
  /// Of the walks before the tree.
  std::uint64_t nodesBefore_ = 0;
  bool isMade_ = false;
  Clock::time_point lastEnd_;
  Clock::duration lastTime_{};
  /// A solution reached tnorm or snorm.
  bool meetsNorms_ = false;
  /// What ended a walk.
  std::optional<SearchEnd> ended_;
};

}  // namespace starsift
