// The lines of a solution file one by one.
#pragma once

#include <cstddef>
#include <string_view>

#include "models/text/Words.h"

namespace starsift {

class Lines {
 public:
  explicit Lines(std::string_view text) : rest_(text) {}

  bool atEnd() const { return rest_.empty(); }
  /// The next line, which number() then counts.
  std::string_view take() {
    ++number_;
    return takeLine(rest_);
  }
  /// The next line without its blanks, not taken.
  std::string_view peek() const {
    std::string_view rest = rest_;
    return trimmed(takeLine(rest));
  }
  /// Of the line that was taken last, from 1 on.
  std::size_t number() const { return number_; }

 private:
  std::string_view rest_;
  std::size_t number_ = 0;
};

}  // namespace starsift
