// Reading characters: one interface over text in memory and over a stream, so
// that every text form has one reader.
//
// A source offers peek, peekNext and take. Readers are templates over the source
// and are instantiated for the two kinds below.
#pragma once

#include <istream>
#include <string_view>

#include "system/Failure.h"

namespace starsift {

/// What peek() gives behind the last character.
constexpr int endOfText = -1;

/// A position in text that lies in memory. The text must outlive the cursor.
class TextCursor {
 public:
  explicit TextCursor(std::string_view text)
      : position_(text.data()), end_(text.data() + text.size()) {}

  /// The next character as unsigned char value, or endOfText.
  int peek() const { return position_ < end_ ? static_cast<unsigned char>(*position_) : endOfText; }
  /// The character behind the next one, or endOfText.
  int peekNext() const {
    return end_ - position_ > 1 ? static_cast<unsigned char>(position_[1]) : endOfText;
  }
  /// Steps over the next character; peek() must not be endOfText.
  void take() { ++position_; }

  bool atEnd() const { return position_ == end_; }
  /// The text not read yet.
  std::string_view rest() const { return {position_, static_cast<std::size_t>(end_ - position_)}; }
  /// Steps over `count` characters, 0 <= count <= rest().size().
  void advance(std::size_t count) { position_ += count; }

 private:
  const char* position_;
  const char* end_;
};

/// A stream as a source of characters. Takes no more than what the reader takes;
/// reaching the end sets the stream's end-of-file state. A stream in fail or bad
/// state has no text.
class StreamCursor {
 public:
  explicit StreamCursor(std::istream& stream) : stream_(stream) {}
  StreamCursor(const StreamCursor&) = delete;
  StreamCursor& operator=(const StreamCursor&) = delete;
  /// Sets the stream's bad state where a character would be lost: see held_.
  ~StreamCursor();

  int peek() const;
  int peekNext() const;
  void take();

 private:
  int streamPeek() const;

  std::istream& stream_;
  /// The next character where peekNext() had to take it from a stream that does
  /// not take characters back (a pipe between two buffers), else endOfText.
  mutable int held_ = endOfText;
};

/// The white space of every text form of the system.
constexpr bool isWhiteSpace(int c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// Steps over white space, no comments.
template <class Source>
void skipWhiteSpace(Source& source) {
  while (isWhiteSpace(source.peek())) source.take();
}

/// Steps over the `characters` (ASCII), no comments.
template <class Source>
void skipOnly(Source& source, std::string_view characters) {
  for (int c = source.peek();
       c != endOfText && characters.find(static_cast<char>(c)) != std::string_view::npos;
       c = source.peek())
    source.take();
}

/// True when the source stands at "//" or "/*".
template <class Source>
bool atComment(const Source& source) {
  if (source.peek() != '/') return false;
  const int next = source.peekNext();
  return next == '/' || next == '*';
}

/// Steps over the comment at which the source stands. "//" ends before the line
/// feed or at the end of the text; a "/*" that is never closed is fatal.
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

/// Steps over white space and comments in any number and order.
template <class Source>
void skipWithComments(Source& source) {
  skipWhiteSpace(source);
  while (atComment(source)) {
    skipComment(source);
    skipWhiteSpace(source);
  }
}

/// The same with other `characters` than white space.
template <class Source>
void skipWithComments(Source& source, std::string_view characters) {
  skipOnly(source, characters);
  while (atComment(source)) {
    skipComment(source);
    skipOnly(source, characters);
  }
}

}  // namespace starsift
