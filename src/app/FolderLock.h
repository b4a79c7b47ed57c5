// A lock, so that one search at a time reads and writes the files of a folder.
#pragma once

#include <string>

namespace starsift {

/// Holds an advisory lock on the folder of a file for its lifetime, so that each of two searches
/// reads the file and replaces it without the other one in between. Waits at most two seconds,
/// so that a process suspended with the lock doesn't block others; if folders can't be locked
/// there is no lock.
class FolderLock {
 public:
  explicit FolderLock(const std::string& path);
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;
  ~FolderLock();

 private:
  /// Negative if there is no lock.
  int descriptor_ = -1;
};

}  // namespace starsift
