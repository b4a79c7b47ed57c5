#include "files/FileNames.h"

#include "core/Text.h"

namespace starsift {

FileNames fileNames(const std::string& path) {
  std::string stem = regexReplace(path, "\\.[^./]*$", "");
  if (stem.empty()) stem = path;
  return {stem + ".opt", stem + ".sol", stem + ".lat"};
}

}  // namespace starsift
