#include "files/AccessRights.h"

#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <optional>
#include <string>

namespace starsift {

namespace {

constexpr mode_t allBits = 07777;

/// The attribute by which the system hands out the access list of a file, in a form of its own.
constexpr const char* accessList = "system.posix_acl_access";

/// The file has no list that says more than its mode, or the file system has none at all.
bool isAbsence(int error) {
  return error == ENODATA || error == ENOTSUP || error == ENOSYS;
}

/// The access list of a file, empty if there is none; nothing if it can't be read.
std::optional<std::string> accessListOf(int file) {
  std::string list;
  ssize_t size = fgetxattr(file, accessList, nullptr, 0);
  if (size > 0) {
    list.resize(static_cast<std::size_t>(size));
    size = fgetxattr(file, accessList, list.data(), list.size());
  }
  if (size < 0) return isAbsence(errno) ? std::optional<std::string>("") : std::nullopt;
  list.resize(static_cast<std::size_t>(size));
  return list;
}

/// Copies the access list, also that there is none: the folder may have given the new file one.
/// False if it can't be read or set.
bool copyAccessList(int oldFile, int newFile) {
  if (oldFile < 0) return false;
  const std::optional<std::string> list = accessListOf(oldFile);
  if (!list) return false;
  if (list->empty()) return fremovexattr(newFile, accessList) == 0 || isAbsence(errno);
  return fsetxattr(newFile, accessList, list->data(), list->size(), 0) == 0;
}

}  // namespace

RightsCopy copyRights(int oldFile, const struct stat& oldStatus, int newFile) {
  // The owner first: a change of owner clears bits of the mode.
  if (fchown(newFile, oldStatus.st_uid, oldStatus.st_gid) != 0) return RightsCopy::failed;
  const bool isWhole = copyAccessList(oldFile, newFile);
  // With a list the bits of the group are its mask, which is the same in both files then.
  const mode_t mode = oldStatus.st_mode & (isWhole ? allBits : mode_t{S_IRWXU});
  if (fchmod(newFile, mode) != 0) return RightsCopy::failed;
  return isWhole ? RightsCopy::whole : RightsCopy::ownersOnly;
}

}  // namespace starsift
