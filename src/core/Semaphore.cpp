#include "core/Semaphore.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <utility>

#include "core/Failure.h"

namespace starsift {

namespace {

/// 600 in decimal, not in octal: the permission bits that semaphores of this
/// system have always had.
constexpr mode_t creationMode = 600;

/// The latest live semaphore. A signal handler may walk the list at any moment, so
/// it is changed by single stores only, each of which leaves it whole.
std::atomic<NamedSemaphore*> latestSemaphore = nullptr;
static_assert(std::atomic<NamedSemaphore*>::is_always_lock_free);

void cleanUpAtExit() {
  [[maybe_unused]] static const int registered = std::atexit(unlinkAllSemaphores);
}

}  // namespace

void unlinkAllSemaphores() {
  for (NamedSemaphore* semaphore = latestSemaphore; semaphore != nullptr;
       semaphore = semaphore->next_) {
    if (semaphore->ownedHere() && semaphore->linked_.exchange(false))
      sem_unlink(semaphore->name_.c_str());
  }
}

std::string SemaphoreNames::next(std::time_t now) {
  if (now != lastSecond_) {
    lastSecond_ = now;
    counter_ = 1;
  }
  std::string name = "/";
  for (const Index number : {Index{process_}, Index{now}, counter_++})
    (name += std::to_string(number)) += '_';
  name.pop_back();
  return name;
}

std::string nextSemaphoreName() {
  static SemaphoreNames names(getpid());
  return names.next(std::time(nullptr));
}

NamedSemaphore::NamedSemaphore(const std::function<std::string()>& nextName) : owner_(getpid()) {
  cleanUpAtExit();
  do {
    name_ = nextName();
    handle_ = sem_open(name_.c_str(), O_CREAT | O_EXCL, creationMode, 1);
  } while (handle_ == SEM_FAILED && errno == EEXIST);
  if (handle_ == SEM_FAILED) failErrno("SEM could not be opened");
  enlist();
}

void NamedSemaphore::wait() {
  if (handle_ == nullptr) fail("No semaphore available for lock!");
  // A signal whose handler returns interrupts the wait; it goes on.
  while (sem_wait(handle_) != 0 && errno == EINTR) {
  }
  holder_.clear();
}

void NamedSemaphore::post() {
  sem_post(handle_);
}

void NamedSemaphore::release() {
  if (handle_ == nullptr) return;
  if (sem_close(std::exchange(handle_, nullptr)) != 0) failErrno("SEM could not be closed");
  delist();
  if (!ownedHere() || !linked_.exchange(false)) return;
  if (sem_unlink(name_.c_str()) != 0) failErrno("SEM could not be unlinked");
}

void NamedSemaphore::enlist() {
  NamedSemaphore* const next = latestSemaphore;
  if (next != nullptr) next->previous_ = this;
  next_ = next;
  latestSemaphore = this;
}

void NamedSemaphore::delist() {
  NamedSemaphore* const next = next_;
  if (next != nullptr) next->previous_ = previous_;
  (previous_ == nullptr ? latestSemaphore : previous_->next_) = next;
}

bool NamedSemaphore::ownedHere() const {
  return owner_ == getpid();
}

}  // namespace starsift
