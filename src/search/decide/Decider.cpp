#include "search/decide/Decider.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace starsift {

namespace {

/// Trees below this are walked without an estimate by probes, and without a pruned try.
constexpr double smallTree = 1e6;

/// Trees below this are walked before a linear program is solved.
constexpr double tinyTree = 1e4;

/// Of the linear programs for one tree.
constexpr std::chrono::seconds programTime{2};

/// Probes of a tree, and of one above so many nodes;
/// they end after a time that linear programs may need.
constexpr std::uint32_t fewProbes = 400;
constexpr std::uint32_t manyProbes = 4000;
constexpr double largeTree = 1e7;
constexpr std::chrono::seconds probeTime{1};

/// F of the pruned try, and the largest share of the nodes that it takes by experience.
constexpr double mildPruning = 0.3;
constexpr double prunedShare = 0.05;

/// Of the pruned try before a tree that is left to the caller: no state keeps how far it is.
constexpr std::chrono::seconds longestTry{60};

/// Nodes of the first short walk to the best solution; each further one may have four times as
/// many.
constexpr std::uint64_t firstWalk = 10'000;
constexpr std::uint64_t walkGrowth = 4;

/// Nodes of a tree that seems too large: the estimate sees the lengths of vectors only, and other
/// cuts may leave a few nodes.
constexpr std::uint64_t briefWalk = 1'000'000;

/// And its time: over rationals, for bases far from orthogonal, a walk makes some hundred nodes a
/// second.
constexpr std::chrono::seconds briefTime{5};

/// Nodes of the walk that measures the speed, some hundredths of a second unless it is over
/// rationals, its greatest time, and the least time that it counts as.
constexpr std::uint64_t speedNodes = 50'000;
constexpr std::chrono::seconds speedTime{1};
constexpr double leastTime = 1e-4;

}  // namespace

/// Passes news on to the listener, each solution once, and ends a walk.
class Decider::Relay : public DecisionListener {
 public:
  explicit Relay(Decider& decider) : decider_(decider) {}

  Step found(const Star<QQ>& star) override {
    ++decider_.found_;
    if (decider_.settings_.aim == Aim::best) decider_.result_.best = star.targetNorm;
    if (decider_.isKnown(star)) return Step::goOn;
    ++decider_.told_;
    if (decider_.listener_.found(star) == Step::stop) {
      decider_.isStopped_ = true;
      return Step::stop;
    }
    decider_.isEnough_ = decider_.settings_.wanted && decider_.told_ >= *decider_.settings_.wanted;
    return decider_.isEnough_ ? Step::stop : Step::goOn;
  }

  Step progress(double share, std::uint64_t nodes) override {
    if (decider_.listener_.progress(share, nodes) == Step::stop) decider_.isStopped_ = true;
    return decider_.isStopped_ || decider_.isLate() ? Step::stop : Step::goOn;
  }

 private:
  Decider& decider_;
};

/// Lets a walk pass that will be repeated.
class Decider::Deaf : public DecisionListener {
 public:
  explicit Deaf(Decider& decider) : relay_(decider) {}

  Step found(const Star<QQ>&) override { return Step::goOn; }
  Step progress(double, std::uint64_t nodes) override { return relay_.progress(0, nodes); }

 private:
  Relay relay_;
};

bool Decider::isKnown(const Star<QQ>& star) {
  // If all solutions are looked for, there is one walk, which finds each one once.
  return settings_.wanted ? !known_.add(star.x()) : known_.contains(star.x());
}

bool Decider::isLate() const {
  const Clock::time_point now = Clock::now();
  return (walkEnd_ && now >= *walkEnd_) ||
         (!settings_.isForced && now - start_ >= settings_.allowed);
}

void Decider::setKnown(const Star<QQ>& star) {
  if (known_.add(star.x())) ++told_;
}

Decided Decider::run() {
  start_ = Clock::now();
  result_.best = settings_.known;
  if (prepare()) {
    const bool isSmall = estimate();
    if (settings_.wanted && expectedNodes_ > smallTree && !isStopped_ && !isEnough_) walkPruned();
    if (!isSmall) {
      nodesLeft_ = briefWalk;
      walkEnd_ = Clock::now() + briefTime;
    }
    if (isStopped_)
      result_.undecided = Undecided::stopped;
    else if (isEnough_)
      result_.undecided = Undecided::enough;
    else
      walk();
  }
  result_.nodes = decision_.nodes();
  return result_;
}

Decided Decider::relax() {
  start_ = Clock::now();
  result_.best = settings_.known;
  const Preparation end =
      decision_.relax(settings_.aim, result_.best, [this] { return mayGoOn(); });
  if (end == Preparation::noSolution) result_.proof = Proof::noSolution;
  tellMet();
  result_.bound = decision_.leastNorm();
  if (result_.best && result_.bound && *result_.best <= *result_.bound)
    result_.proof = Proof::optimum;
  return result_;
}

bool Decider::mayGoOn() {
  isStopped_ = isStopped_ || listener_.progress(0, decision_.nodes()) == Step::stop;
  return !isStopped_;
}

bool Decider::prepare() {
  bestOfTree_ = result_.best;
  const Preparation prepared =
      decision_.prepare(settings_.aim, result_.best, [this] { return mayGoOn(); });
  tellMet();
  result_.bound = decision_.leastNorm();
  switch (prepared) {
    case Preparation::ready:
      return true;
    case Preparation::noSolution:
      result_.proof = Proof::noSolution;
      return false;
    case Preparation::noFiniteBox:
      reportOpenBox();
      return false;
    case Preparation::unknownSteps:
      result_.undecided = Undecided::unknownSteps;
      return false;
    case Preparation::stopped:
      result_.undecided = Undecided::stopped;
      return false;
  }
  return false;
}

