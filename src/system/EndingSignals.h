// The signals by which somebody else ends a process: users, terminals, batch
// systems and limits. SIGKILL can't be met, and the signals of a fault of the
// program itself (SIGSEGV, SIGABRT) are none of them.
#pragma once

#include <csignal>

namespace starsift {

/// All of them.
sigset_t endingSignals();

/// Each of them that would end the process by its default action first takes the
/// names of the process's semaphores off the system; then the process dies by that
/// signal all the same. A signal that is ignored (`nohup`) or handled stays so.
void unlinkSemaphoresOnSignals();

/// Holds signals back as long as it lives; then they take effect. In the calling
/// thread only.
class SignalsHeld {
 public:
  explicit SignalsHeld(const sigset_t& signals) {
    pthread_sigmask(SIG_BLOCK, &signals, &previous_);
  }
  SignalsHeld(const SignalsHeld&) = delete;
  SignalsHeld& operator=(const SignalsHeld&) = delete;
  ~SignalsHeld() { pthread_sigmask(SIG_SETMASK, &previous_, nullptr); }

 private:
  sigset_t previous_{};
};

}  // namespace starsift
