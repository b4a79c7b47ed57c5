// The limit of file sizes, for processes that a test forks.
#pragma once

#include <sys/resource.h>

#include <cstdlib>

namespace starsift::test {

/// In a child process: files can't grow beyond so many bytes.
inline void limitFileSize(rlim_t bytes) {
  const struct rlimit limit { bytes, bytes };
  if (setrlimit(RLIMIT_FSIZE, &limit) != 0) std::abort();
}

}  // namespace starsift::test
