#include "app/SolutionLock.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <iostream>
#include <optional>
#include <string_view>
#include <thread>
#include <utility>

#include "files/FileNames.h"
#include "system/Console.h"
#include "system/Exceptions.h"
#include "system/FileLock.h"
#include "system/FilePlace.h"

namespace starsift {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds pause{10};
/// Between two looks at the holder of a lock.
constexpr std::chrono::milliseconds holderInterval{200};
/// Time without the lock before the user is told, and time for which a holder must be seen
/// stopped: somebody may stop a program and let it go on at once.
constexpr std::chrono::seconds longWait{2};

void tell(std::string_view text) {
  std::cerr << "*** " << text << endLine();
  stampOutputTime();
}

std::string nameOf(const std::optional<pid_t>& process) {
  return process ? "process " + std::to_string(*process) : "another process";
}

/// The file of which the lock is taken, as it is at the moment: the solutions, or the problem
/// while there are none.
class LockedFile {
 public:
  explicit LockedFile(const std::string& solFile) : place_(solFile) {
    if (!place_.isReachable()) return;
    const std::optional<struct stat> status = place_.status();
    isStandIn_ = !status;
    if (isStandIn_)
      file_ = FilePlace(fileNames(solFile).optFile, Links::any).open(O_RDONLY);
    else if (S_ISREG(status->st_mode))
      file_ = place_.open(O_RDONLY);
  }

  bool isOpen() const { return file_.isOpen(); }
  int descriptor() const { return file_.number(); }
  Descriptor take() { return std::move(file_); }

  /// The solutions are still in this file, or there are still none.
  bool isCurrent() const {
    const std::optional<struct stat> now = place_.status();
    if (isStandIn_) return !now;
    struct stat locked {};
    return now && fstat(file_.number(), &locked) == 0 && now->st_dev == locked.st_dev &&
           now->st_ino == locked.st_ino;
  }

 private:
  FilePlace place_;
  Descriptor file_;
  bool isStandIn_ = false;
};

/// A wait for a lock that others hold.
class LockWait {
 public:
  LockWait(const std::string& solFile, const std::function<void()>& onWait)
      : solFile_(solFile), onWait_(onWait) {}

  /// Waits a little. False if the holder doesn't work.
  bool waitFor(const LockedFile& file) {
    const Clock::time_point now = Clock::now();
    if (now >= nextLook_) {
      nextLook_ = now + holderInterval;
      holder_ = lockHolder(file.descriptor());
      if (!holder_ || !isStopped(*holder_)) workedAt_ = now;
    }
    if (now - workedAt_ >= longWait) {
      tell("File " + solFile_ + " is locked by " + nameOf(holder_) + ", which is stopped");
      return false;
    }
    if (now - start_ >= longWait && !std::exchange(told_, true)) {
      onWait_();
      tell("Waiting for " + nameOf(holder_) + ", which has locked " + solFile_);
    }
    std::this_thread::sleep_for(pause);
    return true;
  }

 private:
  const std::string& solFile_;
  const std::function<void()>& onWait_;
  Clock::time_point start_ = Clock::now();
  Clock::time_point nextLook_ = start_;
  /// When the holder was last seen not to be stopped.
  Clock::time_point workedAt_ = start_;
  std::optional<pid_t> holder_;
  bool told_ = false;
};

}  // namespace

SolutionLock::SolutionLock(const std::string& solFile, Patience patience,
                           const std::function<void()>& onWait) {
  try {
    lock(solFile, patience, onWait);
  } catch (const LinkException&) {
    // Who reads or writes the file reports it.
    granted_ = true;
  }
}

void SolutionLock::lock(const std::string& solFile, Patience patience,
                        const std::function<void()>& onWait) {
  LockWait wait(solFile, onWait);
  while (!granted_) {
    LockedFile file(solFile);
    const LockAttempt attempt =
        file.isOpen() ? tryLock(file.descriptor()) : LockAttempt::unsupported;
    granted_ = attempt == LockAttempt::unsupported ||
               (attempt == LockAttempt::granted && file.isCurrent());
    if (granted_) file_ = file.take();
    if (attempt == LockAttempt::busy && (patience == Patience::none || !wait.waitFor(file))) return;
  }
}

}  // namespace starsift
