// Exact numbers in little memory, for the millions of entries that a model may have.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "numbers/QQ.h"

namespace starsift {

/// Eight bytes each for integers and decimals of up to 17 digits, as nearly all entries are; the
/// others are kept as they are. Reading one makes the number anew.
class NumberList {
 public:
  std::size_t size() const { return words_.size(); }
  QQ operator[](std::size_t index) const;

  void append(const QQ& value) { words_.push_back(wordOf(value)); }
  /// The memory of a number that was long before is freed with the list.
  void set(std::size_t index, const QQ& value) { words_[index] = wordOf(value); }
  void copy(std::size_t from, std::size_t to) { words_[to] = words_[from]; }

  void reserve(std::size_t count) { words_.reserve(count); }
  /// New numbers are 0.
  void resize(std::size_t count) { words_.resize(count); }

 private:
  /// Adds a long number to others_.
  std::int64_t wordOf(const QQ& value);

  /// Digits * 32 + decimal places, or an index into others_ * 32 + 31.
  std::vector<std::int64_t> words_;
  std::vector<QQ> others_;
};

}  // namespace starsift
