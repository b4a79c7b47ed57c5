// State of the console: nested progress lines, the times of the last output and of
// the last failure, and the switch for extended output.
//
// Only report() writes, to the stream that its caller names. The other functions return the text
// that opens or ends a line, and the caller writes it to the stream of the line. A nested block of
// two levels looks like
//
//   |-> Reducing lattice ...
//   |    |-> Pass 1
#pragma once

#include <array>
#include <cstdint>
#include <ctime>
#include <ostream>
#include <string>
#include <string_view>

namespace starsift {

/// Nesting levels, 0 to consoleLevels - 1.
constexpr std::int64_t consoleLevels = 128;

/// The complete state, one per thread. `consoleState() = {}` resets it.
struct ConsoleState {
  /// Current nesting level, 0 <= depth < consoleLevels.
  std::int64_t depth = 0;
  /// Per level: endLine() has ended a line of this level, the block is still open.
  std::array<bool, consoleLevels> lineOpen{};
  /// Per level: the next stamp must start with a line feed.
  std::array<bool, consoleLevels> lineStarted{};
  /// Seconds since the epoch, 0 if there was none yet.
  std::time_t lastOutputTime = 0;
  std::time_t lastFailureTime = 0;
  /// Detailed statistics: true if the parameter verb is exactly 2.
  bool extendedOutput = false;
};

ConsoleState& consoleState();

/// Enters a level and returns the prefix of a progress line. It starts with a line
/// feed if a line of the current level is not ended, and ends with "->" unless
/// `plain`. Beyond the last level fatal: "Maximum thread depth reached".
std::string openStamp(bool plain);

/// Leaves the current level, except level 0, and returns the text that ends it: a
/// line feed if its line is not ended, else nothing. With `keep` nothing either if
/// endLine() has ended a line of this level before.
std::string closeStamp(bool keep);

/// Returns a line feed and marks the line of the current level as ended.
std::string endLine();

/// Returns a line feed; leaves all levels and clears their marks.
std::string resetConsole();

std::int64_t consoleDepth();

/// Returns to a stored depth, 0 <= depth < consoleLevels, after a step that broke
/// off with blocks still open. Clears the marks of the levels above it.
void setConsoleDepth(std::int64_t depth);

/// Wall-clock seconds since the epoch.
std::time_t lastOutputTime();
void stampOutputTime();
/// True if the last output is more than an hour old: a long step may report progress.
bool consoleWasSilent();
std::time_t lastFailureTime();
void stampFailureTime();

bool extendedOutput();
void setExtendedOutput(bool on);

/// Where progress and statistics go: standard output, and nowhere during a HostedCall.
std::ostream& reportStream();
/// The same for remarks on what went wrong, on the error stream.
std::ostream& remarkStream();

/// Writes one line: opening stamp, a blank, `message`, closing stamp. Stores the
/// output time.
void report(std::ostream& stream, std::string_view message);

}  // namespace starsift
