#include "app/Decide.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace starsift {

namespace {

/// Seconds that a complete search may take if no time is given.
constexpr double usualTime = 600;

/// Variables with which the making of a lattice and its first pass may take seconds.
constexpr Index manyVariables = 100;

bool hasNormLimit(const YLattice<long double>& lattice) {
  return lattice.withLive([](const auto& live) { return live.params.hasNormLimit(); });
}

}  // namespace

DeciderSettings deciderSettings(const YLattice<long double>& lattice, const SeekOptions& options) {
  DeciderSettings settings;
  settings.isForced = options.prove.value_or(false);
  settings.threads = options.threads.value_or(std::max(std::thread::hardware_concurrency(), 1U));
  const long wanted = lattice.params().sol;
  if (options.count) return settings;
  if (lattice.hasTargets() && (lattice.seeksBest() || hasNormLimit(lattice)))
    settings.aim = Aim::best;
  else if (wanted > 0)
    settings.wanted = static_cast<std::uint64_t>(wanted);
  return settings;
}

Decide::Decide(YLattice<long double>& lattice, SearchWatch& watch, DirectStars& stars,
               const SeekOptions& options)
    : lattice_(lattice),
      watch_(watch),
      stars_(stars),
      options_(options),
      decision_(lattice.problemAsRead()),
      settings_(deciderSettings(lattice, options)) {}

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
  settings_.allowed = watch_.timeLeft().value_or(std::chrono::duration<double>(usualTime));
  if (wantsBest()) settings_.known = stars_.leastKnownNorm();
  settings_.seed = lattice_.seed();
  return {decision_, *this, settings_};
}

bool Decide::relax() {
  result_ = makeDecider().relax();
  if (ended_) throw SearchEnded(*ended_);
  return result_.proof != Proof::none || meetsNorms_;
}

bool Decide::run() {
  isMade_ = true;
  const Clock::time_point start = Clock::now();
  Decider decider = makeDecider();
  if (!wantsBest() && !options_.count)
    for (const auto& star : lattice_.starsFiledAfter(0)) decider.setKnown(star);
  result_ = decider.run();
  watch_.hideTree();
  lastEnd_ = Clock::now();
  lastTime_ = lastEnd_ - start;
  if (ended_) throw SearchEnded(*ended_);
  return result_.proof != Proof::none || result_.undecided == Undecided::enough || meetsNorms_ ||
         hasNoBest();
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
