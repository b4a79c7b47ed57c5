#include "files/AccessRights.h"

#include <acl/libacl.h>
#include <sys/acl.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <type_traits>

namespace starsift {

namespace {

constexpr mode_t allBits = 07777;

struct AclDeleter {
  void operator()(acl_t list) const { acl_free(list); }
};
using Acl = std::unique_ptr<std::remove_pointer_t<acl_t>, AclDeleter>;

/// The file system has no access lists.
bool isUnsupported(int error) {
  return error == ENOTSUP || error == EOPNOTSUPP || error == ENOSYS;
}

/// Copies the access list, also a trivial one: the folder may have given the new file another.
/// False if it can't be read or set.
bool copyAccessList(int oldFile, int newFile) {
  if (oldFile < 0) return false;
  const Acl list(acl_get_fd(oldFile));
  if (!list) return isUnsupported(errno);
  if (acl_set_fd(newFile, list.get()) == 0) return true;
  // A list that says no more than a mode is read even where there are none.
  return isUnsupported(errno) && acl_equiv_mode(list.get(), nullptr) == 0;
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
