// The refusal of a file: where, and one sentence.
#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>

namespace starsift {

/// Thrown by all readers of models and solutions; what() is "line: sentence", with the path in
/// front of it once withPath() was called, or the sentence alone if no line is to blame.
class ModelError : public std::runtime_error {
 public:
  /// `line` counts from 1; 0 for the file as a whole.
  ModelError(std::size_t line, std::string sentence)
      : std::runtime_error(line == 0 ? sentence : std::to_string(line) + ": " + sentence),
        line_(line),
        sentence_(std::move(sentence)) {}

  ModelError withPath(const std::string& path) const {
    return {path + (line_ == 0 ? ": " : ":"), *this};
  }

  std::size_t line() const { return line_; }
  const std::string& sentence() const { return sentence_; }

 private:
  ModelError(const std::string& prefix, const ModelError& error)
      : std::runtime_error(prefix + error.what()), line_(error.line_), sentence_(error.sentence_) {}

  std::size_t line_;
  std::string sentence_;
};

}  // namespace starsift
