#include "files/ResultFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <ostream>
#include <utility>

#include "files/AccessRights.h"
#include "system/Console.h"
#include "system/Exceptions.h"
#include "system/Signals.h"
#include "system/SystemCall.h"
#include "system/WholeWrite.h"

namespace starsift {

namespace {

/// Bytes gathered before they are written to the file.
constexpr std::size_t bufferSize = std::size_t{1} << 16U;

/// Modes of a file that was not there, to be narrowed by the umask or the folder's access list,
/// and of one that gets the rights of another.
constexpr mode_t defaultMode = 0666;
constexpr mode_t privateMode = 0600;

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

bool cutFile(int descriptor, std::size_t size) {
  return uninterrupted([&] { return ftruncate(descriptor, static_cast<off_t>(size)); }) == 0;
}

/// Reserves space for a text of `size` bytes before the first byte of the old one is overwritten.
bool reserveInPlace(int descriptor, std::size_t size) {
  struct stat status {};
  if (fstat(descriptor, &status) != 0) return false;
  const off_t growth = static_cast<off_t>(size) - status.st_size;
  if (growth <= 0) return true;
  int error = EINTR;
  while (error == EINTR) error = posix_fallocate(descriptor, status.st_size, growth);
  if (error == 0) return true;
  // Frees the space reserved after the old text; even if that fails, the old text is whole.
  static_cast<void>(cutFile(descriptor, static_cast<std::size_t>(status.st_size)));
  return false;
}

/// Makes `text` the whole content of a file.
bool overwrite(int descriptor, std::string_view text) {
  return lseek(descriptor, 0, SEEK_SET) == 0 && writeAll(descriptor, text) &&
         cutFile(descriptor, text.size()) && syncFile(descriptor);
}

/// Errors of creating a file that mean: not in this folder, or not by this user.
bool isRefusal(int error) {
  return error == EACCES || error == EPERM || error == EROFS || error == ENOENT ||
         error == ENOTDIR || error == ENAMETOOLONG || error == ELOOP;
}

void reportNarrowedRights(const std::string& path) {
  remarkStream() << "*** The access list of " << path
                 << " could not be copied: only its owner may access it now" << endLine();
  stampOutputTime();
}

}  // namespace

ResultFile::ResultFile(const std::string& path) : ResultFile(path, fileIdentity(path)) {}

ResultFile::ResultFile(std::string path, std::optional<FileIdentity> expected)
    : path_(std::move(path)), place_(path_), identity_(expected) {
  if (place_.isReachable()) mode_ = openBeside();
}

ResultFile::Mode ResultFile::openBeside() {
  const std::optional<struct stat> status = place_.status();
  if (status && (!S_ISREG(status->st_mode) || !place_.isWritable())) return Mode::closed;
  new_.emplace(place_, status ? privateMode : defaultMode);
  if (new_->isOpen()) return status ? replaceWithRights(*status) : Mode::beside;
  if (!isRefusal(errno)) failToWrite();
  new_.reset();
  return status ? Mode::inPlace : Mode::closed;
}

ResultFile::Mode ResultFile::replaceWithRights(const struct stat& status) {
  old_ = place_.open(O_RDONLY);
  isSame_ = old_.isOpen();
  // The file has just gone or become a link, and nothing will be replaced.
  if (!isSame_ && !isExpected()) return Mode::beside;
  switch (copyRights(old_.number(), status, new_->descriptor())) {
    case RightsCopy::whole:
      return Mode::beside;
    case RightsCopy::ownersOnly:
      reportNarrowedRights(path_);
      return Mode::beside;
    case RightsCopy::failed:
      break;
  }
  // The file belongs to another user: only its owner or root could replace it by one with
  // the same owner.
  new_.reset();
  return Mode::inPlace;
}

void ResultFile::write(std::string_view text) {
  if (!isOpen()) return;
  written_ = written_ || !text.empty();
  if (mode_ == Mode::beside && buffer_.empty() && text.size() >= bufferSize) return append(text);
  buffer_ += text;
  if (mode_ == Mode::beside && buffer_.size() >= bufferSize) flush();
}

void ResultFile::flush() {
  append(buffer_);
  buffer_.clear();
}

void ResultFile::append(std::string_view text) {
  const SizeSignalIgnored ignored;
  compareWithOld(text);
  if (!writeAll(new_->descriptor(), text)) failToWrite();
}

void ResultFile::compareWithOld(std::string_view text) {
  if (!isSame_) return;
  std::string old(text.size(), '\0');
  isSame_ = readAt(old_.number(), old, compared_) && old == text;
  compared_ += static_cast<off_t>(text.size());
}

bool ResultFile::isSameText() const {
  return isSame_ && identity_ && identity_->size == compared_ &&
         fileIdentity(old_.number()) == identity_ && isExpected();
}

Commit ResultFile::commit() {
  if (!isOpen()) return Commit::closed;
  const Mode mode = std::exchange(mode_, Mode::closed);
  Commit commit = Commit::written;
  if (!written_)
    commit = remove(mode);
  else
    commit = mode == Mode::beside ? replace() : rewriteInPlace();
  new_.reset();
  old_.close();
  return commit;
}

Commit ResultFile::replace() {
  flush();
  if (isSameText()) return Commit::written;
  const bool synced = syncFile(new_->descriptor());
  const std::optional<FileIdentity> identity = fileIdentity(new_->descriptor());
  if (!new_->close() || !synced) failToWrite();
  if (keepsOld_ && identity_) kept_.emplace(place_, UnfinishedFile::Kept::oldFile);
  // Nothing that takes time may stand between this look and the replacement.
  if (!isExpected()) return Commit::changed;
  if (!new_->replaceOld()) failToWrite();
  isCreated_ = !identity_;
  identity_ = identity;
  // The new name is in place already; a file system that can't sync a folder keeps it as safe as
  // it can.
  place_.syncFolder();
  return Commit::written;
}

Commit ResultFile::rewriteInPlace() {
  const SizeSignalIgnored ignored;
  std::optional<InputText> old = oldText();
  if (old && old->view() == buffer_ && isExpected()) return Commit::written;
  Descriptor file = place_.open(O_WRONLY);
  if (!file.isOpen()) failToWrite();
  if (!old || fileIdentity(file.number()) != identity_) return Commit::changed;
  if (!reserveInPlace(file.number(), buffer_.size())) failToWrite();
  const bool whole = overwrite(file.number(), buffer_);
  // The space of the old text is still reserved. If this fails as well, nothing is left to try.
  if (!whole) static_cast<void>(overwrite(file.number(), old->view()));
  identity_ = fileIdentity(file.number());
  if (!file.close() || !whole) failToWrite();
  if (keepsOld_) keptText_ = std::move(old);
  return Commit::written;
}

void ResultFile::undo() {
  if (!isExpected()) return;
  if (kept_ && kept_->exists())
    kept_->replaceOld();
  else if (keptText_)
    restoreInPlace();
  else if (isCreated_)
    place_.unlinkPath();
  else
    return;
  place_.syncFolder();
}

void ResultFile::restoreInPlace() {
  const SizeSignalIgnored ignored;
  const Descriptor file = place_.open(O_WRONLY);
  // If this fails nothing is left to try.
  if (file.isOpen()) static_cast<void>(overwrite(file.number(), keptText_->view()));
}

std::optional<InputText> ResultFile::oldText() const {
  try {
    return readFileText(place_);
  } catch (const ReadException&) {
    failToWrite();
  }
}

Commit ResultFile::remove(Mode mode) {
  if (!isExpected()) return Commit::changed;
  if (place_.unlinkPath() || errno == ENOENT) {
    identity_.reset();
    return Commit::written;
  }
  // If the name can't be removed, an empty file is the nearest to none.
  return mode == Mode::beside ? replace() : rewriteInPlace();
}

void ResultFile::failToWrite() const {
  throw WriteException("Could not write file: " + path_);
}

}  // namespace starsift
