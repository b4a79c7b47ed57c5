#include "system/FileIdentity.h"

#include <sys/stat.h>

namespace starsift {

FileIdentity identityOf(const struct stat& status) {
  return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec,
          status.st_mtim.tv_nsec};
}

std::optional<FileIdentity> fileIdentity(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0) return std::nullopt;
  return identityOf(status);
}

std::optional<FileIdentity> fileIdentity(int descriptor) {
  struct stat status {};
  if (fstat(descriptor, &status) != 0) return std::nullopt;
  return identityOf(status);
}

}  // namespace starsift
