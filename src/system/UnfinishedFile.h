// A new file beside an old one, until it is complete.
#pragma once

#include <sys/types.h>

#include <string>

#include "system/Descriptor.h"
#include "system/FilePlace.h"

namespace starsift {

/// Removes the unfinished file of this process, if there is one: for code that ends the process
/// without destructors. Runs at the exit of the process by itself. Allocates nothing.
void removeUnfinishedFile();

/// A file ".starsift." and six random characters in the folder of a place, open for writing.
/// Removed at the end of its lifetime, and at the exit of the process, unless it has replaced the
/// file of the place. At most one at a time.
class UnfinishedFile {
 public:
  /// No file if none can be created; errno says why. `place` must live as long.
  UnfinishedFile(const FilePlace& place, mode_t mode);
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;
  ~UnfinishedFile() { remove(); }

  bool isOpen() const { return file_.isOpen(); }
  int descriptor() const { return file_.number(); }
  /// See Descriptor::close().
  bool close() { return file_.close(); }
  /// Takes the name of the file of the place. False with errno set on error.
  bool replaceOld();

 private:
  friend void removeUnfinishedFile();

  void remove();

  const FilePlace& place_;
  Descriptor file_;
  std::string name_;
  /// The process that has to remove the file; a forked child must not.
  pid_t owner_;
};

}  // namespace starsift
