// Doubly linked lists whose elements hold the links, and a variant that keeps the
// best elements in order of quality.
//
// An element type E has the public members `E* next` and `E* previous`, which only
// the list changes, and a copy constructor. The list owns its elements.
#pragma once

#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>

#include "core/Index.h"
#include "system/Failure.h"

namespace starsift {

template <class E>
class Set {
 public:
  /// Forward iterator; stays valid if other elements are inserted or removed.
  template <class Element>
  class Position {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = E;
    using difference_type = std::ptrdiff_t;
    using pointer = Element*;
    using reference = Element&;

    explicit Position(Element* element = nullptr) : element_(element) {}
    reference operator*() const { return *element_; }
    pointer operator->() const { return element_; }
    Position& operator++() {
      element_ = element_->next;
      return *this;
    }
    Position operator++(int) {
      Position before = *this;
      ++*this;
      return before;
    }
    bool operator==(const Position&) const = default;

   private:
    Element* element_;
  };

  /// limit  maximum number of elements, 0: no limit
  explicit Set(Index limit = 0) : limit_(limit) {}
  /// Copies every element in order.
  Set(const Set& other) : limit_(other.limit_) {
    for (const E& element : other) link(std::make_unique<E>(element), nullptr);
  }
  Set(Set&& other) noexcept { exchange(other); }
  Set& operator=(Set other) noexcept {
    exchange(other);
    return *this;
  }
  virtual ~Set() { clear(); }

  E* first() { return first_; }
  const E* first() const { return first_; }
  E* last() { return last_; }
  const E* last() const { return last_; }
  Index count() const { return count_; }
  Index limit() const { return limit_; }
  /// Takes effect with the next insertion; no element is removed now.
  void setLimit(Index limit) { limit_ = limit; }

  Position<E> begin() { return Position<E>(first_); }
  Position<E> end() { return Position<E>(); }
  Position<const E> begin() const { return Position<const E>(first_); }
  Position<const E> end() const { return Position<const E>(); }

  /// Links `element` before `before`, an element of this list. A full list drops
  /// its head, which may be the new element; returns true if the new element stayed.
  /// Fatal if `before` is the head of another list: "Set: before_element is not
  /// in the given set!".
  bool insertBefore(std::unique_ptr<E> element, E* before) {
    if (before->previous == nullptr && before != first_)
      fail("Set: before_element is not in the given set!");
    const E* inserted = element.get();
    link(std::move(element), before);
    const bool stays = !isOverfull() || first_ != inserted;
    dropSurplus();
    return stays;
  }

  /// Links `element` after the last one. A full list drops its head.
  void append(std::unique_ptr<E> element) {
    link(std::move(element), nullptr);
    dropSurplus();
  }

  /// Unlinks an element of this list and returns it.
  std::unique_ptr<E> take(E* element) {
    (element->previous == nullptr ? first_ : element->previous->next) = element->next;
    (element->next == nullptr ? last_ : element->next->previous) = element->previous;
    element->next = nullptr;
    element->previous = nullptr;
    --count_;
    return std::unique_ptr<E>(element);
  }

  /// Destroys all elements; the limit stays.
  void clear() {
    while (first_ != nullptr) take(first_);
  }

  void exchange(Set& other) noexcept {
    std::swap(first_, other.first_);
    std::swap(last_, other.last_);
    std::swap(limit_, other.limit_);
    std::swap(count_, other.count_);
  }

 private:
  /// Links `element` before `before`, or at the end if that is null.
  void link(std::unique_ptr<E> element, E* before) {
    E* const added = element.release();
    added->next = before;
    added->previous = before == nullptr ? last_ : before->previous;
    (added->previous == nullptr ? first_ : added->previous->next) = added;
    (before == nullptr ? last_ : before->previous) = added;
    ++count_;
  }

  bool isOverfull() const { return limit_ != 0 && count_ > limit_; }

  /// Destroys the head of a list that exceeds its limit.
  void dropSurplus() {
    if (isOverfull()) take(first_);
  }

  E* first_ = nullptr;
  E* last_ = nullptr;
  Index limit_ = 0;
  Index count_ = 0;
};

/// Ascending by quality: the first element is the worst, the last the best. Uses
/// `identical(a, b)` (exactly the same vector) and `better(a, b)` (a is the better
/// one) of the element type.
template <class E>
class SortedSet : public Set<E> {
 public:
  using Set<E>::Set;

  /// Inserts a copy of `element` before the first better one. False if an identical
  /// element stands before that position, or if the list is full of better ones.
  bool insert(const E& element) {
    auto copy = std::make_unique<E>(element);
    for (E& present : *this) {
      if (identical(present, *copy)) return false;
      if (better(present, *copy)) return this->insertBefore(std::move(copy), &present);
    }
    this->append(std::move(copy));
    return true;
  }
};

}  // namespace starsift
