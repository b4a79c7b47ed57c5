#include "files/DeferredSignals.h"

#include "system/Semaphore.h"

namespace starsift {

namespace {

volatile std::sig_atomic_t signalCame = 0;

extern "C" void rememberSignal(int /*number*/) {
  signalCame = 1;
}

/// The signals that wait as they are until the file is complete. Those with a
/// handler here are not among them: either of them takes effect as SIGTERM.
sigset_t waitingSignals() {
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
  // A write that a signal interrupts goes on.
  action.sa_flags = SA_RESTART;
  sigaction(number, &action, nullptr);
  return previous;
}

}  // namespace

DeferredSignals::DeferredSignals()
    : held_(waitingSignals()),
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
