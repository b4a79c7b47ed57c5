// Vectors of which few entries aren't 0.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace starsift {

struct SparseEntry {
  /// 0-based.
  std::uint32_t index;
  double value;
};

/// One behind the other in memory.
class SparseVectors {
 public:
  std::size_t size() const { return starts_.size() - 1; }
  std::span<const SparseEntry> operator[](std::size_t i) const {
    return {entries_.data() + starts_[i], starts_[i + 1] - starts_[i]};
  }
  /// To the last vector; indices of a vector are different.
  void appendEntry(SparseEntry entry) {
    entries_.push_back(entry);
    ++starts_.back();
  }
  /// Appends a vector without entries.
  void appendVector() { starts_.push_back(entries_.size()); }
  std::size_t entryCount() const { return entries_.size(); }

 private:
  /// Entries of vector i are those from starts_[i] to starts_[i + 1].
  std::vector<std::size_t> starts_{0};
  std::vector<SparseEntry> entries_;
};

/// Columns of rows whose indices are below `columns`. O(entries).
SparseVectors transposed(const SparseVectors& rows, std::size_t columns);

}  // namespace starsift
