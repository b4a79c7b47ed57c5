#include "system/Semaphore.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <utility>

#include "system/Failure.h"
#include "system/Signals.h"

namespace starsift {

namespace {

/// 600 in decimal, not in octal: the permission bits of all semaphores of this
/// system so far. The umask leaves those of the owner.
constexpr mode_t creationMode = 600;

/// The latest live semaphore. A signal handler may walk the list at any time, so it
/// is changed by single stores only, each of which leaves a valid list.
std::atomic<NamedSemaphore*> latestSemaphore = nullptr;
static_assert(std::atomic<NamedSemaphore*>::is_always_lock_free);

void cleanUpAtExit() {
  [[maybe_unused]] static const int registered = std::atexit(unlinkAllSemaphores);
}

/// Creates a semaphore with the value 1. Returns SEM_FAILED with errno set on error.
sem_t* createSemaphore(const std::string& name) {
  const SizeSignalIgnored ignored;
  // Who may write to the file of a semaphore can cut it, and each access ends by a signal then.
  const mode_t mask = umask(S_IRWXG | S_IRWXO);
  errno = 0;
  sem_t* const handle = sem_open(name.c_str(), O_CREAT | O_EXCL, creationMode, 1);
  const int error = errno;
  umask(mask);
  errno = error;
  // If the file came out too short, the C library reports a failure without setting
  // errno. Only the limit of file sizes makes a file so short.
  if (handle == SEM_FAILED && errno == 0) errno = EFBIG;
  return handle;
}

}  // namespace

void unlinkAllSemaphores() {
  for (NamedSemaphore* semaphore = latestSemaphore; semaphore != nullptr;
       semaphore = semaphore->next_) {
    if (!semaphore->ownedHere() || !semaphore->linked_) continue;
    // In this order: a signal between the two statements unlinks the name a second
    // time, which does no harm, instead of skipping it.
    sem_unlink(semaphore->name_.c_str());
    semaphore->linked_ = false;
  }
}

std::string SemaphoreNames::next(std::time_t now) {
  if (now != lastSecond_) {
    lastSecond_ = now;
    counter_ = 1;
  }
  std::string name = "/";
  for (const std::int64_t number : {std::int64_t{process_}, std::int64_t{now}, counter_++})
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
  // A signal between the creation of the name and its insertion into the list would
  // leave the name behind.
  const SignalsHeld held(endingSignals());
  do {
    name_ = nextName();
    handle_ = createSemaphore(name_);
  } while (handle_ == SEM_FAILED && errno == EEXIST);
  if (handle_ == SEM_FAILED && errno == ENOMEM) fail("Out of memory");
  if (handle_ == SEM_FAILED) failErrno("SEM could not be opened");
  enlist();
}

void NamedSemaphore::wait() {
  if (handle_ == nullptr) fail("No semaphore available for lock!");
  // A signal whose handler returns interrupts the wait; wait again.
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
  if (ownedHere() && linked_ && sem_unlink(name_.c_str()) != 0)
    failErrno("SEM could not be unlinked");
  // Last: until here a signal handler must find the name.
  delist();
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
