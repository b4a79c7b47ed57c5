#include "core/TextCursor.h"

namespace starsift {

namespace {

constexpr int streamEnd = std::istream::traits_type::eof();

}  // namespace

int StreamCursor::peek() const {
  const int c = stream_.rdbuf()->sgetc();
  if (c != streamEnd) return c;
  stream_.setstate(std::ios_base::eofbit);
  return endOfText;
}

int StreamCursor::peekNext() const {
  if (stream_.rdbuf()->sbumpc() == streamEnd) return endOfText;
  const int c = stream_.rdbuf()->sgetc();
  stream_.rdbuf()->sungetc();
  return c == streamEnd ? endOfText : c;
}

void StreamCursor::take() { stream_.rdbuf()->sbumpc(); }

}  // namespace starsift
