// Being a user whom the modes of files stop, also where the tests run as root.
#pragma once

#include <grp.h>
#include <sys/prctl.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

namespace starsift::test {

/// A user and group without rights.
constexpr unsigned nobody = 65534;

/// In a child process: gives up root for good. Anybody else stays who they are.
inline void becomeNobody() {
  if (geteuid() != 0) return;
  if (setgroups(0, nullptr) != 0 || setgid(nobody) != 0 || setuid(nobody) != 0) std::abort();
  // The leak checker traces its own process, which a change of user forbids.
  prctl(PR_SET_DUMPABLE, 1);
}

/// Gives a file to the user that becomeNobody() makes.
inline void giveToNobody(const std::string& path) {
  if (geteuid() == 0 && chown(path.c_str(), nobody, nobody) != 0) std::abort();
}

}  // namespace starsift::test
