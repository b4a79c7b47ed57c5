// Detects whether a file was changed since it was last read or written.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <ctime>
#include <optional>
#include <string>

namespace starsift {

/// Distinguishes states of a file. Two states differ after a replacement by a new file
/// and after a rewriting in place, unless that left the same size within one tick of
/// the clock of file times.
struct FileIdentity {
  dev_t device = 0;
  ino_t inode = 0;
  off_t size = 0;
  std::time_t seconds = 0;
  long nanoseconds = 0;

  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

FileIdentity identityOf(const struct stat& status);
/// The state of the file at `path`; follows symbolic links. Nothing if there is none.
std::optional<FileIdentity> fileIdentity(const std::string& path);
/// The state of an open file; nothing if the system call fails.
std::optional<FileIdentity> fileIdentity(int descriptor);

}  // namespace starsift