void Decider::tellMet() {
  if (!decision_.metSolution()) return;
  Relay(*this).found(*decision_.metSolution());
  bestOfTree_ = result_.best;
}

void Decider::reportOpenBox() {
  result_.undecided = Undecided::noFiniteBox;
  result_.variable = decision_.unboundedVariable();
  if (!result_.best || decision_.fallingDirection().dimension() == 0) return;
  result_.undecided = Undecided::unbounded;
  result_.direction = pointText(decision_.fallingDirection());
}

/// Linear programs are worth their time only if the tree isn't walked in less.
void Decider::raiseBound() {
  const Clock::time_point start = Clock::now();
  decision_.raiseBound([this, start] { return mayGoOn() && Clock::now() - start < programTime; },
                       [this] { return mayGoOn(); });
  result_.bound = decision_.leastNorm();
}

bool Decider::estimate() {
  estimateNodes(0);
  if (settings_.aim == Aim::best && expectedNodes_ > tinyTree) {
    raiseBound();
    estimateNodes(0);
  }
  if (expectedNodes_ > smallTree) estimateNodes(fewProbes);
  if (expectedNodes_ > largeTree) estimateNodes(manyProbes);
  if (expectedNodes_ <= smallTree || isStopped_) return true;
  expectedTime_ = std::chrono::duration<double>(expectedNodes_ / measureSpeed());
  if (isEnough_) return true;
  if (settings_.isForced || expectedTime_ <= settings_.allowed) return true;
  result_.undecided = Undecided::tooLarge;
  result_.estimatedSeconds = expectedTime_.count();
  return false;
}

void Decider::estimateNodes(std::uint32_t probes) {
  const Clock::time_point start = Clock::now();
  const TreeEstimate tree =
      decision_.estimate({probes, settings_.seed,
                          [this, start] { return mayGoOn() && Clock::now() - start < probeTime; }});
  expectedNodes_ = tree.gaussianNodes;
  if (tree.sampledNodes > 0) expectedNodes_ = std::min(expectedNodes_, tree.sampledNodes);
}

double Decider::measureSpeed() {
  const std::uint64_t before = decision_.nodes();
  const Clock::time_point start = Clock::now();
  walkEnd_ = start + speedTime;
  // What is found counts at once, unless every solution is told by the walk that finds it.
  if (settings_.aim == Aim::best || settings_.wanted) {
    walk(std::nullopt, speedNodes, 1);
  } else {
    Deaf deaf(*this);
    EnumerationSettings settings;
    settings.nodeLimit = speedNodes;
    decision_.run(deaf, settings);
  }
  walkEnd_.reset();
  const std::chrono::duration<double> time = Clock::now() - start;
  const auto nodes = static_cast<double>(std::max<std::uint64_t>(decision_.nodes() - before, 1));
  const unsigned cores = std::max(std::thread::hardware_concurrency(), 1U);
  return std::min(settings_.threads, cores) * nodes / std::max(time.count(), leastTime);
}

void Decider::walkPruned() {
  const bool fits = result_.undecided != Undecided::tooLarge ||
                    prunedShare * result_.estimatedSeconds <= settings_.allowed.count();
  if (!fits) return;
  if (result_.undecided != Undecided::tooLarge && isLong(expectedTime_))
    walkEnd_ = Clock::now() + longestTry;
  walk(mildPruning, std::nullopt, settings_.threads);
  walkEnd_.reset();
}

void Decider::walk() {
  if (settings_.aim == Aim::best)
    walkToBest();
  else if (!nodesLeft_ && isLong(expectedTime_))
    result_.undecided = Undecided::left;
  else
    conclude(walk(std::nullopt, nodesLeft_, settings_.threads));
}

void Decider::walkToBest() {
  EnumerationEnd end = EnumerationEnd::limit;
  for (std::uint64_t limit = firstWalk; end == EnumerationEnd::limit; limit *= walkGrowth) {
    if (result_.best != bestOfTree_ && !prepare()) return;
    if (limit > firstWalk && !nodesLeft_ && isLong(Clock::now() - start_)) {
      result_.undecided = Undecided::left;
      return;
    }
    end = walk(std::nullopt, limit, settings_.threads);
    if (nodesLeft_ && limit >= *nodesLeft_) break;
  }
  conclude(end);
}

EnumerationEnd Decider::walk(const std::optional<double>& pruning,
                             const std::optional<std::uint64_t>& nodeLimit, unsigned threads) {
  found_ = 0;
  EnumerationSettings settings;
  settings.pruning = pruning;
  settings.nodeLimit = nodeLimit;
  settings.threads = threads;
  Relay relay(*this);
  return decision_.run(relay, settings);
}

void Decider::conclude(EnumerationEnd end) {
  result_.count = settings_.aim == Aim::all ? found_ : told_;
  if (end != EnumerationEnd::complete) {
    result_.undecided = isEnough_    ? Undecided::enough
                        : isStopped_ ? Undecided::stopped
                                     : Undecided::tooLarge;
    return;
  }
  result_.undecided = Undecided::no;
  if (settings_.aim == Aim::all) {
    result_.proof = found_ == 0 ? Proof::noSolution : Proof::allFound;
  } else {
    result_.proof = result_.best ? Proof::optimum : Proof::noSolution;
    result_.bound = result_.best;
  }
}

}  // namespace starsift
