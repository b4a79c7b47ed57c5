// POSIX named semaphores as locks, and the list of those that this process has to
// unlink.
//
// A named semaphore outlives its process unless its name is unlinked. The destructor
// does that, but fail() and signals end the process without destructors. Therefore
// every live name is in a list that unlinkAllSemaphores() walks. That function runs
// at the exit of the process, and so after fail(); code that ends the process in
// another way - a terminate handler, a signal (see Signals.h) - has to call it.
#pragma once

#include <semaphore.h>
#include <sys/types.h>

#include <atomic>
#include <cstdint>
#include <ctime>
#include <functional>
#include <string>

namespace starsift {

/// Unlinks the names of all semaphores that this process created. The semaphores
/// themselves stay usable, and their destructors do not unlink again. Allocates
/// nothing and takes no lock, so a signal handler may call it. Semaphores that a
/// forked process inherited belong to its parent and are skipped.
void unlinkAllSemaphores();

/// Generates the names of one process: "/pid_time_counter". The counter starts at 1
/// in each second.
class SemaphoreNames {
 public:
  explicit SemaphoreNames(pid_t process) : process_(process) {}

  /// Returns the next name; `now` in seconds since the epoch.
  std::string next(std::time_t now);

 private:
  pid_t process_;
  /// The second of the counter; -1 before the first name.
  std::time_t lastSecond_ = -1;
  std::int64_t counter_ = 1;
};

/// Returns the next name of this process, at the present time.
std::string nextSemaphoreName();

/// A named semaphore with the initial value 1.
class NamedSemaphore {
 public:
  /// Creates a semaphore that didn't exist. Calls `nextName` until its name is free;
  /// a killed process with the same id may have left names behind. No other user may open
  /// it, whatever the umask. Any other error is fatal: "SEM could not be opened", or "Out of
  /// memory".
  explicit NamedSemaphore(const std::function<std::string()>& nextName = nextSemaphoreName);
  NamedSemaphore(const NamedSemaphore&) = delete;
  NamedSemaphore& operator=(const NamedSemaphore&) = delete;
  /// Calls release().
  ~NamedSemaphore() { release(); }

  /// Waits until the semaphore is free and locks it. Fatal after release():
  /// "No semaphore available for lock!".
  void wait();
  void post();

  /// Closes the semaphore and unlinks its name; a second call does nothing.
  /// Fatal: "SEM could not be closed", "SEM could not be unlinked".
  void release();

  const std::string& name() const { return name_; }
  /// For system calls; null after release().
  sem_t* nativeHandle() { return handle_; }

 private:
  friend void unlinkAllSemaphores();

  void enlist();
  void delist();
  bool ownedHere() const;

  /// Name of the thread that holds the semaphore; empty, as there is one thread only.
  std::string holder_;
  std::string name_;
  /// Null after release().
  sem_t* handle_ = nullptr;
  /// The process that has to unlink the name; a forked child must not.
  pid_t owner_;
  /// False after unlinkAllSemaphores() has unlinked the name.
  std::atomic<bool> linked_ = true;
  /// Links of the list of live semaphores, latest first.
  std::atomic<NamedSemaphore*> next_ = nullptr;
  NamedSemaphore* previous_ = nullptr;
};

/// Locks a semaphore during its lifetime.
class SemaphoreHold {
 public:
  explicit SemaphoreHold(NamedSemaphore& semaphore) : semaphore_(semaphore) { semaphore_.wait(); }
  SemaphoreHold(const SemaphoreHold&) = delete;
  SemaphoreHold& operator=(const SemaphoreHold&) = delete;
  ~SemaphoreHold() { semaphore_.post(); }

 private:
  NamedSemaphore& semaphore_;
};

}  // namespace starsift
