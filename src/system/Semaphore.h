// POSIX named semaphores as locks, and the record of those that this process has
// to take off the system again.
//
// A named semaphore outlives its process unless somebody unlinks its name. The
// destructor does, but fail() and signals end the process without destructors, so
// every live name stands in a list that unlinkAllSemaphores() walks. It runs at
// the process's exit (and so behind fail()) by itself; whoever ends the process
// otherwise - a terminate handler, a signal (see Signals.h) - has to call it.
#pragma once

#include <semaphore.h>
#include <sys/types.h>

#include <atomic>
#include <cstdint>
#include <ctime>
#include <functional>
#include <string>

namespace starsift {

/// Unlinks the names of all semaphores that this process created; they stay usable
/// by those who hold them, and their destructors leave the names alone. Allocates
/// nothing and takes no lock, so a signal handler may call it. Semaphores that a
/// forked process inherited belong to its parent and stay.
void unlinkAllSemaphores();

/// Numbers the names of one process: "/pid_time_counter". The counter starts at 1
/// in each second.
class SemaphoreNames {
 public:
  explicit SemaphoreNames(pid_t process) : process_(process) {}

  /// The next name; `now` in seconds since the epoch.
  std::string next(std::time_t now);

 private:
  pid_t process_;
  /// The second that the counter belongs to; -1 before the first name.
  std::time_t lastSecond_ = -1;
  std::int64_t counter_ = 1;
};

/// The next name of this process, at the present time.
std::string nextSemaphoreName();

/// A named semaphore with the initial value 1.
class NamedSemaphore {
 public:
  /// Creates a semaphore that didn't exist. `nextName` is asked again while its
  /// names are taken, for example by a process with the same id that was killed.
  /// Any other error is fatal: "SEM could not be opened".
  explicit NamedSemaphore(const std::function<std::string()>& nextName = nextSemaphoreName);
  NamedSemaphore(const NamedSemaphore&) = delete;
  NamedSemaphore& operator=(const NamedSemaphore&) = delete;
  /// As release().
  ~NamedSemaphore() { release(); }

  /// Waits until the semaphore is free and takes it. Fatal when it was released:
  /// "No semaphore available for lock!".
  void wait();
  void post();

  /// Closes the semaphore and unlinks its name; the second call does nothing.
  /// Fatal: "SEM could not be closed", "SEM could not be unlinked".
  void release();

  const std::string& name() const { return name_; }
  /// For system calls; null once released.
  sem_t* nativeHandle() { return handle_; }

 private:
  friend void unlinkAllSemaphores();

  void enlist();
  void delist();
  bool ownedHere() const;

  /// Name of the thread that holds the semaphore; the only one there is has none.
  std::string holder_;
  std::string name_;
  /// Null once released.
  sem_t* handle_ = nullptr;
  /// The process that has to unlink the name; a forked child is another one.
  pid_t owner_;
  /// False once unlinkAllSemaphores() took the name off the system.
  std::atomic<bool> linked_ = true;
  /// List of the live semaphores, latest first.
  std::atomic<NamedSemaphore*> next_ = nullptr;
  NamedSemaphore* previous_ = nullptr;
};

/// Holds a semaphore for the length of a block.
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
