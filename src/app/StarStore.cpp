#include "app/StarStore.h"

#include <utility>

#include "app/FolderLock.h"
#include "app/RescueFile.h"
#include "app/Sift.h"

namespace starsift {

StarStore::StarStore(const YLattice<long double>& search, std::function<Clock::time_point()> now)
    : now_(std::move(now)) {
  search.withLive([this](const auto& lattice) { stars_.takeProblem(lattice.file); });
  // Without a known identity the file counts as written by others.
  if (search.params().bench > 0) return;
  known_ = fileIdentity(stars_.path());
  readFile();
}

bool StarStore::hasNews(const YLattice<long double>& search) const {
  return search.lastFiled() > taken_ || added_.isSet();
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

void StarStore::add(const Star<QQ>& star) {
  append(added_, star);
}

bool StarStore::report(std::ostream& stream) {
  reportStars(stars_, stream);
  return stars_.hasStars();
}

void StarStore::readFile() {
  const Index known = stars_.starCount();
  stars_.readStarsExactly();
  stars_.checkStars(known + 1);
  tidyStars(stars_);
}

void StarStore::replaceFile() {
  const FolderLock lock(stars_.path());
  tidyStars(stars_);
  if (fileIdentity(stars_.path()) == known_) {
    known_ = stars_.write().identity;
    return;
  }
  RescueFile rescue(stars_);
  readFile();
  const WrittenFile written = stars_.write();
  known_ = written.identity;
  if (written.isWritten)
    rescue.remove();
  else
    rescue.leave();
}

void StarStore::take(const YLattice<long double>& search) {
  stars_.addStars(search.starsFiledAfter(taken_), search.problemNumber());
  taken_ = search.lastFiled();
  stars_.addStars(std::exchange(added_, {}), search.problemNumber());
}

}  // namespace starsift
