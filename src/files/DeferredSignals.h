// SIGINT and SIGTERM held back while a file is being written.
#pragma once

#include <csignal>

namespace starsift {

/// From construction to destruction SIGINT and SIGTERM only set a flag. The
/// destructor puts the former handlers back and, if a signal came, raises SIGTERM,
/// so that the interruption takes effect when the file is complete. Not nested.
class DeferredSignals {
 public:
  DeferredSignals();
  DeferredSignals(const DeferredSignals&) = delete;
  DeferredSignals& operator=(const DeferredSignals&) = delete;
  ~DeferredSignals();

 private:
  struct sigaction previousInterrupt_ {};
  struct sigaction previousTerminate_ {};
};

}  // namespace starsift
