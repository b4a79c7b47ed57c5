#include "files/FileNames.h"

namespace starsift {

FileNames fileNames(const std::string& path) {
  const std::size_t dot = path.rfind('.');
  const std::size_t slash = path.rfind('/');
  const bool hasExtension = dot != std::string::npos && (slash == std::string::npos || dot > slash);
  std::string stem = hasExtension ? path.substr(0, dot) : path;
  if (stem.empty()) stem = path;
  return {stem + ".opt", stem + ".sol", stem + ".lat"};
}

}  // namespace starsift
