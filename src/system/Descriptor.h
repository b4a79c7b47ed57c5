// An open file descriptor with an owner.
#pragma once

#include <unistd.h>

#include <cerrno>
#include <utility>

namespace starsift {

/// Closes its descriptor at the end of its lifetime.
class Descriptor {
 public:
  Descriptor() = default;
  /// Owns `number`; a negative one is none.
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~Descriptor() { close(); }

  bool isOpen() const { return number_ >= 0; }
  /// Negative if there is none.
  int number() const { return number_; }

  /// False if the system doesn't confirm that everything written has arrived. A close that is
  /// interrupted by a signal has closed the descriptor. Without a descriptor true.
  bool close() {
    const int number = std::exchange(number_, -1);
    return number < 0 || ::close(number) == 0 || errno == EINTR;
  }

 private:
  int number_ = -1;
};

}  // namespace starsift
