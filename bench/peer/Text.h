// The text of problem and solution files as far as the generated inputs use it: plain decimal
// numbers, no exponents, comments between tokens.
#pragma once

#include <gmpxx.h>

#include <string>
#include <string_view>
#include <vector>

namespace peer {

/// A number or, where `infinity` is +1 or -1, an infinity.
struct Bound {
  mpq_class value;
  int infinity = 0;
};

/// Walks over a text. What can't be read ends the process with a message.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  /// Steps over white space and comments.
  void skip();
  /// Takes the character `c` behind white space and comments, if it is the next one.
  bool take(char c);
  /// What stands before the next white space, "]" or "|".
  std::string_view token();
  mpq_class number();
  std::vector<mpq_class> vector();
  std::vector<Bound> bounds();
  std::vector<std::vector<mpq_class>> matrix();
  /// Up to the first of `ends` or the end of the line, without blanks around it.
  std::string field(std::string_view ends);
  bool atEnd() const { return position_ == text_.size(); }

 private:
  std::string_view text_;
  std::size_t position_ = 0;
};

/// The mixed form "2:1/3".
std::string numberText(const mpq_class& value);
/// "[ a b c ]"
std::string vectorText(const std::vector<mpq_class>& values);

/// The whole of a file; ends the process where there is none.
std::string fileText(const std::string& path);

}  // namespace peer
