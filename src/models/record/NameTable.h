// Names with indices 0, 1, 2, ... in the order in which they came, and the way back.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace starsift {

/// The names lie in one block of memory, so that a million of them take little more than their
/// bytes; no name is freed before the table.
class NameTable {
 public:
  struct Added {
    std::uint32_t index;
    /// False if the name was there before.
    bool isNew;
  };

  /// The index of `name`, which is appended if it isn't there. Throws std::length_error at 2^32 - 1
  /// names.
  Added add(std::string_view name);

  std::optional<std::uint32_t> find(std::string_view name) const;

  std::size_t size() const { return ends_.size(); }
  /// Valid until the next add(). index < size().
  std::string_view operator[](std::size_t index) const {
    const std::size_t begin = index == 0 ? 0 : ends_[index - 1];
    return std::string_view(text_).substr(begin, ends_[index] - begin);
  }

  friend bool operator==(const NameTable& a, const NameTable& b) {
    return a.text_ == b.text_ && a.ends_ == b.ends_;
  }

 private:
  /// The slot that holds `name`, or the free one where it belongs.
  std::size_t slotOf(std::string_view name) const;
  void growSlots();

  std::string text_;
  std::vector<std::size_t> ends_;
  /// Index + 1, or 0 for a free slot; the size is a power of two, or 0.
  std::vector<std::uint32_t> slots_;
};

}  // namespace starsift
