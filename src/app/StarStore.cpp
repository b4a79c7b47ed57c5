#include "app/StarStore.h"

#include <iostream>
#include <optional>
#include <utility>

#include "app/Sift.h"
#include "files/ResultFile.h"
#include "system/Console.h"
#include "system/Exceptions.h"
#include "system/Failure.h"

namespace starsift {

namespace {

void tell(const std::string& text) {
  std::cerr << "*** " << text << endLine();
  stampOutputTime();
}

bool canWrite(const std::string& path) {
  try {
    return ResultFile(path).isOpen();
  } catch (const WriteException&) {
    return false;
  } catch (const LinkException&) {
    return false;
  }
}

}  // namespace

StarStore* StarStore::present = nullptr;

StarStore::StarStore(const YLattice<long double>& search, std::function<Clock::time_point()> now)
    : search_(search), now_(std::move(now)) {
  search.withLive([this](const auto& lattice) { stars_.takeProblem(lattice.file); });
  // A file that was not read counts as written by others.
  if (search.params().bench <= 0) stars_.mergeFile();
  // Last: an exception above leaves no store behind.
  present = this;
}

StarStore::~StarStore() {
  if (present == this) present = nullptr;
}

void StarStore::secureUnsaved() {
  StarStore* const store = std::exchange(present, nullptr);
  if (store == nullptr || !store->hasNews(store->search_) || !rescueRemark().empty()) return;
  // One fatal report is enough.
  setFailureHandler([](std::string_view message) { throw GeneralException(std::string(message)); });
  try {
    store->take(store->search_);
    const RescueFile rescue(store->stars_);
  } catch (const GeneralException&) {
    // The lattice is broken in the middle of a step; what was saved before is on disk.
  }
  setFailureHandler(nullptr);
}

bool StarStore::hasNews(const YLattice<long double>& search) const {
  return isAhead_ || search.lastFiled() > taken_ || added_ > 0;
}

bool StarStore::isDue(const YLattice<long double>& search) const {
  if (!hasNews(search)) return false;
  const auto now = now_();
  const Index added = newCount(search);
  return pace_.isDue(now, written_, added) &&
         !(end_ && now + pace_.expected(written_, added) >= *end_);
}

Index StarStore::newCount(const YLattice<long double>& search) const {
  return search.lastFiled() - taken_ + added_;
}

void StarStore::tellIfReadOnly() const {
  if (canWrite(stars_.path())) return;
  tell("File " + stars_.path() +
       " can't be written: what is found will be in a file of its own, or in the report only");
}

void StarStore::trySave(const YLattice<long double>& search) {
  const auto start = now_();
  take(search);
  std::optional<RescueFile> rescue;
  const bool saved = replaceFile(Patience::none, rescue);
  // The stars are still in memory.
  if (rescue) rescue->remove();
  if (saved)
    pace_.saved(start, now_());
  else
    pace_.postponed(now_());
}

bool StarStore::save(const YLattice<long double>& search) {
  take(search);
  std::optional<RescueFile> rescue;
  const bool saved = replaceFile(Patience::whileHolderWorks, rescue);
  if (!saved && isAhead_) {
    secure(rescue);
    rescue->leave();
    present = nullptr;
  } else if (rescue) {
    rescue->remove();
  }
  return !isAhead_;
}

void StarStore::add(const Star<QQ>& star) {
  stars_.addStar(star);
  ++added_;
}

bool StarStore::report(std::ostream& stream) {
  reportStars(stars_, stream);
  return stars_.hasStars();
}

bool StarStore::replaceFile(Patience patience, std::optional<RescueFile>& rescue) {
  tidyStars(stars_);
  const SolutionLock lock(stars_.path(), patience, [&] { secure(rescue); });
  if (!lock.isGranted()) return false;
  try {
    if (mergeAndWrite(rescue) != Commit::written) return false;
  } catch (const WriteException& exception) {
    tellOnce(exception.message());
    return false;
  } catch (const LinkException& exception) {
    tellOnce(exception.message());
    return false;
  }
  isAhead_ = false;
  written_ = stars_.starCount();
  return true;
}

Commit StarStore::mergeAndWrite(std::optional<RescueFile>& rescue) {
  Commit commit = stars_.writeIfCurrent();
  for (int i = 0; i < mergeLimit && commit == Commit::changed; ++i) {
    // A file in a fatal form ends the process.
    secure(rescue);
    stars_.mergeFile();
    commit = stars_.writeIfCurrent();
  }
  return commit;
}

void StarStore::secure(std::optional<RescueFile>& rescue) const {
  if (!rescue) rescue.emplace(stars_);
}

void StarStore::tellOnce(const std::string& message) {
  if (std::exchange(told_, message) != message) tell(message);
}

void StarStore::take(const YLattice<long double>& search) {
  isAhead_ = hasNews(search);
  stars_.addStars(search.starsFiledAfter(taken_), search.problemNumber());
  taken_ = search.lastFiled();
  if (search.problemNumber() != stars_.problemNumber()) fail("The stars solve another problem");
  added_ = 0;
}

}  // namespace starsift
