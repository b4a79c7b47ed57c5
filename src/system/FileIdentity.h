// Is a file still the one that was read or written last?
#pragma once

#include <sys/types.h>

#include <ctime>
#include <optional>
#include <string>

namespace starsift {

/// What tells one state of a file from another, as far as the system keeps it: every
/// replacement by a new file, and every rewriting in place but those of the same size
/// within one tick of the clock of its times.
struct FileIdentity {
  dev_t device = 0;
  ino_t inode = 0;
  off_t size = 0;
  std::time_t seconds = 0;
  long nanoseconds = 0;

  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

/// Of what is at the path, through symbolic links; nothing where there is nothing.
std::optional<FileIdentity> fileIdentity(const std::string& path);
/// Of an open file; nothing where the system doesn't tell.
std::optional<FileIdentity> fileIdentity(int descriptor);

}  // namespace starsift
