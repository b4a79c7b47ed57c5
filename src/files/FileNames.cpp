#include "files/FileNames.h"

namespace starsift {

FileNames fileNames(const std::string& path) {
  const std::size_t dot = path.rfind('.');
  const std::size_t slash = path.rfind('/');
  const bool hasExtension = dot != std::string::npos && (slash == std::string::npos || dot > slash);
  std::string stem = hasExtension ? path.substr(0, dot) : path;
  if (stem.empty()) stem = path;
  return {stem + ".opt", stem + ".sol", stem + ".lat", stem + ".state"};
}

FileNames partFileNames(const std::string& path, unsigned part, unsigned parts) {
  FileNames whole = fileNames(path);
  if (parts == 1) return whole;
  FileNames names = fileNames(whole.optFile.substr(0, whole.optFile.size() - 3) + "part-" +
                              std::to_string(part) + "-of-" + std::to_string(parts) + ".opt");
  names.optFile = whole.optFile;
  return names;
}

}  // namespace starsift
