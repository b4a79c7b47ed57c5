#include "system/HelperThreads.h"

#include <csignal>
#include <optional>
#include <system_error>

#include "system/HostedCall.h"

namespace starsift {

namespace {

/// During its lifetime the calling thread, and threads that it starts, receive no signals.
class SignalsBlocked {
 public:
  SignalsBlocked() {
    sigset_t all;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &before_);
  }
  SignalsBlocked(const SignalsBlocked&) = delete;
  SignalsBlocked& operator=(const SignalsBlocked&) = delete;
  ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

 private:
  sigset_t before_{};
};

}  // namespace

void HelperThreads::start(unsigned count, const std::function<void(unsigned)>& work) {
  const SignalsBlocked blocked;
  const auto workAsCaller = [work, isHosted = HostedCall::isUnderWay()](unsigned i) {
    std::optional<HostedCall> hosted;
    if (isHosted) hosted.emplace();
    work(i);
  };
  try {
    for (unsigned i = 1; i <= count; ++i) threads_.emplace_back(workAsCaller, i);
  } catch (const std::system_error&) {
    // As many as the system grants.
  }
}

void HelperThreads::join() {
  for (std::thread& thread : threads_) thread.join();
  threads_.clear();
}

}  // namespace starsift
