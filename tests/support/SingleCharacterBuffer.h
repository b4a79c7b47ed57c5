// A stream buffer that behaves like a pipe at the end of its buffer, always.
#pragma once

#include <streambuf>
#include <string>
#include <utility>

namespace starsift::test {

/// Shows one character at a time and never takes one back.
class SingleCharacterBuffer : public std::streambuf {
 public:
  explicit SingleCharacterBuffer(std::string text) : text_(std::move(text)) {}

 protected:
  int_type underflow() override {
    if (next_ == text_.size()) return traits_type::eof();
    current_ = text_[next_++];
    setg(&current_, &current_, &current_ + 1);
    return traits_type::to_int_type(current_);
  }

 private:
  std::string text_;
  std::size_t next_ = 0;
  char current_ = 0;
};

}  // namespace starsift::test
