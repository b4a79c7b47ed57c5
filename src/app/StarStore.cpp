#include "app/StarStore.h"

#include <utility>

#include "app/FolderLock.h"
#include "app/RescueFile.h"
#include "app/Sift.h"

namespace starsift {

StarStore::StarStore(const YLattice<long double>& search, std::function<Clock::time_point()> now)
    : now_(std::move(now)) {
  search.withLive([this](const auto& lattice) { stars_.takeProblem(lattice.file); });
  // A file that was not read counts as written by others.
  if (search.params().bench <= 0) stars_.mergeFile();
}

bool StarStore::hasNews(const YLattice<long double>& search) const {
  return search.lastFiled() > taken_;
}

bool StarStore::isDue(const YLattice<long double>& search) const {
  return hasNews(search) && pace_.isDue(now_());
}

void StarStore::save(const YLattice<long double>& search) {
  const auto start = now_();
  take(search);
  replaceFile();
  pace_.saved(start, now_());
}

bool StarStore::report(std::ostream& stream) {
  reportStars(stars_, stream);
  return stars_.hasStars();
}

void StarStore::replaceFile() {
  const FolderLock lock(stars_.path());
  tidyStars(stars_);
  Commit commit = stars_.writeIfCurrent();
  if (commit == Commit::written) return;
  RescueFile rescue(stars_);
  for (int i = 0; i < mergeLimit && commit == Commit::changed; ++i) {
    stars_.mergeFile();
    commit = stars_.writeIfCurrent();
  }
  if (commit == Commit::written)
    rescue.remove();
  else
    rescue.leave();
}

void StarStore::take(const YLattice<long double>& search) {
  stars_.addStars(search.starsFiledAfter(taken_), search.problemNumber());
  taken_ = search.lastFiled();
}

}  // namespace starsift
