#include "app/StarStore.h"

#include "app/Sift.h"

namespace starsift {

namespace {

/// Time between two writings, as a multiple of what the last one took.
constexpr int pausePerSave = 10;

Index solutionCount(const YLattice<long double>& search) {
  return search.withLive([](const auto& lattice) { return lattice.solutions.dimension(); });
}

}  // namespace

StarStore::StarStore(const YLattice<long double>& search) {
  stars_.takeProblem(search);
  stars_.tryStandardPrecision();
  stars_.readStarsExactly(false);
  cleanStars(stars_);
}

bool StarStore::isDue(const YLattice<long double>& search) const {
  return solutionCount(search) > taken_ && Clock::now() >= nextSave_;
}

void StarStore::save(YLattice<long double>& search) {
  const auto start = Clock::now();
  take(search);
  cleanStars(stars_);
  writeStars(stars_);
  nextSave_ = Clock::now() + pausePerSave * (Clock::now() - start);
}

bool StarStore::saveAndReport(YLattice<long double>& search, std::ostream& report) {
  take(search);
  saveStars(stars_, report);
  return stars_.withLive([](const auto& lattice) { return lattice.stars.isSet(); });
}

void StarStore::take(YLattice<long double>& search) {
  taken_ = solutionCount(search);
  stars_.useExtendedPrecision();
  stars_.takeSolutions(search);
  stars_.tryStandardPrecision();
}

}  // namespace starsift
