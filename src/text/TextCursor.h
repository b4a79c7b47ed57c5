// Reading characters: one interface for text in memory and for streams, so that
// every text form has a single reader.
//
// A source has peek, peekNext and take. Readers are templates over the source and
// are instantiated for the two classes below.
#pragma once

#include <istream>
#include <string_view>

#include "system/Failure.h"

namespace starsift {

/// Returned by peek() after the last character.
constexpr int endOfText = -1;

/// A position in a text in memory. The text must outlive the cursor.
class TextCursor {
 public:
  explicit TextCursor(std::string_view text)
      : position_(text.data()), end_(text.data() + text.size()) {}

  /// Returns the next character as unsigned char value, or endOfText.
  int peek() const { return position_ < end_ ? static_cast<unsigned char>(*position_) : endOfText; }
  /// Returns the character after the next one, or endOfText.
  int peekNext() const {
    return end_ - position_ > 1 ? static_cast<unsigned char>(position_[1]) : endOfText;
  }
  /// Consumes the next character; peek() must not be endOfText.
  void take() { ++position_; }

  bool atEnd() const { return position_ == end_; }
  /// Returns the text that was not consumed yet.
  std::string_view rest() const { return {position_, static_cast<std::size_t>(end_ - position_)}; }
  /// Consumes `count` characters, 0 <= count <= rest().size().
  void advance(std::size_t count) { position_ += count; }

 private:
  const char* position_;
  const char* end_;
};

/// A stream as a source of characters. Consumes no more than the reader consumes;
/// reaching the end sets the end-of-file state of the stream. A stream in fail or
/// bad state counts as empty.
class StreamCursor {
 public:
  explicit StreamCursor(std::istream& stream) : stream_(stream) {}
  StreamCursor(const StreamCursor&) = delete;
  StreamCursor& operator=(const StreamCursor&) = delete;
  /// Sets the bad state of the stream if a character would be lost: see held_.
  ~StreamCursor();

  int peek() const;
  int peekNext() const;
  void take();

 private:
  int streamPeek() const;

  std::istream& stream_;
  /// The next character if peekNext() had to consume it from a stream that can not
  /// put characters back (a pipe between two buffers), else endOfText.
  mutable int held_ = endOfText;
};

/// White space in every text form of the system.
constexpr bool isWhiteSpace(int c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// Skips white space, no comments.
template <class Source>
void skipWhiteSpace(Source& source) {
  while (isWhiteSpace(source.peek())) source.take();
}

/// Skips the `characters` (ASCII), no comments.
template <class Source>
void skipOnly(Source& source, std::string_view characters) {
  for (int c = source.peek();
       c != endOfText && characters.find(static_cast<char>(c)) != std::string_view::npos;
       c = source.peek())
    source.take();
}

/// True if the next characters are "//" or "/*".
template <class Source>
bool atComment(const Source& source) {
  if (source.peek() != '/') return false;
  const int next = source.peekNext();
  return next == '/' || next == '*';
}

/// Skips the comment that starts here. "//" ends before the line feed or at the
/// end of the text; a "/*" that is never closed is fatal: "comment is not closed".
template <class Source>
void skipComment(Source& source) {
  source.take();
  const bool toLineEnd = source.peek() == '/';
  source.take();
  if (toLineEnd) {
    while (source.peek() != '\n' && source.peek() != endOfText) source.take();
    return;
  }
  while (source.peek() != '*' || source.peekNext() != '/') {
    if (source.peek() == endOfText) fail("comment is not closed");
    source.take();
  }
  source.take();
  source.take();
}

/// Skips white space and comments in any number and order.
template <class Source>
void skipWithComments(Source& source) {
  skipWhiteSpace(source);
  while (atComment(source)) {
    skipComment(source);
    skipWhiteSpace(source);
  }
}

/// As above, with `characters` in place of white space.
template <class Source>
void skipWithComments(Source& source, std::string_view characters) {
  skipOnly(source, characters);
  while (atComment(source)) {
    skipComment(source);
    skipOnly(source, characters);
  }
}

}  // namespace starsift
