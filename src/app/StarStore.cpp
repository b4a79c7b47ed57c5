#include "app/StarStore.h"

#include <utility>

#include "app/Sift.h"

namespace starsift {

StarStore::StarStore(const YLattice<long double>& search, std::function<Clock::time_point()> now)
    : now_(std::move(now)) {
  stars_.takeProblem(search);
  stars_.tryStandardPrecision();
  stars_.readStarsExactly(false);
  cleanStars(stars_);
}

bool StarStore::isDue(const YLattice<long double>& search) const {
  return search.solutionCount() > taken_ && pace_.isDue(now_());
}

void StarStore::save(const YLattice<long double>& search) {
  const auto start = now_();
  take(search);
  cleanStars(stars_);
  writeStars(stars_);
  pace_.saved(start, now_());
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
