// A copy of the stars of a search where their file can't have them: beside that file, or in the
// current folder.
#pragma once

#include <optional>
#include <string>

#include "files/YSolutionFile.h"
#include "system/FilePlace.h"

namespace starsift {

/// A file "PATH.found.XXXXXX" with stars. It stays if the process ends by a fatal report, an
/// exception or a signal; only remove() removes it. There is at most one at a time.
class RescueFile {
 public:
  /// Writes the stars beside their file or, if that fails, in the current folder. Without stars,
  /// or if no file can be written, there is no rescue file.
  explicit RescueFile(const YSolutionFile& stars);
  RescueFile(const RescueFile&) = delete;
  RescueFile& operator=(const RescueFile&) = delete;

  /// Removes the file: the stars are in their own file.
  void remove();
  /// Keeps the file, as the stars are nowhere else, and names it on the error stream; says so if
  /// there is none.
  void leave();

 private:
  /// False if the stars can't be written to a new file "PATH.found.XXXXXX".
  bool write(const std::string& path, const YSolutionFile& stars);

  std::optional<FilePlace> place_;
  /// In the folder of the place; empty if there is no file.
  std::string name_;
};

/// The remark on a fatal report that names the present rescue file; empty if there is none.
std::string rescueRemark();

}  // namespace starsift
