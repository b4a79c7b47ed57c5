// Stars beside their file while that is read again: to read may be the last thing that the
// process does.
#pragma once

#include <string>

#include "files/YSolutionFile.h"

namespace starsift {

/// A file "PATH.found.XXXXXX" with stars. It stays when the process ends by a fatal report, an
/// exception or a signal; nobody but remove() removes it. One at a time.
class RescueFile {
 public:
  /// Writes the stars beside their file. Without stars, or where no file can be written, there
  /// is none.
  explicit RescueFile(const YSolutionFile& stars);
  RescueFile(const RescueFile&) = delete;
  RescueFile& operator=(const RescueFile&) = delete;

  /// The stars are safe elsewhere.
  void remove();
  /// They are nowhere else: a line on the error stream tells where they are.
  void leave();

 private:
  std::string name_;
};

/// What a user has to know of the file that there is now, as a remark on a fatal report;
/// empty where there is none.
std::string rescueRemark();

}  // namespace starsift
