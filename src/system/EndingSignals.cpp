#include "system/EndingSignals.h"

#include "system/Semaphore.h"

namespace starsift {

namespace {

constexpr int signalNumbers[] = {SIGHUP,  SIGINT,  SIGQUIT,   SIGPIPE, SIGALRM, SIGTERM,
                                 SIGUSR1, SIGUSR2, SIGVTALRM, SIGPROF, SIGXCPU, SIGXFSZ};

extern "C" void endBySignal(int number) {
  unlinkAllSemaphores();
  // The default action is back, but the signal is held while its handler runs: it
  // takes effect on return.
  std::raise(number);
}

}  // namespace

sigset_t endingSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int number : signalNumbers) sigaddset(&signals, number);
  return signals;
}

void unlinkSemaphoresOnSignals() {
  struct sigaction action {};
  action.sa_handler = endBySignal;
  action.sa_mask = endingSignals();
  action.sa_flags = static_cast<int>(SA_RESETHAND);
  for (const int number : signalNumbers) {
    struct sigaction present {};
    sigaction(number, nullptr, &present);
    // A handler with three arguments shares the storage of the plain one.
    if (present.sa_handler == SIG_DFL) sigaction(number, &action, nullptr);
  }
}

}  // namespace starsift
