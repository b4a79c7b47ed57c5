// The complete search of a problem in parts that are made one by one, by several processes or after
// an interruption.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <vector>

#include "files/TreeState.h"
#include "search/decide/Decider.h"
#include "search/decide/Decision.h"

namespace starsift {

/// One part of the tree: every parts-th subtree of a list that all parts make in the same way.
///
/// So the tree is made without limits of time, and of known solutions it knows only the norm that
/// the identity of the part has, if any. On another machine it may be another one all the same, as
/// reductions round; a digest of basis and subtrees shows that.
class PartWalk : private DecisionListener {
 public:
  /// `part` has what identifies the part; the rest of it is set here.
  PartWalk(Decision& decision, DecisionListener& listener, Aim aim, TreeState part);

  /// Makes the tree. Without a solution, or a better one than the known one, there is none, and the
  /// part is complete.
  Preparation prepare(const Decision::MayGoOn& mayGoOn);
  /// After prepare(): the subtrees that were done when `saved` was written needn't be walked.
  /// False, and nothing has changed, if that is of another tree.
  bool goOn(const TreeState& saved);
  /// Walks the other subtrees. `known`: target norm of a solution, with Aim::best only better ones
  /// are looked for. Complete: the part is.
  EnumerationEnd run(const std::optional<QQ>& known, unsigned threads);

  /// How far it is; may be asked for by the listener.
  const TreeState& state() const { return state_; }

 private:
  Step found(const Star<QQ>& star) override;
  Step progress(double share, std::uint64_t nodes) override;
  void finished(const FinishedPiece& piece) override;

  /// Raises the bound of the objective, which makes the tree smaller; false if mayGoOn() ended it.
  bool raiseBound(const Decision::MayGoOn& mayGoOn);
  std::string treeDigest(const std::vector<Subtree>& subtrees) const;

  Decision& decision_;
  DecisionListener& listener_;
  Aim aim_;
  TreeState state_;
  /// Subtrees of this part.
  std::vector<Subtree> subtrees_;
  /// Of the part before this run.
  std::size_t doneBefore_ = 0;
};

/// What parts have proven together, or found. Proven only if all of them are there, each once, and
/// complete.
Decided joinParts(Aim aim, std::span<const TreeState> parts);

}  // namespace starsift
