#include "app/StatusLine.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>

namespace starsift {

namespace {

/// Back to the first column; erase to the end of the line.
constexpr std::string_view eraseLine = "\r\033[K";

}  // namespace

void StatusLine::draw(std::string_view text, Clock::time_point now) {
  if (terminal_ == nullptr) return;
  write(eraseLine);
  write(text.substr(0, width_()));
  terminal_->pubsync();
  shown_ = true;
  next_ = now + interval;
}

void StatusLine::clear() {
  if (!shown_) return;
  write(eraseLine);
  terminal_->pubsync();
  shown_ = false;
}

void StatusLine::write(std::string_view text) {
  terminal_->sputn(text.data(), static_cast<std::streamsize>(text.size()));
}

std::streambuf* errorTerminal() {
  const char* const kind = std::getenv("TERM");
  const bool erases =
      isatty(STDERR_FILENO) != 0 && kind != nullptr && std::string_view(kind) != "dumb";
  return erases ? std::cerr.rdbuf() : nullptr;
}

std::size_t statusWidth(int descriptor) {
  struct winsize size {};
  // Terminals without a window, such as serial ones, have 0 columns.
  if (ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0) return StatusLine::usualWidth;
  return size.ws_col - 1U;
}

ClearedStream::ClearedStream(std::ostream& stream, StatusLine& line)
    : stream_(stream), target_(stream.rdbuf(this)), line_(line) {}

ClearedStream::~ClearedStream() {
  // A new buffer clears the state, and with it that a write has failed.
  const std::ios::iostate state = stream_.rdstate();
  stream_.rdbuf(target_);
  stream_.setstate(state);
}

ClearedStream::int_type ClearedStream::overflow(int_type character) {
  line_.clear();
  if (traits_type::eq_int_type(character, traits_type::eof()))
    return traits_type::not_eof(character);
  return target_->sputc(traits_type::to_char_type(character));
}

std::streamsize ClearedStream::xsputn(const char* text, std::streamsize count) {
  line_.clear();
  return target_->sputn(text, count);
}

int ClearedStream::sync() {
  return target_->pubsync();
}

}  // namespace starsift
