#include "app/FolderLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <thread>

namespace starsift {

namespace {

constexpr std::chrono::milliseconds pause{10};
constexpr int tries = 200;

}  // namespace

FolderLock::FolderLock(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  descriptor_ = open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor_ < 0) return;
  for (int i = 1; i < tries && flock(descriptor_, LOCK_EX | LOCK_NB) != 0; ++i) {
    if (errno != EWOULDBLOCK && errno != EINTR) return;
    std::this_thread::sleep_for(pause);
  }
}

FolderLock::~FolderLock() {
  if (descriptor_ >= 0) close(descriptor_);
}

}  // namespace starsift
