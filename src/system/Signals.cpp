#include "system/Signals.h"

#include "system/Semaphore.h"

namespace starsift {

namespace {

constexpr int signalNumbers[] = {SIGHUP,  SIGINT,  SIGQUIT,   SIGPIPE, SIGALRM, SIGTERM,
                                 SIGUSR1, SIGUSR2, SIGVTALRM, SIGPROF, SIGXCPU, SIGXFSZ};

extern "C" void endBySignal(int number) {
  unlinkAllSemaphores();
  // The default action is back, but the signal is blocked while its handler runs: it
  // takes effect on return.
  std::raise(number);
}

volatile std::sig_atomic_t signalCame = 0;

extern "C" void rememberSignal(int /*number*/) {
  signalCame = 1;
}

/// The signals that DeferredSignals blocks. SIGINT and SIGTERM have a handler there
/// instead: either of them takes effect as SIGTERM.
sigset_t blockedSignals() {
  sigset_t signals = endingSignals();
  sigdelset(&signals, SIGINT);
  sigdelset(&signals, SIGTERM);
  return signals;
}

/// Returns the former handler. A signal that is ignored stays so.
struct sigaction remember(int number) {
  struct sigaction previous {};
  sigaction(number, nullptr, &previous);
  if (previous.sa_handler == SIG_IGN) return previous;
  struct sigaction action {};
  action.sa_handler = rememberSignal;
  sigemptyset(&action.sa_mask);
  // A write that a signal interrupts is continued.
  action.sa_flags = SA_RESTART;
  sigaction(number, &action, nullptr);
  return previous;
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

DeferredSignals::DeferredSignals()
    : held_(blockedSignals()),
      previousInterrupt_(remember(SIGINT)),
      previousTerminate_(remember(SIGTERM)) {}

DeferredSignals::~DeferredSignals() {
  sigaction(SIGINT, &previousInterrupt_, nullptr);
  sigaction(SIGTERM, &previousTerminate_, nullptr);
  if (signalCame == 0) return;
  signalCame = 0;
  // The default action ends the process without its destructors.
  if (previousTerminate_.sa_handler == SIG_DFL) unlinkAllSemaphores();
  std::raise(SIGTERM);
}

}  // namespace starsift
