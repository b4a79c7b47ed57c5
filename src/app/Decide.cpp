#include "app/Decide.h"

#include "app/SearchGoal.h"
#include "system/Console.h"

namespace starsift {

namespace {

/// Seconds that a complete search may take if no time is given.
constexpr double usualTime = 600;

/// Variables with which the making of a lattice and its first pass may take seconds.
constexpr Index manyVariables = 100;

/// Seconds from which on a tree leaves its state in a file.
constexpr std::chrono::duration<double> longWalk{10};

}  // namespace

Decide::Decide(YLattice<long double>& lattice, SearchWatch& watch, DirectStars& stars,
               const SeekOptions& options, const std::optional<TreeFiles>& files)
    : lattice_(lattice),
      watch_(watch),
      stars_(stars),
      options_(options),
      decision_(lattice.problemAsRead()),
      settings_(deciderSettings(lattice, options)) {
  if (!files || !canKeepTree()) return;
  files_ = files;
  settings_.longWalk = longWalk;
  openTree();
}

bool Decide::canKeepTree() const {
  // Of several solutions a state doesn't say which ones were found before its tree was made.
  const bool isOneGoal = wantsBest() || settings_.wanted.value_or(1) == 1;
  const bool readsFiles = lattice_.params().bench <= 0;
  return readsFiles && options_.prove.value_or(true) && isOneGoal && !hasNormLimit(lattice_);
}

void Decide::openTree() {
  const std::optional<TreeState> saved = readTreeState(files_->path, STARSIFT_VERSION);
  if (!saved) return;
  const bool isOfProblem = saved->problem == problemDigest(problem());
  if (isOfProblem && saved->goal != goalOf(settings_, options_)) {
    remarkStream() << "*** " << files_->path << " is of a search for " << saved->goal
                   << ": this one leaves no state" << endLine();
    stampOutputTime();
    settings_.longWalk.reset();
    return;
  }
  makeTree(saved);
}

void Decide::makeTree(const std::optional<TreeState>& saved) {
  tree_.emplace(problem(), settings_, watch_, stars_, options_, *files_, saved, TreeOwner::search);
}

bool Decide::isDue() const {
  if (!options_.prove.value_or(true)) return false;
  if (!isMade_) return true;
  const bool isOpen = result_.undecided == Undecided::noFiniteBox && !result_.best;
  if (!wantsBest() || !(isOpen || result_.undecided == Undecided::tooLarge)) return false;
  const std::optional<QQ> known = stars_.leastKnownNorm();
  if (isOpen) return known.has_value();
  const bool isBetter = known && (!result_.best || *known < *result_.best);
  return isBetter && Clock::now() - lastEnd_ >= lastTime_;
}

bool Decide::isWorthRelaxing() const {
  return options_.prove.value_or(true) && problem().rx.dimension() >= manyVariables;
}

Decider Decide::makeDecider() {
  settings_.allowed = allowedTime();
  if (wantsBest()) settings_.known = stars_.leastKnownNorm();
  settings_.seed = lattice_.seed();
  return {decision_, *this, settings_};
}

std::chrono::duration<double> Decide::allowedTime() const {
  return watch_.timeLeft().value_or(std::chrono::duration<double>(usualTime));
}

bool Decide::relax() {
  result_ = makeDecider().relax();
  if (ended_) throw SearchEnded(*ended_);
  return result_.proof != Proof::none || meetsNorms_;
}

bool Decide::run() {
  isMade_ = true;
  const Clock::time_point start = Clock::now();
  if (!tree_) decideAtOnce();
  if (tree_) walkLongTree();
  watch_.hideTree();
  lastEnd_ = Clock::now();
  lastTime_ = lastEnd_ - start;
  if (ended_) throw SearchEnded(*ended_);
  return result_.proof != Proof::none || result_.undecided == Undecided::enough || meetsNorms_ ||
         hasNoBest();
}

Array<Star<QQ>> Decide::knownStars() const {
  return wantsBest() || options_.count ? Array<Star<QQ>>() : lattice_.starsFiledAfter(0);
}

void Decide::decideAtOnce() {
  Decider decider = makeDecider();
  for (const auto& star : knownStars()) decider.setKnown(star);
  result_ = decider.run();
  nodesBefore_ = result_.nodes;
  if (result_.undecided == Undecided::left) makeTree({});
}

void Decide::walkLongTree() {
  const std::chrono::duration<double> allowed = allowedTime();
  if (!settings_.isForced && tree_->restTime() > allowed) {
    result_.undecided = Undecided::tooLarge;
    result_.estimatedSeconds = tree_->restTime().count();
    return;
  }
  for (const auto& star : knownStars()) tree_->setKnown(star);
  const std::optional<QQ> bound = result_.bound;
  ended_ = tree_->run(settings_.isForced ? std::nullopt : std::optional(allowed));
  result_ = tree_->result();
  result_.nodes += nodesBefore_;
  if (!result_.isComplete() && bound && (!result_.bound || *result_.bound < *bound))
    result_.bound = bound;
}

void Decide::finish() {
  if (tree_) tree_->finish();
}

void Decide::removeState() {
  if (tree_) tree_->removeState();
}

bool Decide::hasNoBest() const {
  return result_.undecided == Undecided::unbounded && !hasNormLimit(lattice_);
}

Step Decide::found(const Star<QQ>& judged) {
  if (options_.count) return Step::goOn;
  meetsNorms_ = stars_.add(judged, wantsBest());
  return meetsNorms_ ? Step::stop : Step::goOn;
}

Step Decide::progress(double share, std::uint64_t nodes) {
  watch_.showTree(share, nodes, stars_.count());
  ended_ = watch_.endFound();
  return ended_ ? Step::stop : Step::goOn;
}

}  // namespace starsift
