#include "app/SearchGoal.h"

#include <algorithm>
#include <thread>

namespace starsift {

bool hasNormLimit(const YLattice<long double>& lattice) {
  return lattice.withLive([](const auto& live) { return live.params.hasNormLimit(); });
}

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

bool wantsFurther(const YLattice<long double>& lattice, const DirectStars& stars, bool wantsBest) {
  return wantsBest ||
         (lattice.params().sol == 1 && stars.count() == 0 && lattice.solutionCount() == 0);
}

std::string goalOf(const DeciderSettings& settings, const SeekOptions& options) {
  if (options.count) return "count";
  if (settings.aim == Aim::best) return "best";
  return settings.wanted ? std::to_string(*settings.wanted) : "all";
}

}  // namespace starsift
