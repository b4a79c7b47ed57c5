#include "app/Interrupt.h"

#include <csignal>
#include <ctime>

#include "system/Semaphore.h"

namespace starsift {

namespace {

/// A further signal within this time counts as the first one repeated: some programs send it to
/// a process and to its group, and one of the two may come as SIGTERM from the end of a write.
constexpr long sameSignal = 500'000'000;  // nanoseconds

volatile std::sig_atomic_t firstSignal = 0;
timespec firstTime;

bool isRepeated() {
  timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  constexpr long second = 1'000'000'000;
  return (now.tv_sec - firstTime.tv_sec) * second + now.tv_nsec - firstTime.tv_nsec < sameSignal;
}

void endBySignal(int number) {
  unlinkAllSemaphores();
  std::signal(number, SIG_DFL);
  // In a handler the signal takes effect on return.
  std::raise(number);
}

extern "C" void meetSignal(int number) {
  if (firstSignal == 0) {
    clock_gettime(CLOCK_MONOTONIC, &firstTime);
    firstSignal = number;
  } else if (!isRepeated()) {
    endBySignal(number);
  }
}

void rememberSignal(int number) {
  struct sigaction present {};
  sigaction(number, nullptr, &present);
  if (present.sa_handler == SIG_IGN) return;
  struct sigaction action {};
  action.sa_handler = meetSignal;
  sigemptyset(&action.sa_mask);
  // A read or write that the signal interrupts is continued.
  action.sa_flags = SA_RESTART;
  sigaction(number, &action, nullptr);
}

}  // namespace

void rememberInterrupts() {
  for (const int number : {SIGHUP, SIGINT, SIGTERM}) rememberSignal(number);
}

int interrupted() {
  return firstSignal;
}

void endByInterrupt() {
  if (firstSignal != 0) endBySignal(firstSignal);
}

}  // namespace starsift
