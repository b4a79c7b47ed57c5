// Indices of a sequence, found by the hash of their elements.
#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "core/Index.h"

namespace starsift {

/// A hash table of indices from 1 on: open addressing with linear probing, and at least
/// twice as many slots as indices, so that a free slot is near. The elements belong to
/// the caller, whose predicate selects among indices of equal hash.
class HashedIndices {
 public:
  /// Removes all indices; the storage stays.
  void clear() {
    slots_.assign(slots_.size(), Slot());
    count_ = 0;
  }

  /// Makes room for `most` indices in total without further growth.
  void reserve(Index most) {
    std::size_t size = 16;
    while (size < 2 * static_cast<std::size_t>(most)) size *= 2;
    if (size > slots_.size()) grow(size);
  }

  /// Has the processor load what a search for this hash will look at first.
  void prefetch(std::size_t hash) const {
    if (!slots_.empty()) __builtin_prefetch(&slots_[hash & (slots_.size() - 1)]);
  }

  /// The index with this hash for which the predicate `fits` is true; 0 if there is none.
  template <class Fits>
  Index find(std::size_t hash, Fits fits) const {
    return slots_.empty() ? 0 : slots_[position(hash, fits)].index;
  }

  /// Same as find(), but if there is none `index` is entered and returned.
  template <class Fits>
  Index findOrEnter(std::size_t hash, Index index, Fits fits) {
    reserve(count_ + 1);
    Slot& slot = slots_[position(hash, fits)];
    if (slot.index != 0) return slot.index;
    slot = {index, hash};
    ++count_;
    return index;
  }

 private:
  /// Index 0 marks a free slot.
  struct Slot {
    Index index = 0;
    std::size_t hash = 0;
  };

  /// The slot of the index with this hash that fits, or else the free slot to use for it.
  template <class Fits>
  std::size_t position(std::size_t hash, Fits fits) const {
    std::size_t k = hash & (slots_.size() - 1);
    while (slots_[k].index != 0 && !(slots_[k].hash == hash && fits(slots_[k].index)))
      k = (k + 1) & (slots_.size() - 1);
    return k;
  }

  void grow(std::size_t size) {
    std::vector<Slot> former(size);
    std::swap(former, slots_);
    for (const Slot& slot : former)
      if (slot.index != 0) slots_[position(slot.hash, [](Index) { return false; })] = slot;
  }

  /// Their number is 0 or a power of two.
  std::vector<Slot> slots_;
  Index count_ = 0;
};

}  // namespace starsift
