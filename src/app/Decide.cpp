#include "app/Decide.h"

#include <algorithm>
#include <thread>
#include <utility>

namespace starsift {

namespace {

/// Seconds that a complete search may take if no time is given.
constexpr double usualTime = 600;

/// Solutions whose times a status may show.
constexpr Index shownStars = 3;

bool hasNormLimit(const YLattice<long double>& lattice) {
  return lattice.withLive([](const auto& live) { return live.params.hasNormLimit(); });
}

DeciderSettings settingsOf(const YLattice<long double>& lattice, const SeekOptions& options) {
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

}  // namespace

Decide::Decide(YLattice<long double>& lattice, SearchWatch& watch, StarStore& store,
               const SeekOptions& options)
    : lattice_(lattice),
      watch_(watch),
      store_(store),
      options_(options),
      decision_(lattice.problemAsRead()),
      settings_(settingsOf(lattice, options)) {}

bool Decide::run() {
  isMade_ = true;
  settings_.allowed = watch_.timeLeft().value_or(std::chrono::duration<double>(usualTime));
  if (wantsBest()) settings_.known = leastKnownNorm();
  settings_.seed = lattice_.seed();
  Decider decider(decision_, *this, settings_);
  if (!wantsBest() && !options_.count)
    for (const auto& star : lattice_.starsFiledAfter(0)) decider.setKnown(star);
  result_ = decider.run();
  watch_.hideTree();
  if (ended_) throw SearchEnded(*ended_);
  return result_.proof != Proof::none || result_.undecided == Undecided::enough || meetsNorms_;
}

std::optional<QQ> Decide::leastKnownNorm() const {
  std::optional<QQ> least;
  // A benchmark run doesn't know the stars of the file.
  if (!(lattice_.params().bench > 0)) least = store_.leastTargetNorm();
  for (const auto& star : lattice_.starsFiledAfter(0))
    if (!least || star.targetNorm < *least) least = star.targetNorm;
  return least;
}

Step Decide::found(const Star<QQ>& judged) {
  if (options_.count) return Step::goOn;
  Star<QQ> star(judged);
  lattice_.signStar(star);
  store_.add(star);
  meetsNorms_ = lattice_.meetsNorms(star);
  if (firstStars_.dimension() < shownStars || wantsBest())
    append(firstStars_, std::move(star));
  else
    ++furtherStars_;
  return meetsNorms_ ? Step::stop : Step::goOn;
}

Step Decide::progress(double share, std::uint64_t nodes) {
  try {
    watch_.showTree(share, nodes, starCount());
    watch_.look();
    return Step::goOn;
  } catch (const SearchEnded& ended) {
    ended_ = ended.reason();
    return Step::stop;
  }
}

}  // namespace starsift
