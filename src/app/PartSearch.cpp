#include "app/PartSearch.h"

#include <span>
#include <utility>

#include "files/WriteOrFail.h"
#include "system/Failure.h"

namespace starsift {

namespace {

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

std::string goalOf(const DeciderSettings& settings, const SeekOptions& options) {
  if (options.count) return "count";
  if (settings.aim == Aim::best) return "best";
  return settings.wanted ? std::to_string(*settings.wanted) : "all";
}

TreeState partIdentity(const Vanu<QQ>& problem, const DeciderSettings& settings,
                       const SeekOptions& options) {
  TreeState state;
  state.version = STARSIFT_VERSION;
  state.problem = problemDigest(problem);
  state.goal = goalOf(settings, options);
  state.part = options.part->part;
  state.parts = options.part->parts;
  return state;
}

PartSearch::PartSearch(YLattice<long double>& lattice, SearchWatch& watch, DirectStars& stars,
                       const SeekOptions& options, std::string path, std::optional<QQ> known,
                       Index filed)
    : watch_(watch),
      stars_(stars),
      options_(options),
      path_(std::move(path)),
      settings_(deciderSettings(lattice, options)),
      known_(std::move(known)),
      filed_(filed),
      decision_(lattice.problemAsRead()),
      saved_(readTreeState(path_, STARSIFT_VERSION)),
      state_(partIdentity(decision_.problem(), settings_, options)) {
  if (lattice.withLive([](const auto& live) { return live.params.hasNormLimit(); }))
    fail("A part of a search proves the optimum, or has solutions enough: not with tnorm or snorm");
  if (saved_) requireSame(*saved_, state_, path_);
}

std::optional<QQ> PartSearch::leastNorm() const {
  const std::optional<QQ> filed = stars_.leastKnownNorm();
  return filed && (!known_ || *filed < *known_) ? filed : known_;
}

void PartSearch::requireSolutions() const {
  if (!saved_ || options_.count) return;
  const bool isBest = settings_.aim == Aim::best;
  const std::optional<QQ> least = isBest ? leastNorm() : std::nullopt;
  const bool areThere = isBest ? !saved_->best || (least && *least <= *saved_->best)
                               : static_cast<std::uint64_t>(filed_) >= saved_->solutionsFiled();
  if (!areThere)
    fail("File " + path_ + " is of a search that has found more than is in its solution file: " +
         "remove it to begin anew");
}

void PartSearch::run() {
  requireSolutions();
  if (saved_ && (saved_->isComplete() || saved_->isEnough)) {
    state_ = *saved_;
    hasTree_ = true;
  } else {
    PartWalk walk(decision_, *this, settings_.aim, state_);
    if (makeTree(walk) && preparation_ == Preparation::ready) walkRest(walk);
  }
  watch_.hideTree();
  if (ended_) throw SearchEnded(*ended_);
  throw SearchEnded(SearchEnd::decided);
}

bool PartSearch::makeTree(PartWalk& walk) {
  preparation_ = walk.prepare([this] { return look() == Step::goOn; });
  if (preparation_ != Preparation::ready && preparation_ != Preparation::noSolution) return false;
  if (saved_ && !walk.goOn(*saved_))
    fail("File " + path_ + " is of another tree, of another machine: remove it to begin anew");
  hasTree_ = true;
  takeState(walk);
  // A state that can't be written is fatal before the walk, not after it.
  writeState();
  return true;
}

void PartSearch::walkRest(PartWalk& walk) {
  walk_ = &walk;
  walk.run(settings_.aim == Aim::best ? leastNorm() : std::nullopt, settings_.threads);
  walk_ = nullptr;
  takeState(walk);
}

void PartSearch::takeState(const PartWalk& walk) {
  state_ = walk.state();
  state_.isEnough = isEnough_;
  using Milliseconds = std::chrono::milliseconds;
  state_.milliseconds = static_cast<std::uint64_t>(
      std::chrono::duration_cast<Milliseconds>(watch_.elapsed()).count());
  if (saved_) state_.milliseconds += saved_->milliseconds;
}

Step PartSearch::look() {
  ended_ = watch_.endFound();
  return ended_ ? Step::stop : Step::goOn;
}

Step PartSearch::found(const Star<QQ>& judged) {
  if (options_.count) return Step::goOn;
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
  if (!pace_.isDue(now) || watch_.hasUnsaved()) return step;
  takeState(*walk_);
  writeState();
  pace_.saved(now, SavePace::Clock::now());
  return step;
}

void PartSearch::finish() {
  if (hasTree_) writeState();
}

void PartSearch::writeState() const {
  if (!writeOrFail([this] { return writeTreeState(path_, state_); }))
    fail("Could not write file: " + path_);
}

Decided PartSearch::result() const {
  Decided result;
  if (preparation_ == Preparation::noSolution) result.proof = Proof::noSolution;
  if (preparation_ == Preparation::unknownSteps) result.undecided = Undecided::unknownSteps;
  if (preparation_ == Preparation::noFiniteBox) {
    result.undecided = Undecided::noFiniteBox;
    result.variable = decision_.unboundedVariable();
  }
  if (preparation_ != Preparation::ready) return result;
  if (state_.parts == 1 && isComplete()) return joinParts(settings_.aim, std::span(&state_, 1));
  result.undecided = state_.isEnough ? Undecided::enough
                     : isComplete()  ? Undecided::no
                                     : Undecided::stopped;
  result.count = state_.isEnough ? state_.solutionsFiled() : state_.solutions;
  result.nodes = state_.nodes;
  result.best = state_.best;
  result.bound = state_.bound;
  return result;
}

PartResult PartSearch::partResult() const {
  return {state_.part, state_.parts, state_.done.size(), state_.doneCount(), isComplete()};
}

}  // namespace starsift
