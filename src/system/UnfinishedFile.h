// A new file beside an old one, until it is complete, and an old one beside the new one, until that
// is to stay.
#pragma once

#include <sys/types.h>

#include <string>

#include "system/Descriptor.h"
#include "system/FilePlace.h"

namespace starsift {

/// Removes the unfinished files of this process: for code that ends the process without
/// destructors. Runs at the exit of the process by itself. Allocates nothing.
void removeUnfinishedFiles();

/// A file ".starsift." and six random characters in the folder of a place, open for writing.
/// Removed at the end of its lifetime, and at the exit of the process, unless it has replaced the
/// file of the place.
class UnfinishedFile {
 public:
  /// No file if none can be created; errno says why. `place` must live as long.
  UnfinishedFile(const FilePlace& place, mode_t mode);
  /// A second name of the file that is at the place now, by which replaceOld() brings it back.
  enum class Kept { oldFile };
  UnfinishedFile(const FilePlace& place, Kept kept);
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;
  ~UnfinishedFile() { remove(); }

  bool exists() const { return link_ != nullptr; }
  bool isOpen() const { return file_.isOpen(); }
  int descriptor() const { return file_.number(); }
  /// See Descriptor::close().
  bool close() { return file_.close(); }
  /// Takes the name of the file of the place. False with errno set on error.
  bool replaceOld();

 private:
  friend void removeUnfinishedFiles();

  void remove();
  void enlist();
  void delist();

  const FilePlace& place_;
  Descriptor file_;
  std::string name_;
  /// The process that has to remove the file; a forked child must not.
  pid_t owner_;
  /// Links of the list of unfinished files, latest first; both null outside of it.
  UnfinishedFile* next_ = nullptr;
  UnfinishedFile** link_ = nullptr;
};

}  // namespace starsift
