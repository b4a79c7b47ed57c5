// The complete text of a file in memory.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "system/FilePlace.h"

namespace starsift {

/// Owns a copy of the bytes of a file. A zero byte follows them, so that a scan which ends at a
/// character of a kind needs no other end.
class InputText {
 public:
  /// The text of an empty file.
  InputText() : InputText(std::make_unique<char[]>(1), 0) {}
  /// `bytes` has the zero byte at index `size`.
  InputText(std::unique_ptr<char[]> bytes, std::size_t size)
      : bytes_(std::move(bytes)), size_(size) {}
  std::string_view view() const { return {bytes_.get(), size_}; }

 private:
  std::unique_ptr<char[]> bytes_;
  std::size_t size_;
};

/// Reads a regular file to its end. Returns nothing if there is no file at the place,
/// or another kind of file: a directory has no text, and a pipe or a device may
/// never end. Throws ReadException if a file exists, or may exist, and can't be
/// opened or read.
std::optional<InputText> readFileText(const FilePlace& place);
/// The same at the place that a path leads to; follows symbolic links of everybody.
std::optional<InputText> readFileText(const std::string& path);

}  // namespace starsift
