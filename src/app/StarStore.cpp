#include "app/StarStore.h"

#include <utility>

#include "app/FolderLock.h"
#include "app/RescueFile.h"
#include "app/Sift.h"

namespace starsift {

StarStore::StarStore(const YLattice<long double>& search, std::function<Clock::time_point()> now)
    : now_(std::move(now)) {
  stars_.takeProblem(search);
  stars_.tryStandardPrecision();
  solFile_ = stars_.withLive([](const auto& lattice) { return lattice.file.path(); });
  known_ = fileIdentity(solFile_);
  stars_.readStarsExactly(false);
  cleanStars(stars_);
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
  const FolderLock lock(solFile_);
  cleanStars(stars_);
  if (fileIdentity(solFile_) == known_) {
    known_ = stars_.writeStarsTo(solFile_).identity;
    return;
  }
  RescueFile rescue(stars_, solFile_);
  stars_.readStarsExactly(false);
  cleanStars(stars_);
  const WrittenFile written = stars_.writeStarsTo(solFile_);
  known_ = written.identity;
  if (written.isWritten)
    rescue.remove();
  else
    rescue.leave();
}

void StarStore::take(const YLattice<long double>& search) {
  stars_.addStars(search.starsFiledAfter(taken_));
  taken_ = search.lastFiled();
}

}  // namespace starsift
