// The paths of a problem, derived from the path of its solution file.
#pragma once

#include <string>

namespace starsift {

/// The paths of one problem: they share a stem.
struct FileNames {
  std::string optFile;
  std::string solFile;
  std::string latFile;
  std::string stateFile{};
};

/// The stem is `path` without the extension of its last component, or all of `path` if
/// nothing else is left: ".sol" has the stem ".sol".
FileNames fileNames(const std::string& path);

/// The same for a part of the search of that problem: the stem is that of `path` and
/// ".part-I-of-K", but the problem is the same. The only part of one has the files of the problem.
FileNames partFileNames(const std::string& path, unsigned part, unsigned parts);

}  // namespace starsift
