#include "system/FileLock.h"

#include <sys/file.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "system/SystemCall.h"

namespace starsift {

namespace {

/// A lock in a line of /proc/locks.
struct LockLine {
  pid_t process = 0;
  dev_t device = 0;
  ino_t inode = 0;
};

/// The holder of a lock of the kind of tryLock(); nothing for other locks, and for processes that
/// wait ("->").
std::optional<LockLine> heldLock(const std::string& line) {
  std::istringstream fields(line);
  std::string number;
  std::string kind;
  std::string mode;
  std::string access;
  std::string file;
  LockLine lock;
  if (!(fields >> number >> kind) || kind != "FLOCK") return std::nullopt;
  if (!(fields >> mode >> access >> lock.process >> file)) return std::nullopt;
  unsigned major = 0;
  unsigned minor = 0;
  unsigned long long inode = 0;
  if (std::sscanf(file.c_str(), "%x:%x:%llu", &major, &minor, &inode) != 3) return std::nullopt;
  lock.device = makedev(major, minor);
  lock.inode = inode;
  return lock;
}

}  // namespace

LockAttempt tryLock(int descriptor) {
  if (uninterrupted([&] { return flock(descriptor, LOCK_EX | LOCK_NB); }) == 0)
    return LockAttempt::granted;
  return errno == EWOULDBLOCK ? LockAttempt::busy : LockAttempt::unsupported;
}

std::optional<pid_t> lockHolder(int descriptor) {
  struct stat status {};
  if (fstat(descriptor, &status) != 0) return std::nullopt;
  std::optional<pid_t> elsewhere;
  std::ifstream locks("/proc/locks");
  for (std::string line; std::getline(locks, line);) {
    const std::optional<LockLine> lock = heldLock(line);
    if (!lock || lock->process <= 0 || lock->inode != status.st_ino) continue;
    if (lock->device == status.st_dev) return lock->process;
    // Some file systems (btrfs, overlays) show another device there than stat() does.
    elsewhere = lock->process;
  }
  return elsewhere;
}

bool isStopped(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  std::string text;
  std::getline(file, text);
  // The name of the program, in parentheses, may contain anything.
  const std::size_t end = text.rfind(')');
  if (end == std::string::npos || end + 2 >= text.size()) return false;
  const char state = text[end + 2];
  return state == 'T' || state == 't';
}

}  // namespace starsift
