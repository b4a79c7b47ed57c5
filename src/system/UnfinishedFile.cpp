#include "system/UnfinishedFile.h"

#include <unistd.h>

#include <cerrno>
#include <cstdlib>

namespace starsift {

namespace {

/// Null if there is none.
UnfinishedFile* present = nullptr;

void cleanUpAtExit() {
  [[maybe_unused]] static const int registered = std::atexit(removeUnfinishedFile);
}

}  // namespace

void removeUnfinishedFile() {
  if (present != nullptr && present->owner_ == getpid()) present->remove();
}

UnfinishedFile::UnfinishedFile(const FilePlace& place, mode_t mode)
    : place_(place), owner_(getpid()) {
  cleanUpAtExit();
  file_ = place.create(".starsift.", mode, name_);
  if (file_.isOpen()) present = this;
}

bool UnfinishedFile::replaceOld() {
  if (!place_.replaceBy(name_)) return false;
  present = nullptr;
  return true;
}

void UnfinishedFile::remove() {
  file_.close();
  if (present != this) return;
  present = nullptr;
  place_.unlinkBeside(name_);
}

}  // namespace starsift
