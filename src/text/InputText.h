// The whole text of a file in memory.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace starsift {

/// Owns the bytes of a file as they were when it was read.
class InputText {
 public:
  InputText(std::unique_ptr<char[]> bytes, std::size_t size)
      : bytes_(std::move(bytes)), size_(size) {}
  std::string_view view() const { return {bytes_.get(), size_}; }

 private:
  std::unique_ptr<char[]> bytes_;
  std::size_t size_;
};

/// Reads a regular file to its end, through symbolic links. Nothing where there is
/// no file, or another kind of file: a directory has no text, and a pipe or a
/// device may never end. Throws ReadException when a file that is there, or can't
/// be seen for certain not to be, can't be opened or read.
std::optional<InputText> readFileText(const std::string& path);

}  // namespace starsift
