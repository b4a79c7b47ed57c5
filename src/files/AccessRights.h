// Owner, mode and access list of a file that takes the place of another one.
#pragma once

#include <sys/stat.h>

namespace starsift {

/// How much of the rights of an old file a new one has.
enum class RightsCopy {
  whole,
  /// Owner and group, and the rights of the owner; nobody else has any.
  ownersOnly,
  /// The owner or mode could not be set.
  failed,
};

/// Gives the new file, which only its owner may access so far, owner, mode and access list of the
/// old one with this status. `newFile` is a descriptor, `oldFile` one open for reading or
/// negative. Rights that can't be read or set are not given: an access list may deny what the
/// mode alone would allow.
RightsCopy copyRights(int oldFile, const struct stat& oldStatus, int newFile);

}  // namespace starsift
