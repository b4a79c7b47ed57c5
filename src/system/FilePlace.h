// The place of a file: a folder that stays open, and a name in it. What is done to the file
// later happens there, whatever others make of the path meanwhile.
#pragma once

#include <sys/stat.h>

#include <deque>
#include <optional>
#include <string>

#include "system/Descriptor.h"
#include "system/FileIdentity.h"

namespace starsift {

/// Whose symbolic links are followed.
enum class Links {
  /// In folders where others may make files (sticky ones, and those that everybody may write) only
  /// those of this user and of root: in /tmp anybody may have put a link in the way.
  trusted,
  any,
};

/// Where a path leads through all symbolic links. The file itself need not exist.
class FilePlace {
 public:
  /// LinkException for a link that isn't to be followed.
  explicit FilePlace(const std::string& path, Links links = Links::trusted);

  /// False if the folder can't be entered or the links run in a circle; error() says why.
  bool isReachable() const { return folder_.isOpen(); }
  int error() const { return error_; }
  /// As given.
  const std::string& path() const { return path_; }

  /// Status and identity of the file; nothing if there is none. Links are not followed.
  std::optional<struct stat> status() const;
  std::optional<FileIdentity> identity() const;
  /// The user may write to the file.
  bool isWritable() const;

  /// Opens the file with the open(2) flags and O_NOFOLLOW. None with errno set on error. Never
  /// waits for the other end of a pipe.
  Descriptor open(int flags) const;
  /// Creates and opens for writing a new file in the folder, whose name is `prefix` and six
  /// random characters; stores the name. None with errno set on error.
  Descriptor create(const std::string& prefix, mode_t mode, std::string& name) const;
  /// Gives the file such a name in the folder besides its own; stores the name. False with errno
  /// set on error: not every file system can do that.
  bool link(const std::string& prefix, std::string& name) const;

  /// Each of these returns false with errno set on error. A file of the folder replaces this one.
  bool replaceBy(const std::string& name) const;
  bool unlinkBeside(const std::string& name) const;
  /// Removes the last component of the path itself: the first link if it is one.
  bool unlinkPath() const;
  /// Flushes the entries of the folder to disk.
  bool syncFolder() const;

 private:
  /// Components still to be followed.
  using Rest = std::deque<std::string>;

  bool follow(Rest& rest);
  bool followLink(const Descriptor& link, const struct stat& status, Rest& rest);
  bool enter(const char* folder);
  bool stop(int error);

  Descriptor folder_;
  std::string name_;
  /// Where the path's own last component is if that is a link.
  Descriptor linkFolder_;
  std::string linkName_;
  std::string path_;
  Links trust_;
  int followed_ = 0;
  int error_ = 0;
};

}  // namespace starsift
