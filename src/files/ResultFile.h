// Writing a result file so that there is never less than there was: the whole new
// text goes to a new file beside the old one, is flushed to disk and then takes
// the old one's name.
#pragma once

#include <sys/stat.h>

#include <optional>
#include <string>
#include <string_view>

#include "system/FileIdentity.h"
#include "text/InputText.h"

namespace starsift {

/// The new content of one file, written piece by piece and put in place at the
/// end. Paths are followed through symbolic links; mode and owner stay. A path
/// that can't be opened for writing, or is no regular file, is left alone without
/// a word. Any failure to write the text whole is fatal, "Could not write file: "
/// and the path: the old file stays, the new one is removed.
///
/// Where no file can be created beside the old one, or none with its owner and
/// mode, the old one is rewritten in place at commit(), from the text kept in
/// memory.
class ResultFile {
 public:
  explicit ResultFile(std::string path);
  ResultFile(const ResultFile&) = delete;
  ResultFile& operator=(const ResultFile&) = delete;
  /// Without commit() the old file stays.
  ~ResultFile();

  /// False: everything that is written disappears.
  bool isOpen() const { return mode_ != Mode::closed; }

  void write(std::string_view text);

  /// Puts the text in place of the old file. An empty text removes the file, and
  /// behind a symbolic link the link.
  void commit();

  /// What is at the path, as the constructor met it and commit() left it: whoever has
  /// replaced it since doesn't count.
  const std::optional<FileIdentity>& identity() const { return identity_; }

 private:
  enum class Mode { closed, beside, inPlace };

  bool openBeside();
  /// Makes the new file like the old one; false where that isn't allowed.
  bool takeOwnerAndMode(const struct stat& status) const;
  /// The mode of a file that is created as usual.
  void takeDefaultMode() const;
  void flush();
  void replace();
  void rewriteInPlace();
  /// What putBack() takes; fatal where it can't be read.
  std::optional<InputText> oldText();
  /// Makes room for a longer text before the first byte of the old one goes.
  void reserveInPlace();
  /// Undoes what a rewriting in place that failed has done.
  void putBack(std::string_view old) const;
  void remove();
  void discard();
  [[noreturn]] void failToWrite();

  /// As the user named it.
  std::string path_;
  std::optional<FileIdentity> identity_;
  /// Where the symbolic links end.
  std::string target_;
  /// The new file beside the target, empty while there is none.
  std::string temporary_;
  std::string buffer_;
  int descriptor_ = -1;
  Mode mode_ = Mode::closed;
  bool written_ = false;
};

}  // namespace starsift
