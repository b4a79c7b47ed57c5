// One search at a time at the files of a folder.
#pragma once

#include <string>

namespace starsift {

/// Holds an advisory lock on the folder of a file as long as it lives, so that of two searches
/// each reads the file and replaces it without the other one in between. Waits two seconds at
/// most: a process that was stopped with the lock doesn't stop others, and where folders can't
/// be locked there is none.
class FolderLock {
 public:
  explicit FolderLock(const std::string& path);
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;
  ~FolderLock();

 private:
  /// Below 0: none.
  int descriptor_ = -1;
};

}  // namespace starsift
