#include "core/InputText.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace starsift {

namespace {

/// Closes a file descriptor at the end of the scope.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  int number() const { return number_; }

 private:
  int number_;
};

}  // namespace

std::optional<InputText> readFileText(const std::string& path) {
  // Without O_NONBLOCK opening a pipe waits for a writer that may never come.
  const Descriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
  struct stat status {};
  if (file.number() < 0 || fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
    return std::nullopt;
  const auto capacity = static_cast<std::size_t>(status.st_size);
  auto bytes = std::make_unique_for_overwrite<char[]>(capacity + 1);
  // What a writer appends after the size was taken is not part of the text.
  std::size_t size = 0;
  while (size < capacity) {
    const ssize_t count = read(file.number(), bytes.get() + size, capacity - size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    size += static_cast<std::size_t>(count);
  }
  return InputText(std::move(bytes), size);
}

}  // namespace starsift
