// A line on a terminal that shows the progress of a long run and is erased at its end.
#pragma once

#include <chrono>
#include <functional>
#include <iosfwd>
#include <streambuf>
#include <string_view>
#include <utility>

namespace starsift {

/// The last line on a terminal, redrawn in place. Before any other output to the same terminal
/// it must be cleared by clear(); see ClearedStream.
class StatusLine {
 public:
  using Clock = std::chrono::steady_clock;

  /// The least time between two refreshes.
  static constexpr std::chrono::seconds interval{1};
  /// The width that is assumed if a terminal doesn't report one.
  static constexpr std::size_t usualWidth = 79;

  /// Draws on `terminal`; if that is null the line is never due. `width` is called for each
  /// drawing, as a window can change, and returns how many columns the line may have: a line
  /// that wraps can't be erased.
  StatusLine(
      std::streambuf* terminal, Clock::time_point start,
      std::function<std::size_t()> width = [] { return usualWidth; })
      : terminal_(terminal), width_(std::move(width)), next_(start + interval) {}
  StatusLine(const StatusLine&) = delete;
  StatusLine& operator=(const StatusLine&) = delete;
  ~StatusLine() { clear(); }

  /// The line may be redrawn.
  bool isDue(Clock::time_point now) const { return terminal_ != nullptr && now >= next_; }

  /// Draws as much of the text as fits; it must have only printable characters of one column.
  /// The line is due again after the interval.
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

/// The error stream, if it is a terminal that can erase a line; else null.
std::streambuf* errorTerminal();

/// Columns that a status line may have on the terminal of `descriptor`: all but the last,
/// as some terminals wrap a line that reaches it.
std::size_t statusWidth(int descriptor);

/// During its lifetime all output to a stream clears the status line first.
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
