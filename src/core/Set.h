// Doubly linked lists whose elements carry the links, and the kind that keeps the
// best elements in order of quality.
//
// An element type E has the public members `E* next` and `E* previous`, which the
// list alone changes, and a copy constructor. The list owns its elements.
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
  /// Forward iterator; survives changes elsewhere in the list.
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

  /// limit  most elements the list holds, 0: no limit
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
  /// Holds from the next insertion on; no element leaves now.
  void setLimit(Index limit) { limit_ = limit; }

  Position<E> begin() { return Position<E>(first_); }
  Position<E> end() { return Position<E>(); }
  Position<const E> begin() const { return Position<const E>(first_); }
  Position<const E> end() const { return Position<const E>(); }

  /// Links `element` ahead of `before`, an element of this list. A full list drops
  /// its head, which may be the new element: the result tells whether that stayed.
  /// Fatal when `before` is the head of another list: "Set: before_element is not
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

  /// Links `element` behind the last one. A full list drops its head.
  void append(std::unique_ptr<E> element) {
    link(std::move(element), nullptr);
    dropSurplus();
  }

  /// Takes an element of this list off it.
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
  /// Links `element` ahead of `before`, or at the end when that is null.
  void link(std::unique_ptr<E> element, E* before) {
    E* const added = element.release();
    added->next = before;
    added->previous = before == nullptr ? last_ : before->previous;
    (added->previous == nullptr ? first_ : added->previous->next) = added;
    (before == nullptr ? last_ : before->previous) = added;
    ++count_;
  }

  bool isOverfull() const { return limit_ != 0 && count_ > limit_; }

  /// Destroys the head of an overfull list.
  void dropSurplus() {
    if (isOverfull()) take(first_);
  }

  E* first_ = nullptr;
  E* last_ = nullptr;
  Index limit_ = 0;
  Index count_ = 0;
};

/// Ascending by quality: the first element is the worst, the last the best. Asks
/// `identical(a, b)` (exactly the same vector) and `better(a, b)` (a is the better
/// one) of the element type.
template <class E>
class SortedSet : public Set<E> {
 public:
  using Set<E>::Set;

  /// Inserts a copy of `element` ahead of the first better one. False when an
  /// identical one stands before that place, or when the list is full of better
  /// ones.
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
