#include "app/PartSearch.h"

#include <algorithm>
#include <span>
#include <utility>

#include "app/SearchGoal.h"
#include "files/WriteOrFail.h"
#include "system/Console.h"
#include "system/Failure.h"

namespace starsift {

namespace {

/// Between two writes of a state, or a hundredth of the time of the walk, if that is less: a crash
/// loses no more, and a walk of days doesn't wear out a disk.
constexpr std::chrono::seconds longestPause{10};

/// From this time on the subtrees that are done say how long the others take.
constexpr std::chrono::minutes telling{1};

/// Fatal if the state is not that of this part.
void requireSame(const TreeState& saved, const TreeState& part, const std::string& path) {
  const auto refuse = [&path](const std::string& reason) {
    fail("File " + path + " is " + reason + ": remove it to begin anew");
  };
  if (saved.problem != part.problem) refuse("of another problem");
  if (saved.part != part.part || saved.parts != part.parts)
    refuse("of part " + std::to_string(saved.part) + " of " + std::to_string(saved.parts));
  if (saved.goal != part.goal) refuse("of a search for " + saved.goal + ", not " + part.goal);
}

}  // namespace

TreeState partIdentity(const Vanu<QQ>& problem, const DeciderSettings& settings,
                       const SeekOptions& options) {
  TreeState state;
  state.version = STARSIFT_VERSION;
  state.problem = problemDigest(problem);
  state.goal = goalOf(settings, options);
  if (options.part) {
    state.part = options.part->part;
    state.parts = options.part->parts;
  }
  return state;
}

PartSearch::PartSearch(const Vanu<QQ>& problem, DeciderSettings settings, SearchWatch& watch,
                       DirectStars& stars, const SeekOptions& options, TreeFiles files,
                       std::optional<TreeState> saved, TreeOwner owner)
    : watch_(watch),
      stars_(stars),
      options_(options),
      files_(std::move(files)),
      owner_(owner),
      settings_(std::move(settings)),
      decision_(problem),
      saved_(std::move(saved)),
      state_(partIdentity(decision_.problem(), settings_, options)) {
  if (!saved_) return;
  requireSame(*saved_, state_, files_.path);
  state_.known = saved_->known;
  nodesBefore_ = saved_->nodes;
}

std::optional<QQ> PartSearch::leastNorm() const {
  const std::optional<QQ> filed = stars_.leastKnownNorm();
  return filed && (!files_.known || *filed < *files_.known) ? filed : files_.known;
}

void PartSearch::requireSolutions() const {
  if (!saved_ || options_.count) return;
  const bool isBest = settings_.aim == Aim::best;
  const std::optional<QQ> least = isBest ? leastNorm() : std::nullopt;
  const bool areThere = isBest
                            ? !saved_->best || (least && *least <= *saved_->best)
                            : static_cast<std::uint64_t>(files_.filed) >= saved_->solutionsFiled();
  if (!areThere)
    fail("File " + files_.path +
         " is of a search that has found more than is in its solution file: " +
         "remove it to begin anew");
}

std::optional<SearchEnd> PartSearch::run(std::optional<Duration> allowed) {
  if (!hasTree_) requireSolutions();
  begin_ = SavePace::Clock::now();
  if (allowed) end_ = begin_ + *allowed;
  if (saved_ && (saved_->isComplete() || saved_->isEnough)) {
    state_ = *saved_;
    hasTree_ = true;
  } else {
    if (!saved_ && owner_ == TreeOwner::search && settings_.aim == Aim::best)
      state_.known = leastNorm();
    PartWalk walk(decision_, *this, settings_.aim, state_);
    if (makeTree(walk) && preparation_ == Preparation::ready) walkRest(walk);
  }
  watch_.hideTree();
  return ended_;
}

bool PartSearch::makeTree(PartWalk& walk) {
  preparation_ = walk.prepare([this] { return look() == Step::goOn; });
  if (preparation_ != Preparation::ready && preparation_ != Preparation::noSolution) return false;
  if (saved_ && !walk.goOn(*saved_))
    fail("File " + files_.path +
         " is of another tree, of another machine: remove it to begin anew");
  hasTree_ = true;
  // The time of a part is that of its process; lattices say nothing of how long a tree takes.
  if (owner_ == TreeOwner::search) counted_ = watch_.elapsed();
  takeState(walk);
  // A state of a part that can't be written is fatal before the walk, not after it.
  if (owner_ == TreeOwner::part || !watch_.hasUnsaved()) writeState();
  return true;
}

void PartSearch::walkRest(PartWalk& walk) {
  solutionsBefore_ = walk.state().solutions;
  found_ = 0;
  walk_ = &walk;
  walk.run(settings_.aim == Aim::best ? leastNorm() : std::nullopt, settings_.threads);
  walk_ = nullptr;
  takeState(walk);
  saved_ = state_;
  counted_ = watch_.elapsed();
}

void PartSearch::takeState(const PartWalk& walk) {
  state_ = walk.state();
  state_.isEnough = isEnough_;
  using Milliseconds = std::chrono::milliseconds;
  state_.milliseconds = static_cast<std::uint64_t>(
      std::chrono::duration_cast<Milliseconds>(watch_.elapsed() - counted_).count());
  if (saved_) state_.milliseconds += saved_->milliseconds;
}

Step PartSearch::look() {
  ended_ = watch_.endFound();
  isLate_ = end_ && SavePace::Clock::now() >= *end_;
  return ended_ || isLate_ ? Step::stop : Step::goOn;
}

Step PartSearch::found(const Star<QQ>& judged) {
  ++found_;
  if (options_.count || knownPoints_.contains(judged.x())) return Step::goOn;
  isEnough_ = stars_.add(judged, settings_.aim == Aim::best);
  // What is found again isn't among the solutions of the subtrees done.
  const std::uint64_t all =
      (saved_ ? saved_->solutions : 0) + static_cast<std::uint64_t>(stars_.count());
  isEnough_ = isEnough_ || (settings_.wanted && all >= *settings_.wanted);
  return isEnough_ ? Step::stop : Step::goOn;
}

Step PartSearch::progress(double share, std::uint64_t nodes) {
  watch_.showTree(share, nodes, stars_.count());
  const Step step = look();
  const auto now = SavePace::Clock::now();
  const auto pause = std::min<SavePace::Clock::duration>((now - begin_) / 100, longestPause);
  if (!pace_.isDue(now) || now < lastWrite_ + pause || watch_.hasUnsaved()) return step;
  takeState(*walk_);
  writeState();
  lastWrite_ = SavePace::Clock::now();
  pace_.saved(now, lastWrite_);
  return step;
}

void PartSearch::finish() {
  if (hasTree_) writeState();
}

void PartSearch::removeState() {
  tryTo([this] { return removeTreeState(files_.path); });
}

void PartSearch::writeState() {
  const auto write = [this] { return writeTreeState(files_.path, state_); };
  if (owner_ == TreeOwner::search)
    tryTo(write);
  else if (!writeOrFail(write))
    fail("Could not write file: " + files_.path);
}

void PartSearch::tryTo(const std::function<bool()>& write) {
  bool isDone = false;
  try {
    isDone = write();
  } catch (const WriteException&) {
    // As a file that can't be opened.
  } catch (const LinkException&) {
    // The same.
  }
  if (isDone || std::exchange(hasToldFailure_, true)) return;
  remarkStream() << "*** Could not write file: " << files_.path << endLine();
  stampOutputTime();
}

PartSearch::Duration PartSearch::restTime() const {
  if (!saved_ || saved_->isEnough || saved_->isComplete()) return Duration(0);
  const Duration spent = std::chrono::milliseconds(saved_->milliseconds);
  if (spent < telling) return Duration(0);
  const auto done = static_cast<double>(std::max<std::size_t>(saved_->doneCount(), 1));
  return spent * (static_cast<double>(saved_->done.size()) - done) / done;
}

Decided PartSearch::result() const {
  Decided result;
  if (preparation_ == Preparation::noSolution) {
    result.proof = state_.known ? Proof::optimum : Proof::noSolution;
    result.best = result.bound = state_.known;
  }
  const bool isTooLarge = isLate_ && !ended_;
  if (preparation_ == Preparation::stopped) {
    result.undecided = isTooLarge ? Undecided::tooLarge : Undecided::stopped;
    if (!saved_) return result;
    result.count = saved_->solutions;
    result.nodes = saved_->nodes;
    result.best = saved_->best;
    result.bound = saved_->bound;
  }
  if (preparation_ == Preparation::unknownSteps) result.undecided = Undecided::unknownSteps;
  if (preparation_ == Preparation::noFiniteBox) {
    result.undecided = Undecided::noFiniteBox;
    result.variable = decision_.unboundedVariable();
  }
  if (preparation_ != Preparation::ready) return result;
  if (state_.parts == 1 && isComplete()) return joinParts(settings_.aim, std::span(&state_, 1));
  result.undecided = state_.isEnough ? Undecided::enough
                     : isComplete()  ? Undecided::no
                     : isTooLarge    ? Undecided::tooLarge
                                     : Undecided::stopped;
  if (isTooLarge) result.estimatedSeconds = restTime().count();
  result.count = state_.isEnough ? state_.solutionsFiled() : state_.solutions;
  result.nodes = state_.nodes;
  if (owner_ == TreeOwner::search) {
    // Those of a part are of the subtrees that are done: they add up.
    result.count = std::max(result.count, solutionsBefore_ + found_);
    result.nodes = nodesBefore_ + decision_.nodes();
  }
  result.best = state_.best;
  result.bound = state_.bound;
  return result;
}

PartResult PartSearch::partResult() const {
  return {state_.part, state_.parts, state_.done.size(), state_.doneCount(), isComplete()};
}

}  // namespace starsift
