#include "text/TextCursor.h"

namespace starsift {

namespace {

constexpr int streamEnd = std::istream::traits_type::eof();

}  // namespace

StreamCursor::~StreamCursor() {
  if (held_ == endOfText || stream_.rdbuf()->sputbackc(static_cast<char>(held_)) != streamEnd)
    return;
  try {
    stream_.setstate(std::ios_base::badbit);
  } catch (const std::ios_base::failure&) {
    // The state is set, and a destructor must not throw.
  }
}

int StreamCursor::streamPeek() const {
  if (stream_.fail()) return endOfText;
  const int c = stream_.rdbuf()->sgetc();
  if (c != streamEnd) return c;
  stream_.setstate(std::ios_base::eofbit);
  return endOfText;
}

int StreamCursor::peek() const {
  return held_ != endOfText ? held_ : streamPeek();
}

int StreamCursor::peekNext() const {
  if (held_ != endOfText) return streamPeek();
  const int c = streamPeek();
  if (c == endOfText) return endOfText;
  stream_.rdbuf()->sbumpc();
  const int next = stream_.rdbuf()->sgetc();
  if (stream_.rdbuf()->sungetc() == streamEnd) held_ = c;
  return next == streamEnd ? endOfText : next;
}

void StreamCursor::take() {
  if (held_ != endOfText)
    held_ = endOfText;
  else
    stream_.rdbuf()->sbumpc();
}

}  // namespace starsift
