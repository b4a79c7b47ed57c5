#include "files/DeferredSignals.h"

#include "core/Semaphore.h"

namespace starsift {

namespace {

volatile std::sig_atomic_t signalCame = 0;

extern "C" void rememberSignal(int /*number*/) {
  signalCame = 1;
}

}  // namespace

DeferredSignals::DeferredSignals() {
  struct sigaction action {};
  action.sa_handler = rememberSignal;
  sigemptyset(&action.sa_mask);
  // A write that a signal interrupts goes on.
  action.sa_flags = SA_RESTART;
  signalCame = 0;
  sigaction(SIGINT, &action, &previousInterrupt_);
  sigaction(SIGTERM, &action, &previousTerminate_);
}

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
