// The sequence of the system, 1-based with a live slot 0.
//
// An array of dimension n owns n + 1 constructed elements 0..n. Elements 1..n are
// the content; slot 0 is valid scratch storage that no text form and no arithmetic
// touches. The bodies stand here because the set of element types is open.
#pragma once

#include <algorithm>
#include <memory>
#include <type_traits>
#include <utility>

#include "core/Index.h"
#include "system/Failure.h"

namespace starsift {

/// Elements that resize() reserves beyond the new dimension if `reserve` is set.
constexpr Index growthMargin = 100;

template <class T>
class Array {
 public:
  Array() = default;
  explicit Array(Index dimension) { Array::resize(dimension, false); }
  /// The copy has no spare capacity.
  Array(const Array& other) { copyFrom(other); }
  Array(Array&& other) noexcept { exchange(other); }
  Array& operator=(const Array& other) {
    if (this != &other) copyFrom(other);
    return *this;
  }
  /// Leaves `other` with this array's former content.
  Array& operator=(Array&& other) noexcept {
    exchange(other);
    return *this;
  }
  virtual ~Array() = default;

  /// resize(0): keeps the storage.
  virtual void clear() { resize(0, false); }

  /// Returns to the fresh state, without storage.
  virtual void destroy() {
    data_.reset();
    dimension_ = 0;
    capacity_ = 0;
  }

  /// Sets the dimension. Storage grows if the capacity doesn't suffice, with `reserve`
  /// by growthMargin more than needed. Never clears elements: shrinking and growing
  /// again shows the old ones. A negative dimension is fatal.
  virtual void resize(Index dimension, bool reserve) {
    if (dimension < 0) fail("array: dimension < 0");
    if (dimension > capacity_) grow(dimension, reserve);
    dimension_ = dimension;
  }

  /// True if there is content.
  virtual bool isSet() const { return dimension_ > 0; }

  Index dimension() const { return dimension_; }
  Index capacity() const { return capacity_; }
  /// Slot 0 of the storage; null before the storage is first allocated.
  T* data() { return data_.get(); }
  const T* data() const { return data_.get(); }

  /// Unchecked access for inner loops, 0 <= index <= dimension().
  T& operator[](Index index) { return data_[static_cast<std::size_t>(index)]; }
  const T& operator[](Index index) const { return data_[static_cast<std::size_t>(index)]; }

  /// Checked access; an index outside 0..dimension() is fatal, and so is slot 0
  /// of an array that never had storage.
  T& element(Index index) {
    checkIndex(index);
    return (*this)[index];
  }
  const T& element(Index index) const {
    checkIndex(index);
    return (*this)[index];
  }

  /// Swaps two elements; an index outside 0..dimension() is fatal.
  void swap(Index a, Index b) {
    if (a < 0 || a > dimension_ || b < 0 || b > dimension_) fail("Array: swap index out of range");
    using std::swap;
    if (a != b) swap((*this)[a], (*this)[b]);
  }

  /// Swaps the contents of two arrays; no element is touched.
  void exchange(Array& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(dimension_, other.dimension_);
    std::swap(capacity_, other.capacity_);
  }

  /// The content, 1..dimension().
  T* begin() { return data_.get() + (data_ ? 1 : 0); }
  T* end() { return begin() + dimension_; }
  const T* begin() const { return data_.get() + (data_ ? 1 : 0); }
  const T* end() const { return begin() + dimension_; }

 private:
  void checkIndex(Index index) const {
    if (index < 0 || index > dimension_ || !data_) fail("Array: index out of range");
  }

  void grow(Index dimension, bool reserve) {
    const Index capacity = dimension + (reserve ? growthMargin : 0);
    auto data = std::make_unique_for_overwrite<T[]>(static_cast<std::size_t>(capacity) + 1);
    // Slot 0 of the first storage; later storage receives slot 0 of the one before.
    if constexpr (std::is_arithmetic_v<T>) std::fill_n(data.get(), 1, T());
    if (data_) std::move(data_.get(), data_.get() + dimension_ + 1, data.get());
    data_ = std::move(data);
    capacity_ = capacity;
  }

  void copyFrom(const Array& other) {
    if (!other.data_) {
      dimension_ = 0;
      return;
    }
    if (other.dimension_ > capacity_ || !data_) {
      data_ = std::make_unique_for_overwrite<T[]>(static_cast<std::size_t>(other.dimension_) + 1);
      capacity_ = other.dimension_;
    }
    std::copy(other.data(), other.data() + other.dimension_ + 1, data_.get());
    dimension_ = other.dimension_;
  }

  std::unique_ptr<T[]> data_;
  Index dimension_ = 0;
  Index capacity_ = 0;
};

/// Appends an element. O(1) amortised, while n calls of resize(dimension + 1, true) are
/// quadratic in n.
template <class T>
void append(Array<T>& array, T element) {
  const Index next = array.dimension() + 1;
  if (next > array.capacity()) array.resize(2 * next, false);
  array.resize(next, false);
  array[next] = std::move(element);
}

}  // namespace starsift
