#include "app/Interrupt.h"

#include <csignal>

#include "core/Semaphore.h"

namespace starsift {

namespace {

volatile std::sig_atomic_t firstSignal = 0;

void endBySignal(int number) {
  unlinkAllSemaphores();
  std::signal(number, SIG_DFL);
  // In a handler the signal takes effect on return.
  std::raise(number);
}

extern "C" void meetSignal(int number) {
  if (firstSignal == 0)
    firstSignal = number;
  else
    endBySignal(number);
}

void rememberSignal(int number) {
  struct sigaction present {};
  sigaction(number, nullptr, &present);
  if (present.sa_handler == SIG_IGN) return;
  struct sigaction action {};
  action.sa_handler = meetSignal;
  sigemptyset(&action.sa_mask);
  // A read or write that the signal interrupts goes on.
  action.sa_flags = SA_RESTART;
  sigaction(number, &action, nullptr);
}

}  // namespace

void rememberInterrupts() {
  for (const int number : {SIGINT, SIGTERM}) rememberSignal(number);
}

int interrupted() {
  return firstSignal;
}

void endByInterrupt() {
  if (firstSignal != 0) endBySignal(firstSignal);
}

}  // namespace starsift
