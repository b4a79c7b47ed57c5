// A line on a terminal that says how far a long run is, and leaves no trace.
#pragma once

#include <chrono>
#include <functional>
#include <iosfwd>
#include <streambuf>
#include <string_view>
#include <utility>

namespace starsift {

/// One line at the end of what a terminal shows, drawn over itself. Whoever writes to a
/// stream that goes to the same terminal has to clear() it first; see ClearedStream.
class StatusLine {
 public:
  using Clock = std::chrono::steady_clock;

  /// The least time between two refreshes.
  static constexpr std::chrono::seconds interval{1};
  /// What it is cut to where a terminal doesn't tell its width.
  static constexpr std::size_t usualWidth = 79;

  /// Draws on `terminal`; null: there is none, and the line is never due. `width` tells at
  /// each drawing how many columns it may have, as a window can change: a line that breaks
  /// can't be erased.
  StatusLine(
      std::streambuf* terminal, Clock::time_point start,
      std::function<std::size_t()> width = [] { return usualWidth; })
      : terminal_(terminal), width_(std::move(width)), next_(start + interval) {}
  StatusLine(const StatusLine&) = delete;
  StatusLine& operator=(const StatusLine&) = delete;
  ~StatusLine() { clear(); }

  /// The line may be drawn anew.
  bool isDue(Clock::time_point now) const { return terminal_ != nullptr && now >= next_; }

  /// Draws as much of the text as has room; it has only printable characters of one column.
  /// The line is due again behind the interval.
  void draw(std::string_view text, Clock::time_point now);

  void clear();

 private:
  void write(std::string_view text);

  std::streambuf* terminal_;
  std::function<std::size_t()> width_;
  Clock::time_point next_;
  /// Something is drawn.
  bool shown_ = false;
};

/// Columns that a status line may have on the terminal behind `descriptor`: all but the last,
/// as some terminals break a line that reaches it.
std::size_t statusWidth(int descriptor);

/// As long as it lives, what is written to a stream clears the status line first.
class ClearedStream : public std::streambuf {
 public:
  ClearedStream(std::ostream& stream, StatusLine& line);
  ClearedStream(const ClearedStream&) = delete;
  ClearedStream& operator=(const ClearedStream&) = delete;
  ~ClearedStream() override;

 protected:
  int_type overflow(int_type character) override;
  std::streamsize xsputn(const char* text, std::streamsize count) override;
  int sync() override;

 private:
  std::ostream& stream_;
  std::streambuf* target_;
  StatusLine& line_;
};

}  // namespace starsift
