// Signals by which somebody else ends a process: users, terminals, batch systems and
// limits. SIGKILL can't be handled, and the signals of a fault of the program itself
// (SIGSEGV, SIGABRT) are not among them. The guards below protect a block of code from
// them.
#pragma once

#include <csignal>

namespace starsift {

/// The set of these signals.
sigset_t endingSignals();

/// Each of them that would end the process by its default action first unlinks the
/// names of the semaphores of the process; then the process dies by that signal. A
/// signal that is ignored (`nohup`) or handled stays so.
void unlinkSemaphoresOnSignals();

/// Blocks signals during its lifetime; pending ones take effect at its end. In the
/// calling thread only.
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

/// For the time of writing a file: from construction to destruction SIGINT and SIGTERM
/// only set a flag, unless they are ignored. The destructor restores the former handlers
/// and, if a signal came, raises SIGTERM, so that the interruption takes effect when the
/// file is complete. The other ending signals are blocked until then and take effect as
/// themselves. Not nested.
class DeferredSignals {
 public:
  DeferredSignals();
  DeferredSignals(const DeferredSignals&) = delete;
  DeferredSignals& operator=(const DeferredSignals&) = delete;
  ~DeferredSignals();

 private:
  SignalsHeld held_;
  struct sigaction previousInterrupt_;
  struct sigaction previousTerminate_;
};

/// During its lifetime a write beyond the limit of file sizes fails like one without
/// space, instead of ending the process and leaving half a file.
class SizeSignalIgnored {
 public:
  SizeSignalIgnored() { ignore(&previous_); }
  SizeSignalIgnored(const SizeSignalIgnored&) = delete;
  SizeSignalIgnored& operator=(const SizeSignalIgnored&) = delete;
  ~SizeSignalIgnored() {
    // A signal that came while it was blocked (see DeferredSignals) is pending although it was
    // ignored; ignoring it anew discards it.
    ignore(nullptr);
    sigaction(SIGXFSZ, &previous_, nullptr);
  }

 private:
  static void ignore(struct sigaction* previous) {
    struct sigaction action {};
    action.sa_handler = SIG_IGN;
    sigemptyset(&action.sa_mask);
    sigaction(SIGXFSZ, &action, previous);
  }

  struct sigaction previous_ {};
};

}  // namespace starsift
