#include "system/FilePlace.h"

#include <fcntl.h>
#include <sys/random.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <string_view>
#include <utility>

#include "system/Exceptions.h"
#include "system/SystemCall.h"

namespace starsift {

namespace {

/// Symbolic links followed until a path counts as a loop.
constexpr int linkLimit = 40;

/// Names tried for a new file; each is free but for a chance of one in 10^10.
constexpr int nameTries = 100;

constexpr std::string_view nameCharacters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";

/// The components of a path, without empty ones and ".".
std::deque<std::string> componentsOf(std::string_view path) {
  std::deque<std::string> components;
  while (!path.empty()) {
    const std::size_t end = std::min(path.find('/'), path.size());
    const std::string_view component = path.substr(0, end);
    if (!component.empty() && component != ".") components.emplace_back(component);
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  return components;
}

/// Others may make files in a folder with this mode.
bool isShared(mode_t mode) {
  return (mode & (S_ISVTX | S_IWOTH)) != 0;
}

std::string randomSuffix() {
  std::array<unsigned char, 6> bytes{};
  // Without random numbers O_EXCL still refuses a name that is taken.
  [[maybe_unused]] const ssize_t count = getrandom(bytes.data(), bytes.size(), GRND_NONBLOCK);
  std::string suffix;
  for (const unsigned char byte : bytes) suffix += nameCharacters[byte % nameCharacters.size()];
  return suffix;
}

/// Makes the call, which is -1 with errno on error, with `name` set to one name after another until
/// it isn't taken.
template <class Call>
int withFreeName(const std::string& prefix, std::string& name, const Call& call) {
  int result = -1;
  errno = EEXIST;
  for (int i = 0; i < nameTries && result < 0 && errno == EEXIST; ++i) {
    name = prefix + randomSuffix();
    result = call();
  }
  return result;
}

}  // namespace

FilePlace::FilePlace(const std::string& path, Links links) : path_(path), trust_(links) {
  Rest rest = componentsOf(path);
  // A path that ends with a slash names no file.
  if (rest.empty() || path.back() == '/') {
    error_ = ENOENT;
    return;
  }
  if (!enter(path.front() == '/' ? "/" : ".")) return;
  while (!rest.empty() && follow(rest)) {
  }
}

bool FilePlace::enter(const char* folder) {
  folder_ = Descriptor(::open(folder, O_PATH | O_DIRECTORY | O_CLOEXEC));
  return folder_.isOpen() || stop(errno);
}

bool FilePlace::stop(int error) {
  error_ = error;
  folder_.close();
  return false;
}

bool FilePlace::follow(Rest& rest) {
  const std::string name = std::move(rest.front());
  rest.pop_front();
  const bool isLast = rest.empty();
  Descriptor next(uninterrupted(
      [&] { return openat(folder_.number(), name.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC); }));
  struct stat status {};
  if (!next.isOpen() && !(isLast && errno == ENOENT)) return stop(errno);
  if (next.isOpen() && fstat(next.number(), &status) != 0) return stop(errno);
  if (next.isOpen() && S_ISLNK(status.st_mode)) {
    if (isLast && linkName_.empty()) {
      linkFolder_ = Descriptor(fcntl(folder_.number(), F_DUPFD_CLOEXEC, 0));
      linkName_ = name;
    }
    return followLink(next, status, rest);
  }
  if (isLast)
    name_ = name;
  else
    folder_ = std::move(next);
  return true;
}

bool FilePlace::followLink(const Descriptor& link, const struct stat& status, Rest& rest) {
  if (trust_ == Links::trusted && status.st_uid != geteuid() && status.st_uid != 0) {
    struct stat folder {};
    if (fstat(folder_.number(), &folder) != 0) return stop(errno);
    if (isShared(folder.st_mode))
      throw LinkException("Link of another user on the way to file: " + path_);
  }
  if (++followed_ > linkLimit) return stop(ELOOP);
  std::array<char, PATH_MAX> text{};
  const ssize_t length = readlinkat(link.number(), "", text.data(), text.size());
  if (length <= 0) return stop(length < 0 ? errno : ENOENT);
  const std::string_view target(text.data(), static_cast<std::size_t>(length));
  if (target.front() == '/' && !enter("/")) return false;
  Rest components = componentsOf(target);
  rest.insert(rest.begin(), components.begin(), components.end());
  return !rest.empty() || stop(EISDIR);
}

std::optional<struct stat> FilePlace::status() const {
  struct stat status {};
  if (fstatat(folder_.number(), name_.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0)
    return std::nullopt;
  return status;
}

std::optional<FileIdentity> FilePlace::identity() const {
  const std::optional<struct stat> found = status();
  if (!found) return std::nullopt;
  return identityOf(*found);
}

bool FilePlace::isWritable() const {
  return faccessat(folder_.number(), name_.c_str(), W_OK, 0) == 0;
}

Descriptor FilePlace::open(int flags) const {
  return Descriptor(uninterrupted([&] {
    return openat(folder_.number(), name_.c_str(),
                  flags | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  }));
}

Descriptor FilePlace::create(const std::string& prefix, mode_t mode, std::string& name) const {
  return Descriptor(withFreeName(prefix, name, [&] {
    return uninterrupted([&] {
      return openat(folder_.number(), name.c_str(),
                    O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
    });
  }));
}

bool FilePlace::link(const std::string& prefix, std::string& name) const {
  return withFreeName(prefix, name, [&] {
           return linkat(folder_.number(), name_.c_str(), folder_.number(), name.c_str(), 0);
         }) == 0;
}

bool FilePlace::replaceBy(const std::string& name) const {
  return renameat(folder_.number(), name.c_str(), folder_.number(), name_.c_str()) == 0;
}

bool FilePlace::unlinkBeside(const std::string& name) const {
  return unlinkat(folder_.number(), name.c_str(), 0) == 0;
}

bool FilePlace::unlinkPath() const {
  return linkName_.empty() ? unlinkBeside(name_)
                           : unlinkat(linkFolder_.number(), linkName_.c_str(), 0) == 0;
}

bool FilePlace::syncFolder() const {
  // A descriptor by which a folder is only entered can't be synced.
  const Descriptor folder(openat(folder_.number(), ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return folder.isOpen() && fsync(folder.number()) == 0;
}

}  // namespace starsift
