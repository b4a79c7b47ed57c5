#include "app/StarStore.h"

#include <utility>

#include "app/Sift.h"

namespace starsift {

namespace {

/// Time between two writings, as a multiple of what the last one took.
constexpr int pausePerSave = 10;

}  // namespace

StarStore::StarStore(const YLattice<long double>& search, std::function<Clock::time_point()> now)
    : now_(std::move(now)) {
  stars_.takeProblem(search);
  stars_.tryStandardPrecision();
  stars_.readStarsExactly(false);
  cleanStars(stars_);
}

bool StarStore::isDue(const YLattice<long double>& search) const {
  return search.solutionCount() > taken_ && now_() >= nextSave_;
}

void StarStore::save(const YLattice<long double>& search) {
  const auto start = now_();
  take(search);
  cleanStars(stars_);
  writeStars(stars_);
  const auto end = now_();
  nextSave_ = end + pausePerSave * (end - start);
}

bool StarStore::saveAndReport(const YLattice<long double>& search, std::ostream& report) {
  take(search);
  saveStars(stars_, report);
  return stars_.hasStars();
}

void StarStore::take(const YLattice<long double>& search) {
  const Index found = search.solutionCount();
  stars_.addStars(search.solutionStars());
  taken_ = found;
}

}  // namespace starsift
