// A copy of the stars beside their file while that file is read again: reading it may end the
// process by a fatal report.
#pragma once

#include <string>

#include "files/YSolutionFile.h"

namespace starsift {

/// A file "PATH.found.XXXXXX" with stars. It stays if the process ends by a fatal report, an
/// exception or a signal; only remove() removes it. There is at most one at a time.
class RescueFile {
 public:
  /// Writes the stars beside their file. Without stars, or if no file can be written, there is
  /// no rescue file.
  explicit RescueFile(const YSolutionFile& stars);
  RescueFile(const RescueFile&) = delete;
  RescueFile& operator=(const RescueFile&) = delete;

  /// Removes the file: the stars are in their own file.
  void remove();
  /// Keeps the file, as the stars are nowhere else, and names it on the error stream.
  void leave();

 private:
  std::string name_;
};

/// The remark on a fatal report that names the present rescue file; empty if there is none.
std::string rescueRemark();

}  // namespace starsift
