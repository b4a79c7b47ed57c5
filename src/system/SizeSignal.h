// The signal of the limit of file sizes.
#pragma once

#include <csignal>

namespace starsift {

/// While it lives a write beyond the limit of file sizes fails like one without
/// space, instead of ending the process with half a file behind it.
class SizeSignalIgnored {
 public:
  SizeSignalIgnored() {
    struct sigaction action {};
    action.sa_handler = SIG_IGN;
    sigemptyset(&action.sa_mask);
    sigaction(SIGXFSZ, &action, &previous_);
  }
  SizeSignalIgnored(const SizeSignalIgnored&) = delete;
  SizeSignalIgnored& operator=(const SizeSignalIgnored&) = delete;
  ~SizeSignalIgnored() { sigaction(SIGXFSZ, &previous_, nullptr); }

 private:
  struct sigaction previous_ {};
};

}  // namespace starsift
