// The shortest vectors of its lattice that a search has met.
#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "core/Vector.h"

namespace starsift {

/// Raw vectors, distinct up to sign, in ascending order of their sup-norms and then of their
/// lengths. The sup-norm is that of the coordinates that decide whether a vector is a solution:
/// those from a first coordinate on, as the target coordinate before them doesn't.
template <class T>
class ShortVectors {
 public:
  struct Entry {
    /// Its last entry other than 0 is positive. Shared by the copies of a collection, as each
    /// step of a search makes some.
    std::shared_ptr<const Vector<T>> vector;
    T supNorm = T();
    /// Rounded.
    long double squaredLength = 0;
    /// Sums and differences with all other vectors that have this mark were made.
    bool isPaired = false;
  };

  /// Keeps at most `limit` vectors from now on, none at first. Those of other coordinates than
  /// from `first` on are dropped.
  void open(std::size_t limit, Index first);
  void clear() { entries_.clear(); }

  /// Adds a copy of a vector, which has the dimension of the others, unless it is there already,
  /// is 0, or is no shorter than the last one of a full collection, which it replaces. Over long
  /// double a vector outside the safe range isn't added: its entries may have been rounded. True
  /// if it was added.
  bool offer(const Vector<T>& vector);
  /// False if the sup-norm of the vector is too great: offer() would be in vain.
  bool mayTake(const Vector<T>& vector) const;

  /// Best first.
  const std::vector<Entry>& entries() const { return entries_; }
  /// Sets the mark of entry i, 0-based.
  void markPaired(std::size_t i) { entries_[i].isPaired = true; }

  /// The sup-norm by which vectors are compared.
  T supNormOf(const Vector<T>& vector) const;

  /// PrecisionException if T can't hold a number; this collection is unchanged then.
  template <class U>
  void convertFrom(const ShortVectors<U>& other);

 private:
  template <class U>
  friend class ShortVectors;

  bool isFull() const { return entries_.size() >= limit_; }

  std::vector<Entry> entries_;
  std::size_t limit_ = 0;
  Index first_ = 1;
};

extern template class ShortVectors<long double>;

}  // namespace starsift
