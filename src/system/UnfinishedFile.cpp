#include "system/UnfinishedFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace starsift {

namespace {

/// The latest one; null if there is none.
UnfinishedFile* latest = nullptr;

constexpr const char* prefix = ".starsift.";

void removeAtExit() {
  [[maybe_unused]] static const int registered = std::atexit(removeUnfinishedFiles);
}

}  // namespace

void removeUnfinishedFiles() {
  UnfinishedFile* next = nullptr;
  for (UnfinishedFile* file = latest; file != nullptr; file = next) {
    next = file->next_;
    if (file->owner_ == getpid()) file->remove();
  }
}

UnfinishedFile::UnfinishedFile(const FilePlace& place, mode_t mode)
    : place_(place), owner_(getpid()) {
  removeAtExit();
  file_ = place.create(prefix, mode, name_);
  if (file_.isOpen()) enlist();
}

UnfinishedFile::UnfinishedFile(const FilePlace& place, Kept /*kept*/)
    : place_(place), owner_(getpid()) {
  removeAtExit();
  if (place.link(prefix, name_)) enlist();
}

bool UnfinishedFile::replaceOld() {
  if (!place_.replaceBy(name_)) return false;
  delist();
  return true;
}

void UnfinishedFile::remove() {
  file_.close();
  if (link_ == nullptr) return;
  delist();
  place_.unlinkBeside(name_);
}

void UnfinishedFile::enlist() {
  next_ = latest;
  if (next_ != nullptr) next_->link_ = &next_;
  link_ = &latest;
  latest = this;
}

void UnfinishedFile::delist() {
  *link_ = next_;
  if (next_ != nullptr) next_->link_ = link_;
  next_ = nullptr;
  link_ = nullptr;
}

}  // namespace starsift
