// How a problem is decided: which trees are walked, in which order, and when it isn't tried.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "search/decide/Decision.h"
#include "search/decide/KnownPoints.h"

namespace starsift {

/// What a decision has proven.
enum class Proof {
  none,
  /// There is no solution.
  noSolution,
  /// All solutions were found.
  allFound,
  /// The best solution found, or the known one, has the least target norm.
  optimum
};

/// Why there is no proof, or what ended the decision early.
enum class Undecided {
  /// There is a proof.
  no,
  /// As many solutions as wanted were found.
  enough,
  /// The listener stopped it.
  stopped,
  /// The tree is too large for the time, or turned out to be.
  tooLarge,
  /// To be walked by the caller: see DeciderSettings::longWalk.
  left,
  noFiniteBox,
  /// There are solutions with less and less target norm, without end.
  unbounded,
  unknownSteps
};

struct DeciderSettings {
  Aim aim = Aim::all;
  /// Solutions after which it ends, none: all of them. Not with Aim::best.
  std::optional<std::uint64_t> wanted;
  /// Target norm of the best known solution.
  std::optional<QQ> known;
  std::chrono::duration<double> allowed{600};
  /// A complete tree that may be walked but takes longer than this is left to the caller, who keeps
  /// how far it is; with Aim::best when short walks have taken this time.
  std::optional<std::chrono::duration<double>> longWalk;
  /// The complete tree is walked however long that takes.
  bool isForced = false;
  std::uint64_t seed = 1;
  /// Threads that walk a tree, at least 1.
  unsigned threads = 1;
};

struct Decided {
  Proof proof = Proof::none;
  Undecided undecided = Undecided::no;
  /// Solutions of the complete tree, if all were looked for; else solutions that were new.
  std::uint64_t count = 0;
  std::uint64_t nodes = 0;
  /// Index of a variable without bounds, after noFiniteBox.
  Index variable = 0;
  /// The direction of such solutions, as the text of a vector; after unbounded.
  std::string direction;
  /// Seconds that the complete tree would take; after tooLarge.
  double estimatedSeconds = 0;
  /// Least target norm found or known.
  std::optional<QQ> best;
  /// Proven: no solution has a smaller target norm.
  std::optional<QQ> bound;

  bool isComplete() const { return proof != Proof::none; }
};

/// One decision.
class Decider {
 public:
  /// `listener` is told of each solution once.
  Decider(Decision& decision, DecisionListener& listener, DeciderSettings settings)
      : decision_(decision), listener_(listener), settings_(std::move(settings)) {}

  /// The listener isn't told of this solution.
  void setKnown(const Star<QQ>& star);

  /// First a tree of 3 to 5 % of the nodes, if few solutions are wanted and the complete one is
  /// large. With Aim::best short walks come first: each better solution makes the box smaller, and
  /// a basis that is reduced for the small box has a smaller tree.
  Decided run();

  /// Only what the linear relaxation proves: that there is no solution, a bound, or that a
  /// solution that it leads to is the best one.
  Decided relax();

 private:
  using Clock = std::chrono::steady_clock;
  class Relay;
  class Deaf;

  /// The listener knows the solution; from now on it does, if another walk may find it again.
  bool isKnown(const Star<QQ>& star);
  /// The listener hasn't stopped the decision, of which it is told.
  bool mayGoOn();
  /// The time of the decision or of the present walk is over.
  bool isLate() const;
  bool prepare();
  /// Tells of a solution that preparation met.
  void tellMet();
  void reportOpenBox();
  void raiseBound();
  /// The tree is small enough to be walked, or has to be.
  bool estimate();
  /// Sets expectedNodes_.
  void estimateNodes(std::uint32_t probes);
  /// Nodes a second of all threads, from a short walk of one.
  double measureSpeed();
  void walkPruned();
  void walk();
  void walkToBest();
  EnumerationEnd walk(const std::optional<double>& pruning,
                      const std::optional<std::uint64_t>& nodeLimit, unsigned threads);
  void conclude(EnumerationEnd end);
  bool isLong(std::chrono::duration<double> time) const {
    return settings_.longWalk && time > *settings_.longWalk;
  }

  Decision& decision_;
  DecisionListener& listener_;
  DeciderSettings settings_;
  Decided result_;
  Clock::time_point start_;
  double expectedNodes_ = 0;
  /// That the complete tree takes; 0 for a small one.
  std::chrono::duration<double> expectedTime_{};
  /// Least target norm known when the tree was made.
  std::optional<QQ> bestOfTree_;
  /// Limit of a walk; none if the tree is small enough.
  std::optional<std::uint64_t> nodesLeft_;
  /// When the present walk must end, besides the time of the decision; none: whenever it is done.
  std::optional<Clock::time_point> walkEnd_;
  /// Solutions that the listener knows, while more than one walk may find them.
  KnownPoints known_;
  /// Solutions of the present walk.
  std::uint64_t found_ = 0;
  /// Solutions that the listener knows.
  std::uint64_t told_ = 0;
  bool isStopped_ = false;
  bool isEnough_ = false;
};

}  // namespace starsift
