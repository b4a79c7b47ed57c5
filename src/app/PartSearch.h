// The search of a part of a problem's tree, with its state in a file.
#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

#include "app/DirectStars.h"
#include "app/SavePace.h"
#include "app/SearchWatch.h"
#include "app/SeekArguments.h"
#include "app/Verdict.h"
#include "search/decide/KnownPoints.h"
#include "search/decide/PartWalk.h"

namespace starsift {

/// What identifies the part that the options name, or the whole tree if they name none.
TreeState partIdentity(const Vanu<QQ>& problem, const DeciderSettings& settings,
                       const SeekOptions& options);

/// What a search of a part finds on disk, and where it leaves its state.
struct TreeFiles {
  /// Of the state.
  std::string path;
  /// Solutions in the solution file of the part.
  Index filed = 0;
  /// Least target norm of the solutions in other files.
  std::optional<QQ> known{};
};

/// Whose tree it is.
enum class TreeOwner {
  /// The search for the part: its state is all that is left of it, so one that can't be written is
  /// fatal, and it stays when the part is complete. All parts make the same tree.
  part,
  /// A search of the whole problem, which keeps how far it is if that can be written, until it is
  /// over. The tree is made for solutions that are better than the known ones.
  search
};

/// Goes on from the state in FILE.part-I-of-K.state, or FILE.state for the whole tree, which is
/// fatal if it is of another problem, version, goal or tree, and writes it there: first when the
/// tree is made, then with a pace of its own, always after the solutions.
class PartSearch : private DecisionListener {
 public:
  using Duration = std::chrono::duration<double>;

  /// `problem` as read, which is copied; without limits of norms. `saved` is the state to go on
  /// from, if there is one.
  PartSearch(const Vanu<QQ>& problem, DeciderSettings settings, SearchWatch& watch,
             DirectStars& stars, const SeekOptions& options, TreeFiles files,
             std::optional<TreeState> saved, TreeOwner owner);

  /// The solution is in the solution file, or will be without this search.
  void setKnown(const Star<QQ>& star) { knownPoints_.add(star.x()); }
  /// Walks what is left of the part, for as long as is allowed; none: to its end. May be called
  /// again. Returns what ended it early, if that was a signal or the clock of the search.
  std::optional<SearchEnd> run(std::optional<Duration> allowed = {});
  /// Writes the state at the end, when all solutions are on disk.
  void finish();
  /// Removes the state of a search that is over.
  void removeState();
  /// What is left of the part takes about this time, or more if no subtree is done; 0 as long as
  /// the state to go on from says little about it.
  Duration restTime() const;

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
  void writeState();
  /// Calls write(); after the first failure a remark says so.
  void tryTo(const std::function<bool()>& write);

  SearchWatch& watch_;
  DirectStars& stars_;
  SeekOptions options_;
  TreeFiles files_;
  TreeOwner owner_;
  DeciderSettings settings_;
  KnownPoints knownPoints_;
  Decision decision_;
  /// As read from the file, or left by the run before.
  std::optional<TreeState> saved_;
  /// Of the state as read from the file.
  std::uint64_t nodesBefore_ = 0;
  /// In the subtrees that were done before the present walk, and met by that.
  std::uint64_t solutionsBefore_ = 0;
  std::uint64_t found_ = 0;
  /// Time of the search that saved_ counts already.
  StatusLine::Clock::duration counted_{};
  /// How far the part is, or what identifies it.
  TreeState state_;
  /// During a walk.
  const PartWalk* walk_ = nullptr;
  /// state_ is that of a tree.
  bool hasTree_ = false;
  /// Why there is no tree.
  Preparation preparation_ = Preparation::ready;
  SavePace pace_;
  SavePace::Clock::time_point lastWrite_;
  /// Of the present run, which may be without an end.
  SavePace::Clock::time_point begin_;
  std::optional<std::chrono::time_point<SavePace::Clock, Duration>> end_;
  bool isLate_ = false;
  bool hasToldFailure_ = false;
  bool isEnough_ = false;
  std::optional<SearchEnd> ended_;
};

}  // namespace starsift
