// An advisory lock on an open file, and who else holds one.
#pragma once

#include <sys/types.h>

#include <optional>

namespace starsift {

/// The result of an attempt to lock a file.
enum class LockAttempt {
  granted,
  /// Another process holds the lock.
  busy,
  /// The file system has no locks; the error of the system call says so.
  unsupported,
};

/// Tries to lock an open file for this process alone; the lock ends with the descriptor.
LockAttempt tryLock(int descriptor);

/// A process that holds a lock of this kind on an open file. Nothing if there is none, or if the
/// system doesn't show it, as for processes in other containers or on other machines.
std::optional<pid_t> lockHolder(int descriptor);

/// The process was stopped by a signal or a debugger and doesn't go on by itself. A process that
/// waits for a disk or for processor time is not.
bool isStopped(pid_t process);

}  // namespace starsift
