// The decision of a problem: all its solutions, or its best one, by complete enumeration.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "numbers/QQ.h"
#include "problem/Vanu.h"
#include "search/enumeration/Enumeration.h"
#include "search/enumeration/TreeEstimate.h"
#include "search/enumeration/TreeReduction.h"
#include "stars/Star.h"

namespace starsift {

/// What a decision looks for.
enum class Aim {
  /// Every solution.
  all,
  /// Solutions with less and less target norm, the last of which is the least; for problems with
  /// targets.
  best
};

/// Is called by a decision.
class DecisionListener {
 public:
  virtual ~DecisionListener() = default;

  /// A solution, judged by the check of stars; target values and norms are set. With Aim::all
  /// each one once, with Aim::best only one with less target norm than all before it.
  virtual Step found(const Star<QQ>& star) = 0;
  /// As in EnumerationVisitor.
  virtual Step progress(double share, std::uint64_t nodes) = 0;
  /// As in EnumerationVisitor.
  virtual void finished(const FinishedPiece& /*piece*/) {}
};

/// What is known before a tree is walked.
enum class Preparation {
  /// There is a tree to walk.
  ready,
  /// Proven: there is no solution.
  noSolution,
  /// A variable has no bound on one side at least, and none follows: see unboundedVariable().
  noFiniteBox,
  /// A dx isn't one of 0, 1, ... 1000.
  unknownSteps,
  /// mayGoOn() ended it.
  stopped
};

/// One problem and the tree of its solutions.
///
/// Solutions are the points whose variables are constants or lie on their steps and that satisfy
/// bounds, equations and inequations exactly. equationsHoldExactly() says whether the tolerance
/// of the check of stars lets others pass.
class Decision {
 public:
  /// Called before every step of a preparation; false ends it.
  using MayGoOn = std::function<bool()>;

  /// `problem` as read.
  explicit Decision(const Vanu<QQ>& problem);
  ~Decision();
  Decision(const Decision&) = delete;
  Decision& operator=(const Decision&) = delete;

  /// As read.
  const Vanu<QQ>& problem() const;

  /// Makes the tree and reduces its basis. `known` is the target norm of a solution: with
  /// Aim::best only better ones are looked for. StageLimit::steps and no known solution give the
  /// same tree on every run.
  Preparation prepare(Aim aim, const std::optional<QQ>& known, const MayGoOn& mayGoOn,
                      StageLimit limit = StageLimit::time);

  /// Sets leastNorm() and metSolution() by the linear relaxation, which takes two seconds at most,
  /// without a tree. After noSolution that is proven; known as for prepare().
  Preparation relax(Aim aim, const std::optional<QQ>& known, const MayGoOn& mayGoOn);

  /// The coset of a tree before it is reduced; there is no tree then. Empty if nothing is within
  /// the bounds, there is no finite box, or mayGoOn() ended it.
  std::optional<BoxCoset> unreducedCoset(Aim aim, const MayGoOn& mayGoOn);

  /// 1-based index of a variable; after noFiniteBox.
  Index unboundedVariable() const;
  /// After noFiniteBox with Aim::best: from every solution, points any number of steps of this
  /// direction ahead are solutions, with less and less target norm. Empty if no such direction
  /// was found.
  const Vector<QQ>& fallingDirection() const;
  /// The target norms of all solutions are at least this, if that is known; with Aim::best.
  std::optional<QQ> leastNorm() const;
  /// A solution that preparation met, better than the known one, with Aim::best. It counts as
  /// known from then on.
  const std::optional<Star<QQ>>& metSolution() const;

  /// The rest is for ready trees.

  /// With Aim::best makes the tree anew in the smaller box above leastNorm(). If that isn't known,
  /// or there are goals, linear programs in rationals raise it, which take some seconds with a
  /// hundred variables; if mayProgram() ends them the tree stays as it is. False if mayGoOn() ended
  /// the reduction after them: there is no tree.
  bool raiseBound(const MayGoOn& mayProgram, const MayGoOn& mayGoOn);
  /// The expected nodes of the complete tree.
  TreeEstimate estimate(const ProbeSettings& probes) const;
  /// Walks the tree from its root. Complete: every solution was found, with Aim::best a least
  /// one, if there is one better than the known one. May be called again; what Aim::best has
  /// found stays known.
  EnumerationEnd run(DecisionListener& listener, const EnumerationSettings& settings);
  /// The same over a part of the tree that cut() has made of it, and what is complete is that part.
  EnumerationEnd run(DecisionListener& listener, const EnumerationSettings& settings,
                     std::vector<Subtree> subtrees);
  /// As Enumeration::cut(); no subtree if it is proven that there is no solution, or no better one.
  std::optional<std::vector<Subtree>> cut(std::size_t wanted, const MayGoOn& mayGoOn) const;
  /// With Aim::best: from now on only solutions with less target norm count; the tree stays.
  void narrowBelow(const QQ& norm);
  /// The coset that the tree is made of.
  const BoxCoset& coset() const;
  /// Nodes of all runs of all trees.
  std::uint64_t nodes() const;

 private:
  class Tree;

  std::unique_ptr<Tree> tree_;
};

}  // namespace starsift
