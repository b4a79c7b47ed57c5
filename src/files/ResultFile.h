// Writing a result file without ever losing the old text: the whole new text is written to a
// new file beside the old one and flushed to disk, and then that file is renamed to the old
// one's name.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>
#include <string_view>

#include "system/Descriptor.h"
#include "system/FileIdentity.h"
#include "system/FilePlace.h"
#include "system/UnfinishedFile.h"
#include "text/InputText.h"

namespace starsift {

/// What became of a new text.
enum class Commit {
  /// It is in the file.
  written,
  /// Nothing: the file can't be opened for writing, or the text was committed before.
  closed,
  /// Nothing: the file at the path isn't the expected one.
  changed,
};

/// The new content of one file, written piece by piece and put in place at the
/// end. Paths are followed through symbolic links, as FilePlace does; mode, access list and owner
/// stay. A path that can't be opened for writing, or isn't a regular file, is left unchanged
/// without a report, and so is a file that somebody else has written or replaced since it was
/// read: its identity is compared after everything else is done, immediately before it is
/// replaced. Any failure to write the text whole throws WriteException, "Could not write file: "
/// and the path: the old file stays, the new one is removed.
///
/// If no file can be created beside the old one, or none with its owner and
/// mode, the old one is rewritten in place at commit(), from the text kept in
/// memory.
class ResultFile {
 public:
  /// The file to be replaced is the one that is at the path now. LinkException as FilePlace.
  explicit ResultFile(const std::string& path);
  /// The file to be replaced is the one that had the identity `expected` when it was read;
  /// nothing: there was none.
  ResultFile(std::string path, std::optional<FileIdentity> expected);
  ResultFile(const ResultFile&) = delete;
  ResultFile& operator=(const ResultFile&) = delete;
  /// Without commit() the old file stays.
  ~ResultFile() = default;

  /// If false, everything that is written is discarded.
  bool isOpen() const { return mode_ != Mode::closed; }

  void write(std::string_view text);

  /// To be called before commit(): what that replaces is kept until the end of the lifetime.
  void keepOld() { keepsOld_ = true; }

  /// Puts the text in place of the old file. An empty text removes the file, or the
  /// symbolic link if the path is one. A file that holds the text already isn't touched.
  Commit commit();

  /// Puts back what commit() has replaced after keepOld(), or removes the file that it has made; no
  /// effect if somebody else has written or replaced that since. The new file stays if it replaced
  /// one on a file system without hard links, and if the system refuses.
  void undo();

  /// The identity of the file at the path, as expected by the constructor and left by commit();
  /// replacements by others since then are not seen.
  const std::optional<FileIdentity>& identity() const { return identity_; }

 private:
  enum class Mode { closed, beside, inPlace };

  Mode openBeside();
  /// The new file with the rights of the old one, or the old one itself.
  Mode replaceWithRights(const struct stat& status);
  /// The file at the path is the expected one.
  bool isExpected() const { return place_.identity() == identity_; }
  void flush();
  /// Writes the text to the new file.
  void append(std::string_view text);
  /// Compares the text, which follows the one before, with the old file, as long as that has been
  /// equal.
  void compareWithOld(std::string_view text);
  /// The old file holds exactly the text that was written.
  bool isSameText() const;
  Commit replace();
  Commit rewriteInPlace();
  /// The old text, to be put back if the new one can't be written.
  std::optional<InputText> oldText() const;
  Commit remove(Mode mode);
  /// Makes the old text that of the file again.
  void restoreInPlace();
  [[noreturn]] void failToWrite() const;

  /// As the user named it.
  std::string path_;
  FilePlace place_;
  std::optional<FileIdentity> identity_;
  /// The old file, to be compared with the new text; none if there is no such file.
  Descriptor old_;
  /// The new file beside the old one; only in Mode::beside.
  std::optional<UnfinishedFile> new_;
  /// What undo() needs: the replaced file, its text if it was rewritten, or that there was none.
  std::optional<UnfinishedFile> kept_;
  std::optional<InputText> keptText_;
  bool isCreated_ = false;
  bool keepsOld_ = false;
  std::string buffer_;
  /// Length of the text that was compared with the old file; equal so far if `isSame_`.
  off_t compared_ = 0;
  bool isSame_ = false;
  Mode mode_ = Mode::closed;
  bool written_ = false;
};

}  // namespace starsift
