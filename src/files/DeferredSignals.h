// The signals that end the process, held back while a file is being written.
#pragma once

#include <csignal>

#include "system/EndingSignals.h"

namespace starsift {

/// From construction to destruction SIGINT and SIGTERM only set a flag, unless they
/// are ignored. The destructor puts the former handlers back and, if a signal came,
/// raises SIGTERM, so that the interruption takes effect when the file is complete.
/// The other ending signals wait until then and take effect as themselves. Not
/// nested.
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

}  // namespace starsift
