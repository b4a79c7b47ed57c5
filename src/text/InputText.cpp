#include "text/InputText.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

#include "system/Descriptor.h"
#include "system/Exceptions.h"
#include "system/LargePages.h"
#include "system/SystemCall.h"

namespace starsift {

namespace {

/// True for the errors that mean that the path names no file.
bool isAbsence(int error) {
  return error == ENOENT || error == ENOTDIR || error == ELOOP || error == ENAMETOOLONG;
}

/// True if a place that open() refused with errno may hold a regular file.
bool mayHoldText(const FilePlace& place) {
  if (isAbsence(errno)) return false;
  const std::optional<struct stat> status = place.status();
  return status ? S_ISREG(status->st_mode) : !isAbsence(errno);
}

[[noreturn]] void refuse(const std::string& path) {
  throw ReadException("Could not read file: " + path);
}

/// Bytes in storage that grows on demand.
struct Buffer {
  explicit Buffer(std::size_t room)
      : bytes(std::make_unique_for_overwrite<char[]>(room)), capacity(room) {
    preferLargePages(bytes.get(), room);
  }

  void grow() {
    Buffer larger(2 * capacity);
    std::copy_n(bytes.get(), size, larger.bytes.get());
    bytes = std::move(larger.bytes);
    capacity = larger.capacity;
  }

  std::unique_ptr<char[]> bytes;
  std::size_t capacity;
  std::size_t size = 0;
};

}  // namespace

std::optional<InputText> readFileText(const FilePlace& place) {
  if (!place.isReachable() && !isAbsence(place.error())) refuse(place.path());
  if (!place.isReachable()) return std::nullopt;
  const Descriptor file = place.open(O_RDONLY);
  if (file.number() < 0) {
    if (mayHoldText(place)) refuse(place.path());
    return std::nullopt;
  }
  const std::string& path = place.path();
  struct stat status {};
  if (fstat(file.number(), &status) != 0) refuse(path);
  if (!S_ISREG(status.st_mode)) return std::nullopt;
  // The size is only an estimate: a writer may be adding to the file. With one byte
  // more the end of a file of that size is seen without growing the buffer.
  Buffer buffer(static_cast<std::size_t>(status.st_size) + 1);
  while (true) {
    const ssize_t count = uninterrupted([&] {
      return read(file.number(), buffer.bytes.get() + buffer.size, buffer.capacity - buffer.size);
    });
    if (count < 0) refuse(path);
    if (count == 0) break;
    buffer.size += static_cast<std::size_t>(count);
    if (buffer.size == buffer.capacity) buffer.grow();
  }
  buffer.bytes[buffer.size] = '\0';
  return InputText(std::move(buffer.bytes), buffer.size);
}

std::optional<InputText> readFileText(const std::string& path) {
  return readFileText(FilePlace(path, Links::any));
}

}  // namespace starsift
