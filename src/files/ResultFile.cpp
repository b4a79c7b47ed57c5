#include "files/ResultFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <optional>
#include <utility>

#include "system/Exceptions.h"
#include "system/Failure.h"
#include "system/Signals.h"
#include "system/SystemCall.h"

namespace starsift {

namespace {

/// Bytes gathered before they are written to the file.
constexpr std::size_t bufferSize = std::size_t{1} << 18U;

/// Symbolic links followed until a path counts as a loop.
constexpr int linkLimit = 40;

std::string directoryOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "" : path.substr(0, slash + 1);
}

/// The path that all symbolic links of the last component lead to; it need not exist.
/// Nothing if they run in a circle.
std::optional<std::string> linkTarget(std::string path) {
  std::array<char, PATH_MAX> link{};
  for (int i = 0; i < linkLimit; ++i) {
    const ssize_t length = readlink(path.c_str(), link.data(), link.size());
    if (length < 0) return path;
    const std::string_view next(link.data(), static_cast<std::size_t>(length));
    path = next.starts_with('/') ? "" : directoryOf(path);
    path += next;
  }
  return std::nullopt;
}

bool writeAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t count =
        uninterrupted([&] { return ::write(descriptor, text.data(), text.size()); });
    if (count <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

/// Fills `text` with the bytes of a file from `place` on; false if there are fewer.
bool readAt(int descriptor, std::string& text, off_t place) {
  std::size_t filled = 0;
  while (filled < text.size()) {
    const ssize_t count = uninterrupted([&] {
      return pread(descriptor, text.data() + filled, text.size() - filled,
                   place + static_cast<off_t>(filled));
    });
    if (count <= 0) return false;
    filled += static_cast<std::size_t>(count);
  }
  return true;
}

bool syncFile(int descriptor) {
  return uninterrupted([&] { return fsync(descriptor); }) == 0;
}

bool cutFile(int descriptor, std::size_t size) {
  return uninterrupted([&] { return ftruncate(descriptor, static_cast<off_t>(size)); }) == 0;
}

/// False if the system doesn't confirm that the text was written. A close that is interrupted
/// by a signal has closed the descriptor.
bool closeFile(int descriptor) {
  return close(descriptor) == 0 || errno == EINTR;
}

/// Errors of creating a file that mean: not in this folder, or not by this user.
bool isRefusal(int error) {
  return error == EACCES || error == EPERM || error == EROFS || error == ENOENT ||
         error == ENOTDIR || error == ENAMETOOLONG || error == ELOOP;
}

void syncDirectory(const std::string& path) {
  const std::string directory = directoryOf(path);
  const int descriptor =
      open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (descriptor < 0) return;
  // The new name is in place already; a file system that can't sync a directory
  // keeps it as safe as it can.
  fsync(descriptor);
  close(descriptor);
}

}  // namespace

ResultFile::ResultFile(const std::string& path) : ResultFile(path, fileIdentity(path)) {}

ResultFile::ResultFile(std::string path, std::optional<FileIdentity> expected)
    : path_(std::move(path)), identity_(expected) {
  std::optional<std::string> target = linkTarget(path_);
  if (!target) return;
  target_ = std::move(*target);
  struct stat status {};
  const bool exists = stat(target_.c_str(), &status) == 0;
  if (exists && !S_ISREG(status.st_mode)) return;
  if (exists && access(target_.c_str(), W_OK) != 0) return;
  if (!openBeside()) {
    if (!isRefusal(errno)) failToWrite();
    if (exists) mode_ = Mode::inPlace;
  } else if (!exists) {
    takeDefaultMode();
    mode_ = Mode::beside;
  } else if (takeOwnerAndMode(status)) {
    mode_ = Mode::beside;
  } else {
    // The file belongs to another user: only its owner or root could replace it by one with
    // the same owner.
    discard();
    mode_ = Mode::inPlace;
  }
  if (!exists || mode_ != Mode::beside) return;
  oldDescriptor_ = open(target_.c_str(), O_RDONLY | O_CLOEXEC);
  isSame_ = oldDescriptor_ >= 0;
}

ResultFile::~ResultFile() {
  discard();
}

bool ResultFile::openBeside() {
  std::string name = directoryOf(target_) + ".starsift.XXXXXX";
  descriptor_ = mkostemp(name.data(), O_CLOEXEC);
  if (descriptor_ < 0) return false;
  temporary_ = std::move(name);
  return true;
}

bool ResultFile::takeOwnerAndMode(const struct stat& status) const {
  // The owner first: a change of owner clears bits of the mode.
  return fchown(descriptor_, status.st_uid, status.st_gid) == 0 &&
         fchmod(descriptor_, status.st_mode & 07777U) == 0;
}

void ResultFile::takeDefaultMode() const {
  const mode_t mask = umask(0);
  umask(mask);
  // A file system without modes rejects this; the mode of its files is fixed.
  fchmod(descriptor_, 0666U & ~mask);
}

void ResultFile::write(std::string_view text) {
  if (!isOpen()) return;
  buffer_ += text;
  written_ = written_ || !text.empty();
  if (mode_ == Mode::beside && buffer_.size() >= bufferSize) flush();
}

void ResultFile::flush() {
  const SizeSignalIgnored ignored;
  compareWithOld();
  if (!writeAll(descriptor_, buffer_)) failToWrite();
  buffer_.clear();
}

void ResultFile::compareWithOld() {
  if (!isSame_) return;
  std::string old(buffer_.size(), '\0');
  isSame_ = readAt(oldDescriptor_, old, compared_) && old == buffer_;
  compared_ += static_cast<off_t>(buffer_.size());
}

bool ResultFile::isSameText() const {
  struct stat status {};
  return isSame_ && fstat(oldDescriptor_, &status) == 0 && status.st_size == compared_ &&
         fileIdentity(oldDescriptor_) == identity_;
}

Commit ResultFile::commit() {
  if (!isOpen()) return Commit::closed;
  const Mode mode = std::exchange(mode_, Mode::closed);
  if (!written_) return remove(mode);
  return mode == Mode::beside ? replace() : rewriteInPlace();
}

Commit ResultFile::replace() {
  flush();
  if (isSameText() && isExpected()) {
    discard();
    return Commit::written;
  }
  const bool synced = syncFile(descriptor_);
  const std::optional<FileIdentity> identity = fileIdentity(descriptor_);
  const bool closed = closeFile(std::exchange(descriptor_, -1));
  if (!synced || !closed) failToWrite();
  // Nothing that takes time may stand between this look and the replacement.
  if (!isExpected()) {
    discard();
    return Commit::changed;
  }
  if (rename(temporary_.c_str(), target_.c_str()) != 0) failToWrite();
  temporary_.clear();
  identity_ = identity;
  syncDirectory(target_);
  return Commit::written;
}

Commit ResultFile::rewriteInPlace() {
  const SizeSignalIgnored ignored;
  const std::optional<InputText> old = oldText();
  if (!isExpected()) return Commit::changed;
  if (old && old->view() == buffer_) return Commit::written;
  descriptor_ = uninterrupted([&] { return open(target_.c_str(), O_WRONLY | O_CLOEXEC); });
  if (descriptor_ < 0) failToWrite();
  reserveInPlace();
  const bool whole = writeAll(descriptor_, buffer_) && cutFile(descriptor_, buffer_.size()) &&
                     syncFile(descriptor_);
  if (!whole && old) putBack(old->view());
  identity_ = fileIdentity(descriptor_);
  if (!closeFile(std::exchange(descriptor_, -1)) || !whole) failToWrite();
  return Commit::written;
}

std::optional<InputText> ResultFile::oldText() {
  try {
    return readFileText(target_);
  } catch (const ReadException&) {
    failToWrite();
  }
}

void ResultFile::reserveInPlace() {
  struct stat status {};
  if (fstat(descriptor_, &status) != 0) failToWrite();
  const off_t growth = static_cast<off_t>(buffer_.size()) - status.st_size;
  if (growth <= 0) return;
  int error = EINTR;
  while (error == EINTR) error = posix_fallocate(descriptor_, status.st_size, growth);
  if (error == 0) return;
  // Frees the space reserved after the old text; even if that fails, the old text is whole.
  static_cast<void>(cutFile(descriptor_, static_cast<std::size_t>(status.st_size)));
  failToWrite();
}

void ResultFile::putBack(std::string_view old) const {
  // Its space is still reserved. If this fails as well, nothing is left to try.
  if (lseek(descriptor_, 0, SEEK_SET) == 0 && writeAll(descriptor_, old) &&
      cutFile(descriptor_, old.size()))
    syncFile(descriptor_);
}

Commit ResultFile::remove(Mode mode) {
  if (!isExpected()) {
    discard();
    return Commit::changed;
  }
  if (unlink(path_.c_str()) == 0 || errno == ENOENT) {
    identity_.reset();
    discard();
    return Commit::written;
  }
  // If the name can't be removed, an empty file is the nearest to none.
  return mode == Mode::beside ? replace() : rewriteInPlace();
}

void ResultFile::discard() {
  if (oldDescriptor_ >= 0) close(std::exchange(oldDescriptor_, -1));
  if (descriptor_ >= 0) close(std::exchange(descriptor_, -1));
  if (!temporary_.empty()) unlink(temporary_.c_str());
  temporary_.clear();
}

void ResultFile::failToWrite() {
  discard();
  fail("Could not write file: " + path_);
}

}  // namespace starsift
