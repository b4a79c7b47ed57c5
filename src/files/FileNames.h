// The paths of a problem, derived from the path of its solution file.
#pragma once

#include <string>

namespace starsift {

/// The paths of one problem: they share a stem.
struct FileNames {
  std::string optFile;
  std::string solFile;
  std::string latFile;
};

/// The stem is `path` without the extension of its last component, or all of `path` if
/// nothing else is left: ".sol" has the stem ".sol".
FileNames fileNames(const std::string& path);

}  // namespace starsift
