// A lock on a solution file, so that one process at a time reads and replaces it.
#pragma once

#include <functional>
#include <string>

#include "system/Descriptor.h"

namespace starsift {

/// How long a process waits for a lock that another one holds.
enum class Patience {
  /// Not at all.
  none,
  /// As long as the holder works; not for one that is stopped.
  whileHolderWorks,
};

/// Holds an advisory lock on a solution file for its lifetime. The lock is on the file itself,
/// not on its name: it ends when the file has been replaced, and who waits for it then locks the
/// new file. Where there is no solution file yet, the problem beside it is locked instead. If the
/// file system has no locks, or there is nothing to lock, the lock counts as granted: what it
/// protects is compared once more before it is replaced.
class SolutionLock {
 public:
  /// Locks the file at the path. After two seconds writes one line about the wait to the error
  /// stream, after a call of `onWait`, which may secure what would be lost with the process.
  SolutionLock(
      const std::string& solFile, Patience patience, const std::function<void()>& onWait = [] {});
  SolutionLock(const SolutionLock&) = delete;
  SolutionLock& operator=(const SolutionLock&) = delete;

  /// False if another process holds the lock and this one doesn't wait (any longer).
  bool isGranted() const { return granted_; }

 private:
  void lock(const std::string& solFile, Patience patience, const std::function<void()>& onWait);

  Descriptor file_;
  bool granted_ = false;
};

}  // namespace starsift
