// The limit of file sizes, for processes that a test forks.
#pragma once

#include <sys/resource.h>

#include <cstdlib>

namespace starsift::test {

/// Sets the limit of this process, not the one that it may set.
inline void setFileSizeLimit(rlim_t bytes) {
  struct rlimit limit {};
  getrlimit(RLIMIT_FSIZE, &limit);
  limit.rlim_cur = bytes;
  if (setrlimit(RLIMIT_FSIZE, &limit) != 0) std::abort();
}

/// In a child process: files can't grow beyond so many bytes until it exits. The
/// counters of a coverage build, which are written last, need room.
inline void limitFileSize(rlim_t bytes) {
  setFileSizeLimit(bytes);
  std::atexit([] { setFileSizeLimit(RLIM_INFINITY); });
}

}  // namespace starsift::test
