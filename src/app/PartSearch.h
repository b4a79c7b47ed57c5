// The search of a part of a problem's tree, with its state in a file.
#pragma once

#include <optional>
#include <string>

#include "app/Decide.h"
#include "app/DirectStars.h"
#include "app/SavePace.h"
#include "app/SearchWatch.h"
#include "app/SeekArguments.h"
#include "app/Verdict.h"
#include "lattice/YLattice.h"
#include "search/decide/PartWalk.h"

namespace starsift {

/// "best", "all", "count", or a number of solutions: TreeState::goal.
std::string goalOf(const DeciderSettings& settings, const SeekOptions& options);

/// What identifies the part that the options name.
TreeState partIdentity(const Vanu<QQ>& problem, const DeciderSettings& settings,
                       const SeekOptions& options);

/// Goes on from the state in FILE.part-I-of-K.state, or FILE.state for the whole tree, which is
/// fatal if it is of another problem, version, goal or tree, and writes it there: first when the
/// tree is made, then with a pace of its own, always after the solutions.
class PartSearch : private DecisionListener {
 public:
  /// The exact lattice is live and has the problem as read, which is copied. `path` is that of the
  /// state, `known` the target norm of a known solution, `filed` the number of solutions in the
  /// file of the part.
  PartSearch(YLattice<long double>& lattice, SearchWatch& watch, DirectStars& stars,
             const SeekOptions& options, std::string path, std::optional<QQ> known, Index filed);

  /// Walks what is left of the part. Throws SearchEnded at its end, by a signal or the clock.
  void run();
  /// Writes the state at the end, when all solutions are on disk.
  void finish();

  Decided result() const;
  /// No tree can be made, however often it is tried.
  bool isImpossible() const {
    return preparation_ == Preparation::noFiniteBox || preparation_ == Preparation::unknownSteps;
  }
  /// A tree was made, or its state was read.
  bool hasTree() const { return hasTree_; }
  PartResult partResult() const;
  /// Nothing more is to be done for this part.
  bool isOver() const { return state_.isEnough || isComplete(); }

 private:
  Step found(const Star<QQ>& judged) override;
  Step progress(double share, std::uint64_t nodes) override;

  bool isComplete() const { return hasTree_ && state_.isComplete(); }
  /// Fatal if solutions that the state speaks of were lost.
  void requireSolutions() const;
  /// Least target norm of the solutions in all files.
  std::optional<QQ> leastNorm() const;
  Step look();
  /// False if there is no tree to walk.
  bool makeTree(PartWalk& walk);
  void walkRest(PartWalk& walk);
  void takeState(const PartWalk& walk);
  void writeState() const;

  SearchWatch& watch_;
  DirectStars& stars_;
  SeekOptions options_;
  std::string path_;
  DeciderSettings settings_;
  std::optional<QQ> known_;
  Index filed_;
  Decision decision_;
  /// As read from the file.
  std::optional<TreeState> saved_;
  /// How far the part is, or what identifies it.
  TreeState state_;
  /// During a walk.
  const PartWalk* walk_ = nullptr;
  /// state_ is that of a tree.
  bool hasTree_ = false;
  /// Why there is no tree.
  Preparation preparation_ = Preparation::ready;
  SavePace pace_;
  bool isEnough_ = false;
  std::optional<SearchEnd> ended_;
};

}  // namespace starsift
